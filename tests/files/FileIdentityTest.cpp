// Two names of one file are told from two files: links, hard links, relative names, files to come.
#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>

#include "files/fileidentity.h"
#include "tests/TempFolder.h"

namespace {

TEST(FileIdentity, NamesOfOneFileAreOneAndOtherFilesAreNot) {
    TempFolder folder;
    folder.write("plan.dxf", "x");
    folder.write("other.dxf", "x");
    std::filesystem::create_symlink("plan.dxf", folder.path("link.dxf"));
    std::filesystem::create_hard_link(folder.path("plan.dxf"), folder.path("hard.dxf"));
    std::filesystem::create_directory(folder.path("sub"));
    std::filesystem::create_symlink(folder.path(""), folder.path("sub/up"));
    const std::filesystem::path here = std::filesystem::current_path();
    std::filesystem::current_path(folder.path("sub"));

    struct Case {
        std::string a;
        std::string b;
        bool same;
    };
    const Case cases[] = {
        {folder.path("plan.dxf"), folder.path("link.dxf"), true},
        {folder.path("plan.dxf"), folder.path("hard.dxf"), true},
        {folder.path("plan.dxf"), "../plan.dxf", true},
        {folder.path("plan.dxf"), "up/plan.dxf", true},
        {folder.path("plan.dxf"), folder.path("other.dxf"), false},
        // Files that do not exist yet: the same place, however it is named.
        {folder.path("new.csv"), "../new.csv", true},
        {folder.path("new.csv"), "up/./new.csv", true},
        {folder.path("new.csv"), folder.path("new.xlsx"), false},
        {folder.path("new.csv"), folder.path("plan.dxf"), false},
    };
    for (const Case& c : cases) EXPECT_EQ(isSameFile(c.a, c.b), c.same) << c.a << " / " << c.b;
    std::filesystem::current_path(here);
}

}  // namespace
