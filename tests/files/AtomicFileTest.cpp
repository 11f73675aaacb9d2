// Files replaced whole or not at all: permissions, links, devices, failures that leave nothing
// behind, names as long as the file system allows, and names removed when a signal ends the process.
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <filesystem>
#include <string>
#include <vector>

#include "files/atomicfile.h"
#include "files/interruptcleanup.h"
#include "tests/FullDisk.h"
#include "tests/TempFolder.h"

namespace {

mode_t modeOf(const std::string& path) {
    struct stat info {};
    ::stat(path.c_str(), &info);
    return info.st_mode & 07777;
}

TEST(AtomicFile, ReplacesTheFileOrTheOneALinkLeadsToAndKeepsItsPermissions) {
    TempFolder folder;
    folder.write("plan.dxf", "old");
    ::chmod(folder.path("plan.dxf").c_str(), 0640);
    ASSERT_TRUE(replaceFile(folder.path("plan.dxf"), "new").isOk());
    EXPECT_EQ(folder.read("plan.dxf"), "new");
    EXPECT_EQ(modeOf(folder.path("plan.dxf")), 0640u);

    std::filesystem::create_symlink("plan.dxf", folder.path("link.dxf"));
    ASSERT_TRUE(replaceFile(folder.path("link.dxf"), "through the link").isOk());
    EXPECT_TRUE(std::filesystem::is_symlink(folder.path("link.dxf")));
    EXPECT_EQ(folder.read("plan.dxf"), "through the link");

    const mode_t mask = ::umask(0);
    ::umask(mask);
    ASSERT_TRUE(replaceFile(folder.path("copy.dxf"), "copy").isOk());
    EXPECT_EQ(modeOf(folder.path("copy.dxf")), 0666u & ~mask);
    EXPECT_EQ(folder.entries(), (std::vector<std::string>{"copy.dxf", "link.dxf", "plan.dxf"}));
}

TEST(AtomicFile, APieceByPieceContentAndAFileNameOfTheLongestLength) {
    TempFolder folder;
    const std::string name(255, 'n');
    std::string expected;
    const FileStatus status = replaceFile(folder.path(name), [&](const FileSink& sink) {
        for (int i = 0; i < 100000; ++i) {
            const std::string piece = std::to_string(i) + "\n";
            expected += piece;
            sink(piece);
        }
    });
    ASSERT_TRUE(status.isOk()) << status.errorString();
    EXPECT_EQ(folder.read(name), expected);
    EXPECT_EQ(folder.entries(), std::vector<std::string>{name});
}

TEST(AtomicFile, AFailureNamesTheFileAndLeavesTheFolderAsItWas) {
    TempFolder folder;
    folder.write("keep.txt", "original");
    std::filesystem::create_directory(folder.path("dir"));
    std::filesystem::create_symlink("nowhere.txt", folder.path("dangling.txt"));
    struct Case {
        std::string target;
        std::string message;
    };
    const std::vector<Case> cases{
        {folder.path("missing/x.txt"),
         folder.path("missing/x.txt") + ": cannot create a file in its folder: no such file or directory"},
        {folder.path("dir"), folder.path("dir") + ": cannot write: is a directory"},
        {folder.path("dangling.txt"), folder.path("dangling.txt") + ": the link leads nowhere"},
    };
    for (const Case& c : cases) {
        const FileStatus status = replaceFile(c.target, "new");
        EXPECT_FALSE(status.isOk());
        EXPECT_EQ(status.errorString(), c.message);
    }

    // A write that fails half way.
    const FileStatus tooLarge = [&] {
        const FullDisk full(4096);
        return replaceFile(folder.path("keep.txt"), std::string(3 << 20, 'x'));
    }();
    EXPECT_EQ(tooLarge.errorString(), folder.path("keep.txt") + ": cannot write: file too large");
    EXPECT_EQ(tooLarge.systemError(), EFBIG);

    {
        AtomicFile abandoned(folder.path("keep.txt"));
        ASSERT_TRUE(abandoned.open().isOk());
        ASSERT_TRUE(abandoned.write("never committed").isOk());
    }
    EXPECT_EQ(folder.read("keep.txt"), "original");
    EXPECT_EQ(folder.entries(), (std::vector<std::string>{"dangling.txt", "dir", "keep.txt"}));
}

TEST(AtomicFile, ADeviceTakesTheBytesDirectly) {
    ASSERT_TRUE(replaceFile("/dev/null", "nothing").isOk());
    struct stat info {};
    ASSERT_EQ(::stat("/dev/null", &info), 0);
    EXPECT_TRUE(S_ISCHR(info.st_mode));
    const FileStatus full = replaceFile("/dev/full", "no room");
    EXPECT_EQ(full.errorString(), "/dev/full: cannot write: no space left on device");
}

TEST(AtomicFile, AnotherLibraryMayWriteTheNewFileByName) {
    TempFolder folder;
    folder.write("book.xlsx", "old");
    AtomicFile file(folder.path("book.xlsx"));
    ASSERT_TRUE(file.open().isOk());
    std::FILE* other = std::fopen(file.writablePath().c_str(), "wb");
    ASSERT_NE(other, nullptr);
    std::fputs("written by name", other);
    ASSERT_EQ(std::fclose(other), 0);
    EXPECT_EQ(folder.read("book.xlsx"), "old");
    ASSERT_TRUE(file.commit().isOk());
    EXPECT_EQ(folder.read("book.xlsx"), "written by name");
    EXPECT_EQ(folder.entries(), std::vector<std::string>{"book.xlsx"});
}

TEST(InterruptCleanup, ASignalThatEndsTheProcessRemovesTheNamesFirst) {
    for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
        TempFolder folder;
        folder.write(".tarnwick-abcdef", "half written");
        const pid_t child = ::fork();
        ASSERT_NE(child, -1);
        if (child == 0) {
            const InterruptCleanup cleanup(folder.path(".tarnwick-abcdef"));
            ::raise(signal);
            ::_exit(0);
        }
        int status = 0;
        ASSERT_EQ(::waitpid(child, &status, 0), child);
        EXPECT_TRUE(WIFSIGNALED(status) && WTERMSIG(status) == signal) << status;
        EXPECT_TRUE(folder.entries().empty()) << signal;
    }
}

}  // namespace
