// The built module loads as a host loads it: its exports, its reactor from load to unload, and its
// commands from the initialisation message to the unload message.
#include <gtest/gtest.h>

#include <dlfcn.h>

#include <algorithm>
#include <memory>

#include "host/api/acadstatus.h"
#include "host/api/acapdocmanager.h"
#include "host/api/acrxregistry.h"

namespace {

struct Closer {
    void operator()(void* handle) const { dlclose(handle); }
};

using EntryPoint = AcRx::AppRetCode (*)(AcRx::AppMsgCode, void*);
using ApiVersion = unsigned (*)();

std::unique_ptr<void, Closer> OpenModule() {
    return std::unique_ptr<void, Closer>(dlopen(TARNWICK_ARX_PATH, RTLD_NOW | RTLD_LOCAL));
}

AcEdCommandStack& Stack() {
    return *AcRxCast<AcEdCommandStack>(acrxSysRegistry()->at(ACRX_COMMAND_DOCK));
}

std::size_t GroupSize() {
    const auto& commands = Stack().commands();
    return static_cast<std::size_t>(std::count_if(commands.begin(), commands.end(), [](const auto& c) {
        return c.group == L"BlockPrice_Group";
    }));
}

// The per-document data and the notice of out-of-date tables.
TEST(ModuleExports, TheModulesReactorsAreRegisteredWhileItIsLoaded) {
    const std::size_t before = acDocManagerPtr()->reactors().size();
    {
        const auto module = OpenModule();
        ASSERT_NE(module, nullptr) << dlerror();
        EXPECT_EQ(acDocManagerPtr()->reactors().size(), before + 2);
    }
    EXPECT_EQ(acDocManagerPtr()->reactors().size(), before);
}

TEST(ModuleExports, ExportsItsEntryPointAndApiVersionAndRegistersItsCommandsThroughTheSharedHost) {
    const auto module = OpenModule();
    ASSERT_NE(module, nullptr) << dlerror();
    auto entry = reinterpret_cast<EntryPoint>(dlsym(module.get(), "acrxEntryPoint"));
    auto version = reinterpret_cast<ApiVersion>(dlsym(module.get(), "acrxGetApiVersion"));
    ASSERT_NE(entry, nullptr);
    ASSERT_NE(version, nullptr);
    EXPECT_EQ(version(), 0x00160000u);
    EXPECT_EQ(entry(AcRx::kNullMsg, nullptr), AcRx::kRetOK);
    int appId = 0;
    auto* linker = AcRxCast<AcRxDynamicLinker>(acrxSysRegistry()->at(ACRX_DYNAMIC_LINKER));

    EXPECT_EQ(entry(AcRx::kInitAppMsg, &appId), AcRx::kRetOK);
    EXPECT_EQ(GroupSize(), 3u);
    EXPECT_FALSE(linker->isApplicationLocked(&appId));

    EXPECT_EQ(entry(AcRx::kUnloadAppMsg, &appId), AcRx::kRetOK);
    EXPECT_EQ(GroupSize(), 0u);
    linker->forgetApplication(&appId);
}

}  // namespace
