// Reading a module's exports from its file: real modules, and files that are no module.
#include <gtest/gtest.h>

#include <algorithm>

#include "host/desktop/modules/moduleexports.h"
#include "tests/TempFolder.h"

namespace {

const std::filesystem::path kModules = TARNWICK_TEST_MODULES;

TEST(ModuleExportTable, AGoodModuleExportsBothEntryPointsABrokenOneOnlyOne) {
    const ModuleExports exports = readModuleExports(kModules / "good.arx");
    EXPECT_EQ(exports.error, "");
    EXPECT_TRUE(exports.exports("acrxEntryPoint"));
    EXPECT_TRUE(exports.exports("acrxGetApiVersion"));
    // Its hidden functions and the functions it only calls are not exports.
    EXPECT_FALSE(exports.exports("acutPrintf"));
    EXPECT_FALSE(exports.exports("Hello"));
    const ModuleExports noEntry = readModuleExports(kModules / "noentry.arx");
    EXPECT_FALSE(noEntry.exports("acrxEntryPoint"));
    EXPECT_TRUE(noEntry.exports("acrxGetApiVersion"));
}

TEST(ModuleExportTable, TarnwickArxExportsExactlyItsTwoEntryPoints) {
    ModuleExports exports = readModuleExports(TARNWICK_ARX_PATH);
    EXPECT_EQ(exports.error, "");
    std::sort(exports.functions.begin(), exports.functions.end());
    EXPECT_EQ(exports.functions, (std::vector<std::string>{"acrxEntryPoint", "acrxGetApiVersion"}));
}

TEST(ModuleExportTable, FilesThatAreNoModuleSayWhy) {
    TempFolder folder;
    folder.write("notes.arx", "a price list, not a module\n");
    folder.write("short.arx",
                 "\x7f"
                 "ELF");
    std::string header(64, '\0');
    header.replace(0, 4,
                   "\x7f"
                   "ELF");
    header[4] = 1;  // 32-bit
    folder.write("old.arx", header);
    const struct {
        std::string file;
        std::string error;
    } cases[] = {
        {folder.path("notes.arx"), "not a shared library"},
        {folder.path("short.arx"), "not a shared library"},
        {folder.path("old.arx"), "built for another kind of machine"},
        {folder.path("missing.arx"), "cannot be read"},
    };
    for (const auto& c : cases) EXPECT_EQ(readModuleExports(c.file).error, c.error) << c.file;
}

}  // namespace
