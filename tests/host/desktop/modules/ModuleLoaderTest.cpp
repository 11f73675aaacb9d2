// The module loader with real modules: good ones, broken ones, and ones that misbehave; the host
// keeps working through all of them.
#include <dlfcn.h>
#include <gtest/gtest.h>

#include <QCoreApplication>
#include <algorithm>

#include "host/api/acapdocmanager.h"
#include "host/api/acrxregistry.h"
#include "host/desktop/modules/moduleloader.h"
#include "tests/TempFolder.h"

namespace {

const std::filesystem::path kModules = TARNWICK_TEST_MODULES;

AcEdCommandStack& Stack() {
    return *AcRxCast<AcEdCommandStack>(acrxSysRegistry()->at(ACRX_COMMAND_DOCK));
}

std::size_t CommandsOf(const std::wstring& group) {
    const auto& commands = Stack().commands();
    return static_cast<std::size_t>(std::count_if(commands.begin(), commands.end(),
                                                  [&](const auto& c) { return c.group == group; }));
}

std::size_t Reactors() { return acDocManagerPtr()->reactors().size(); }

bool IsMapped(const std::filesystem::path& path) {
    void* handle = dlopen(path.c_str(), RTLD_NOW | RTLD_NOLOAD);
    if (handle) dlclose(handle);
    return handle != nullptr;
}

class ModuleLoaderTest : public ::testing::Test {
protected:
    // Declared first: the loader warns while it is destroyed.
    std::vector<std::string> m_warnings;
    ModuleLoader m_loader{[this](const std::string& text) { m_warnings.push_back(text); }};
};

// Tarnwick.arx loaded a hundred times: the desktop end-to-end tests, with its dialogs shown.
TEST_F(ModuleLoaderTest, AGoodModuleRunsItsCommandsOnceLoadedUntilItIsUnloaded) {
    const std::size_t reactors = Reactors();
    const ModuleStatus loaded = m_loader.load(kModules / "good.arx");
    ASSERT_TRUE(loaded.isOk()) << loaded.errorString();
    ASSERT_EQ(m_loader.modules().size(), 1u);
    const ModuleRecord* record = m_loader.modules().front();
    EXPECT_EQ(record->state(), ModuleState::Running);
    EXPECT_EQ(record->name(), "good.arx");
    EXPECT_EQ(record->apiVersion(), 0x00160000u);
    EXPECT_FALSE(record->hasError());
    EXPECT_EQ(CommandsOf(L"GOOD_GROUP"), 3u);
    ASSERT_NE(Stack().lookup(L"HELLO"), nullptr);
    EXPECT_EQ(Reactors(), reactors + 1);
    EXPECT_EQ(m_loader.find("GOOD"), record);
    EXPECT_EQ(m_loader.find("good.arx"), record);
    EXPECT_EQ(m_loader.find((kModules / "good.arx").string()), record);
    // Loaded once at a time; what is not loaded cannot be unloaded.
    EXPECT_EQ(m_loader.load(kModules / ".." / "modules" / "good.arx").errorString(),
              "good.arx: already loaded");
    EXPECT_EQ(CommandsOf(L"GOOD_GROUP"), 3u);
    EXPECT_EQ(m_loader.unload("goo").errorString(), "goo: not loaded");

    const ModuleStatus unloaded = m_loader.unload("good");
    ASSERT_TRUE(unloaded.isOk()) << unloaded.errorString();
    EXPECT_TRUE(m_loader.modules().empty());
    EXPECT_EQ(CommandsOf(L"GOOD_GROUP"), 0u);
    EXPECT_EQ(Reactors(), reactors);
    EXPECT_FALSE(IsMapped(kModules / "good.arx"));
    EXPECT_TRUE(m_warnings.empty());
    EXPECT_EQ(m_loader.unload("good").errorString(), "good: not loaded");
}

TEST_F(ModuleLoaderTest, EachModuleGetsItsOwnApplicationId) {
    ASSERT_TRUE(m_loader.load(kModules / "good.arx").isOk());
    ASSERT_TRUE(m_loader.load(kModules / "leaky.arx").isOk());
    const auto modules = m_loader.modules();
    ASSERT_EQ(modules.size(), 2u);
    auto* linker = AcRxCast<AcRxDynamicLinker>(acrxSysRegistry()->at(ACRX_DYNAMIC_LINKER));
    void* first = modules[0]->appId();
    void* second = modules[1]->appId();
    EXPECT_NE(first, second);
    EXPECT_FALSE(linker->isApplicationLocked(first));
    ASSERT_TRUE(m_loader.unload("good.arx").isOk());
    EXPECT_TRUE(linker->isApplicationLocked(first));
    EXPECT_FALSE(linker->isApplicationLocked(second));
}

TEST_F(ModuleLoaderTest, BrokenModulesAreRefusedWithOneMessageAndLeaveNothing) {
    TempFolder folder;
    folder.write("notes.arx", "not a module\n");
    const struct {
        std::filesystem::path file;
        std::string message;
    } cases[] = {
        {kModules / "noentry.arx", "noentry.arx: no entry point \"acrxEntryPoint\""},
        {kModules / "noversion.arx", "noversion.arx: no entry point \"acrxGetApiVersion\""},
        {kModules / "oldversion.arx",
         "oldversion.arx: made for host interface 21.0, this host takes 22.x"},
        {kModules / "refuses.arx", "refuses.arx: refused to load (acrxEntryPoint answered 3)"},
        {kModules / "throws.arx",
         "throws.arx: refused to load (acrxEntryPoint threw \"no licence\")"},
        {folder.path("notes.arx"), "notes.arx: not a shared library"},
        {kModules / "absent.arx", "absent.arx: no such file"},
        {kModules, "modules: no such file"},
    };
    const std::size_t commands = Stack().commands().size();
    const std::size_t reactors = Reactors();
    for (const auto& c : cases) {
        const ModuleStatus status = m_loader.load(c.file);
        EXPECT_FALSE(status.isOk());
        EXPECT_EQ(status.errorString(), c.message);
        EXPECT_FALSE(IsMapped(c.file)) << c.file;
    }
    EXPECT_TRUE(m_loader.modules().empty());
    EXPECT_EQ(Stack().commands().size(), commands);
    EXPECT_EQ(Reactors(), reactors);
    // The refusing module had registered a command and a reactor before it said no.
    EXPECT_EQ(m_warnings,
              (std::vector<std::string>{
                  "refuses.arx: left the commands of group \"REFUSING_GROUP\" behind; they are "
                  "removed",
                  "refuses.arx: left a document reactor behind; it is removed"}));
    // And the host goes on loading good modules.
    EXPECT_TRUE(m_loader.load(kModules / "good.arx").isOk());
}

TEST_F(ModuleLoaderTest, AModuleThatDidNotUnlockItselfStaysLoaded) {
    ASSERT_TRUE(m_loader.load(kModules / "locked.arx").isOk());
    const ModuleStatus status = m_loader.unload("locked");
    EXPECT_EQ(status.errorString(),
              "locked.arx: cannot be unloaded, the module did not unlock itself");
    EXPECT_EQ(m_loader.modules().size(), 1u);
    EXPECT_EQ(CommandsOf(L"LOCKED_GROUP"), 3u);
    EXPECT_TRUE(IsMapped(kModules / "locked.arx"));
}

TEST(ModuleLoader, TheHostUnloadsEveryModuleWhenItEnds) {
    const std::size_t reactors = Reactors();
    {
        ModuleLoader loader;
        ASSERT_TRUE(loader.load(kModules / "locked.arx").isOk());
        ASSERT_TRUE(loader.load(kModules / "good.arx").isOk());
    }
    EXPECT_EQ(CommandsOf(L"LOCKED_GROUP"), 0u);
    EXPECT_EQ(CommandsOf(L"GOOD_GROUP"), 0u);
    EXPECT_EQ(Reactors(), reactors);
    EXPECT_FALSE(IsMapped(kModules / "locked.arx"));
    EXPECT_FALSE(IsMapped(kModules / "good.arx"));
}

TEST_F(ModuleLoaderTest, WhatAModuleForgetsAtUnloadIsClearedUpWithAWarning) {
    const std::size_t reactors = Reactors();
    ASSERT_TRUE(m_loader.load(kModules / "leaky.arx").isOk());
    ASSERT_TRUE(m_loader.unload("leaky").isOk());
    EXPECT_EQ(CommandsOf(L"LEAKY_GROUP"), 0u);
    EXPECT_EQ(Reactors(), reactors);
    EXPECT_EQ(m_warnings,
              (std::vector<std::string>{
                  "leaky.arx: left the commands of group \"LEAKY_GROUP\" behind; they are removed",
                  "leaky.arx: left a document reactor behind; it is removed"}));
}

TEST_F(ModuleLoaderTest, AModuleLinkingQtIsTakenOutOfTheProcessAtUnload) {
    // As in the desktop host, Qt is the host's before any module comes.
    int argc = 1;
    char name[] = "modules_tests";
    char* argv[] = {name, nullptr};
    const QCoreApplication application(argc, argv);
    for (int i = 0; i < 10; ++i) {
        const ModuleStatus loaded = m_loader.load(kModules / "withqt.arx");
        ASSERT_TRUE(loaded.isOk()) << loaded.errorString();
        ASSERT_NE(Stack().lookup(L"HELLO"), nullptr);
        Stack().lookup(L"HELLO")->function();
        ASSERT_TRUE(m_loader.unload("withqt").isOk());
        ASSERT_FALSE(IsMapped(kModules / "withqt.arx"));
    }
    EXPECT_EQ(CommandsOf(L"QT_GROUP"), 0u);
    EXPECT_TRUE(m_warnings.empty());
}

}  // namespace
