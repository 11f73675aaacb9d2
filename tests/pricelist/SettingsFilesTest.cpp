// Where the settings files lie and how their contents read and write.
#include <gtest/gtest.h>

#include <cstdlib>

#include "pricelist/SettingsFiles.h"
#include "tests/TempFolder.h"

namespace {

TEST(SettingsPaths, AModulePathWithoutFolderGivesPathsInTheCurrentFolder) {
    const auto paths = MakeSettingsPaths(L"Tarnwick.arx", kPriceListSettingsFile, true);
    EXPECT_EQ(paths.widths, L"tarnwick1.set");
    EXPECT_EQ(paths.fileName, L"filename.set");
}

TEST(SettingsPaths, EveryOccurrenceOfTheModuleNameIsReplaced) {
    const auto paths = MakeSettingsPaths(L"c:\\tools\\x.arx\\x.arx", kPriceListSettingsFile, true);
    EXPECT_EQ(paths.widths, L"c:\\tools\\tarnwick1.set\\tarnwick1.set");
    EXPECT_EQ(paths.fileName, L"c:\\tools\\filename.set\\filename.set");
}

TEST(SettingsPaths, TheStatedRuleLowerCasesAndPrefersTheSlash) {
    const auto paths = MakeSettingsPaths(L"C:\\Acad\\Tools/Tarnwick.ARX", kCalculationSettingsFile, true);
    EXPECT_EQ(paths.widths, L"c:\\acad\\tools/tarnwick2.set");
    EXPECT_EQ(paths.fileName, L"c:\\acad\\tools/filename.set");
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

TEST_F(SettingsContents, WidthsAreNumbersEachFollowedByOneBlank) {
    const int widths[] = {120, 40, 160};
    ASSERT_TRUE(WriteColumnWidths(m_folder.wpath("tarnwick1.set"), widths, 3));
    EXPECT_EQ(m_folder.read("tarnwick1.set"), "120 40 160 ");
    int read[3] = {-1, -1, -1};
    ASSERT_TRUE(ReadColumnWidths(m_folder.wpath("tarnwick1.set"), read, 3));
    EXPECT_EQ(std::vector<int>(read, read + 3), (std::vector<int>{120, 40, 160}));
}

TEST_F(SettingsContents, WidthsReadAsTheIntegerFormatReadsThem) {
    m_folder.write("w.set", "0x10\n010 -5 oops 7");
    int read[5] = {-1, -1, -1, -1, -1};
    ASSERT_TRUE(ReadColumnWidths(m_folder.wpath("w.set"), read, 5));
    EXPECT_EQ(std::vector<int>(read, read + 5), (std::vector<int>{16, 8, -5, -1, -1}));
    EXPECT_FALSE(ReadColumnWidths(m_folder.wpath("missing.set"), read, 5));
}

TEST_F(SettingsContents, AFileNameWithABlankIsWrittenWholeAndReadBackCut) {
    ASSERT_TRUE(WriteFileNameSetting(m_folder.wpath("filename.set"), L"c:\\my prices\\a.prc"));
    EXPECT_EQ(m_folder.read("filename.set"), "c:\\my prices\\a.prc");
    std::wstring name = L"unchanged";
    ASSERT_TRUE(ReadFileNameSetting(m_folder.wpath("filename.set"), name));
    EXPECT_EQ(name, L"c:\\my");
}

TEST_F(SettingsContents, AFileNameIsBoundedToItsBuffer) {
    m_folder.write("filename.set", "  " + std::string(150, 'p'));
    std::wstring name;
    ASSERT_TRUE(ReadFileNameSetting(m_folder.wpath("filename.set"), name));
    EXPECT_EQ(name, std::wstring(99, L'p'));
}

TEST_F(SettingsContents, AnEmptyOrMissingFileLeavesTheNameAlone) {
    m_folder.write("filename.set", " \n");
    std::wstring name = L"kept";
    EXPECT_TRUE(ReadFileNameSetting(m_folder.wpath("filename.set"), name));
    EXPECT_FALSE(ReadFileNameSetting(m_folder.wpath("missing.set"), name));
    EXPECT_EQ(name, L"kept");
}

}  // namespace
