// The recent drawings: newest first, each once, a few kept, and read back from their file at the
// next start.
#include <gtest/gtest.h>

#include "host/desktop/session/recentdrawings.h"
#include "tests/TempFolder.h"

namespace {

using Paths = std::vector<std::filesystem::path>;

TEST(RecentDrawings, NewestFirstEachOnceAFewKeptAndReadBackAtTheNextStart) {
    TempFolder folder;
    const std::filesystem::path store = folder.path("config/tarnwick/tarnwick-cad.recent");
    {
        RecentDrawings recent(store);
        EXPECT_TRUE(recent.paths().empty());
        for (int i = 1; i <= 9; ++i) ASSERT_TRUE(recent.add("/plans/" + std::to_string(i)).isOk());
        ASSERT_TRUE(recent.add("/plans/5").isOk());
        EXPECT_EQ(recent.paths(), (Paths{"/plans/5", "/plans/9", "/plans/8", "/plans/7", "/plans/6",
                                         "/plans/4", "/plans/3", "/plans/2"}));
    }
    EXPECT_EQ(RecentDrawings(store).paths().front(), "/plans/5");
    EXPECT_EQ(RecentDrawings(store).paths().size(), RecentDrawings::kKept);
    EXPECT_EQ(folder.read("config/tarnwick/tarnwick-cad.recent").substr(0, 18),
              "/plans/5\n/plans/9\n");
}

TEST(RecentDrawings, AStoreThatCannotBeWrittenSaysWhyAndTheListStillHoldsTheDrawing) {
    TempFolder folder;
    folder.write("file", "");
    RecentDrawings recent(folder.path("file/recent"));
    const FileStatus status = recent.add("/plans/a.dxf");
    EXPECT_FALSE(status.isOk());
    EXPECT_NE(status.errorString().find(folder.path("file/recent")), std::string::npos)
        << status.errorString();
    EXPECT_EQ(recent.paths(), Paths{"/plans/a.dxf"});
}

}  // namespace
