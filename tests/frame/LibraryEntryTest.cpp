// The library entry's attach and detach, the module path, and the resource override.
#include <gtest/gtest.h>

#include <climits>
#include <cstdlib>
#include <stdexcept>
#include <string>

#include "frame/LibraryEntry.h"
#include "frame/ResourceOverride.h"
#include "resources/ModulePath.h"
#include "text/TextFile.h"

namespace {

// Stands for the host's own resources, current before the module attaches.
const int kHostResources = 0;

std::wstring ExecutablePath() {
    char resolved[PATH_MAX];
    return realpath("/proc/self/exe", resolved) ? WidePath(resolved) : std::wstring();
}

class LibraryEntryTest : public ::testing::Test {
protected:
    void SetUp() override {
        AfxSetResourceHandle(&kHostResources);
        LibraryMain(ModuleInstance(), LibraryReason::ProcessAttach);
    }
    void TearDown() override {
        LibraryMain(ModuleInstance(), LibraryReason::ProcessDetach);
        AfxSetResourceHandle(nullptr);
    }
};

TEST_F(LibraryEntryTest, AttachInitialisesTheExtensionStateAndThePath) {
    EXPECT_NE(ExtensionModule.attached, 0);
    EXPECT_EQ(ExtensionModule.defaultResource, &kHostResources);
    EXPECT_EQ(ExtensionModule.moduleResource, ModuleInstance());
    EXPECT_NE(ModuleInstance(), nullptr);
    // Linked into this test program, the code's module is the program itself.
    EXPECT_EQ(modulePath, ExecutablePath());
}

TEST_F(LibraryEntryTest, AttachingAgainKeepsTheStateOfTheFirstAttach) {
    const int other = 0;
    AfxSetResourceHandle(&other);
    EXPECT_TRUE(LibraryMain(ModuleInstance(), LibraryReason::ProcessAttach));
    EXPECT_EQ(ExtensionModule.defaultResource, &kHostResources);
}

TEST_F(LibraryEntryTest, ThreadMessagesChangeNothingAndDetachEndsTheExtensionState) {
    for (const LibraryReason reason : {LibraryReason::ThreadAttach, LibraryReason::ThreadDetach}) {
        EXPECT_TRUE(LibraryMain(nullptr, reason));
        EXPECT_NE(ExtensionModule.attached, 0);
        EXPECT_EQ(ExtensionModule.moduleResource, ModuleInstance());
    }
    for (int twice = 0; twice < 2; ++twice) {
        EXPECT_TRUE(LibraryMain(ModuleInstance(), LibraryReason::ProcessDetach));
        EXPECT_EQ(ExtensionModule.attached, 0);
    }
}

TEST(LibraryEntry, AnAttachWithoutInstanceLeavesTheModuleDetachedButSucceeds) {
    ASSERT_EQ(ExtensionModule.attached, 0);
    EXPECT_TRUE(LibraryMain(nullptr, LibraryReason::ProcessAttach));
    EXPECT_EQ(ExtensionModule.attached, 0);
    EXPECT_EQ(modulePath, ExecutablePath());
}

TEST_F(LibraryEntryTest,
       ResourceOverrideMakesTheModuleCurrentAndRestoresEvenWhenAnExceptionLeaves) {
    try {
        const ResourceOverride override;
        EXPECT_EQ(AfxGetResourceHandle(), ModuleInstance());
        throw std::runtime_error("dialog failed");
    } catch (const std::runtime_error&) {
    }
    EXPECT_EQ(AfxGetResourceHandle(), &kHostResources);
}

}  // namespace
