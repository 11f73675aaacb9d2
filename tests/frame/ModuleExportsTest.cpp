// The built module loads like a host loads it and exports its two entry functions by name.
#include <gtest/gtest.h>

#include <dlfcn.h>

#include <memory>

#include "host/api/acadstatus.h"

namespace {

struct Closer {
    void operator()(void* handle) const { dlclose(handle); }
};

TEST(ModuleExports, TarnwickArxExportsItsEntryPointAndApiVersion) {
    const std::unique_ptr<void, Closer> module(dlopen(TARNWICK_ARX_PATH, RTLD_NOW | RTLD_LOCAL));
    ASSERT_NE(module, nullptr) << dlerror();
    using EntryPoint = AcRx::AppRetCode (*)(AcRx::AppMsgCode, void*);
    using ApiVersion = unsigned (*)();
    auto entry = reinterpret_cast<EntryPoint>(dlsym(module.get(), "acrxEntryPoint"));
    auto version = reinterpret_cast<ApiVersion>(dlsym(module.get(), "acrxGetApiVersion"));
    ASSERT_NE(entry, nullptr);
    ASSERT_NE(version, nullptr);
    EXPECT_EQ(version(), 0x00160000u);
    EXPECT_EQ(entry(AcRx::kNullMsg, nullptr), AcRx::kRetOK);
}

}  // namespace
