// Where the settings files lie and how their contents read and write.
#include <gtest/gtest.h>

#include <cstdlib>

#include "pricelist/SettingsFiles.h"
#include "tests/TempFolder.h"

namespace {

TEST(SettingsPaths, TheStatedRuleReplacesEveryModuleNameLowerCasesAndPrefersTheSlash) {
    struct Case {
        const wchar_t* module;
        const wchar_t* settingsFile;
        const wchar_t* widths;
        const wchar_t* fileName;
    };
    const Case cases[] = {
        {L"Tarnwick.arx", kPriceListSettingsFile, L"tarnwick1.set", L"filename.set"},
        {L"c:\\tools\\x.arx\\x.arx", kPriceListSettingsFile,
         L"c:\\tools\\tarnwick1.set\\tarnwick1.set", L"c:\\tools\\filename.set\\filename.set"},
        {L"C:\\Acad\\Tools/Tarnwick.ARX", kCalculationSettingsFile,
         L"c:\\acad\\tools/tarnwick2.set", L"c:\\acad\\tools/filename.set"},
    };
    for (const Case& c : cases) {
        const auto paths = MakeSettingsPaths(c.module, c.settingsFile, true);
        EXPECT_EQ(paths.widths, c.widths);
        EXPECT_EQ(paths.fileName, c.fileName);
    }
}

TEST(SettingsPaths, HereFileNamesKeepTheirCase) {
    TempFolder folder;
    const std::wstring module = folder.wpath("Tarnwick.arx");
    const auto paths = GetSettingsPaths(module, kPriceListSettingsFile);
    EXPECT_EQ(paths.widths, folder.wpath("tarnwick1.set"));
    EXPECT_EQ(paths.fileName, folder.wpath("filename.set"));
}

TEST(SettingsPaths, AnUnwritableModuleFolderMovesThemToTheConfigFolder) {
    TempFolder config;
    const char* previous = std::getenv("XDG_CONFIG_HOME");
    const std::string saved = previous ? previous : "";
    ::setenv("XDG_CONFIG_HOME", config.path("cfg").c_str(), 1);
    const auto paths = GetSettingsPaths(L"/no/such/folder/Tarnwick.arx", kCalculationSettingsFile);
    if (previous) {
        ::setenv("XDG_CONFIG_HOME", saved.c_str(), 1);
    } else {
        ::unsetenv("XDG_CONFIG_HOME");
    }
    EXPECT_EQ(paths.widths, config.wpath("cfg/tarnwick/tarnwick2.set"));
    EXPECT_EQ(paths.fileName, config.wpath("cfg/tarnwick/filename.set"));
    EXPECT_TRUE(WriteFileNameSetting(paths.fileName, L"/lists/a.prc"));
}

class SettingsContents : public ::testing::Test {
protected:
    TempFolder m_folder;
};

TEST_F(SettingsContents, WidthsReadAsTheIntegerFormatReadsThem) {
    m_folder.write("w.set", "0x10\n010 -5 oops 7");
    int read[5] = {-1, -1, -1, -1, -1};
    ASSERT_TRUE(ReadColumnWidths(m_folder.wpath("w.set"), read, 5));
    EXPECT_EQ(std::vector<int>(read, read + 5), (std::vector<int>{16, 8, -5, -1, -1}));
    EXPECT_FALSE(ReadColumnWidths(m_folder.wpath("missing.set"), read, 5));
}

TEST_F(SettingsContents, AFileNameIsBoundedToItsBufferAndAnEmptyOrMissingFileLeavesItAlone) {
    m_folder.write("filename.set", "  " + std::string(150, 'p'));
    std::wstring name;
    ASSERT_TRUE(ReadFileNameSetting(m_folder.wpath("filename.set"), name));
    EXPECT_EQ(name, std::wstring(99, L'p'));
    m_folder.write("filename.set", " \n");
    EXPECT_TRUE(ReadFileNameSetting(m_folder.wpath("filename.set"), name));
    EXPECT_FALSE(ReadFileNameSetting(m_folder.wpath("missing.set"), name));
    EXPECT_EQ(name, std::wstring(99, L'p'));
}

}  // namespace
