// The block-name inventory over a drawing: what it lists, its order, marks and look-ups.
#include <gtest/gtest.h>

#include <random>

#include "host/scripted/memorydatabase.h"
#include "inventory/BlockNamesCont.h"

namespace {

class BlockNamesContTest : public ::testing::Test {
protected:
    void SetUp() override { acdbHostApplicationServices()->setWorkingDatabase(&m_database); }
    void TearDown() override { acdbHostApplicationServices()->setWorkingDatabase(nullptr); }

    std::wstring LoadSortedUnmarked(BlockNamesCont& names) {
        names.Load();
        names.Sort();
        std::wstring unmarked;
        names.UnmarkedNames(unmarked);
        return unmarked;
    }

    MemoryDatabase m_database;
};

TEST_F(BlockNamesContTest, LayoutsOnlyGiveNoNames) {
    BlockNamesCont names;
    EXPECT_TRUE(names.Load());
    EXPECT_TRUE(names.Names().empty());
    std::wstring unmarked = L"stale";
    names.UnmarkedNames(unmarked);
    EXPECT_EQ(unmarked, L"");
}

TEST_F(BlockNamesContTest, LeavesOutStarNamesErasedAndUnopenableRecords) {
    m_database.addBlock(L"*U12");
    m_database.addBlock(L"Chair");
    m_database.eraseRecord(m_database.addBlock(L"Gone"));
    m_database.makeUnopenable(m_database.addBlock(L"Locked"));
    m_database.addBlock(L"XREF|Desk");
    BlockNamesCont names;
    EXPECT_EQ(LoadSortedUnmarked(names), L"Chair\nXREF|Desk\n");
}

TEST_F(BlockNamesContTest, SortsIgnoringCaseAndFindsAnyCase) {
    m_database.addBlock(L"DOOR2");
    m_database.addBlock(L"window");
    m_database.addBlock(L"Door");
    BlockNamesCont names;
    EXPECT_EQ(LoadSortedUnmarked(names), L"Door\nDOOR2\nwindow\n");

    names.SetMark(L"door", 1);
    names.SetMark(L"WINDOW", 1);
    names.SetMark(L"nothing", 1);
    std::wstring unmarked;
    names.UnmarkedNames(unmarked);
    EXPECT_EQ(unmarked, L"DOOR2\n");

    names.ClearMarks();
    names.UnmarkedNames(unmarked);
    EXPECT_EQ(unmarked, L"Door\nDOOR2\nwindow\n");
    m_database.addBlock(L"Desk");  // a reload replaces the names
    EXPECT_EQ(LoadSortedUnmarked(names), L"Desk\nDoor\nDOOR2\nwindow\n");
}

// The order the exchange sort gives, written out plainly.
std::vector<blname> ExchangeSorted(std::vector<blname> a) {
    const BlockNamesContSort sorter;
    for (std::size_t i = 0; i + 1 < a.size(); ++i)
        for (std::size_t j = i + 1; j < a.size(); ++j)
            if (sorter.Compare(a[i], a[j]) > 0) std::swap(a[i], a[j]);
    return a;
}

TEST(RLsort, GivesTheExchangeSortOrderAlsoForNamesEqualIgnoringCase) {
    std::mt19937 random(42);
    const std::vector<std::wstring> pool{L"a", L"A", L"b", L"B", L"door", L"Door", L"DOOR", L"z"};
    for (int trial = 0; trial < 200; ++trial) {
        std::vector<blname> names;
        const int count = static_cast<int>(random() % 12);
        for (int i = 0; i < count; ++i) names.push_back({pool[random() % pool.size()], i});
        std::vector<blname> sorted = names;
        BlockNamesContSort().Sort(sorted);
        const auto expected = ExchangeSorted(names);
        ASSERT_EQ(sorted.size(), expected.size());
        for (std::size_t i = 0; i < sorted.size(); ++i) {
            EXPECT_EQ(sorted[i].name, expected[i].name) << "trial " << trial << " at " << i;
            EXPECT_EQ(sorted[i].marked, expected[i].marked) << "trial " << trial << " at " << i;
        }
    }
}

TEST(RLsort, FindSearchesTheWholeRangeIncludingBothEnds) {
    std::vector<blname> names;
    for (const wchar_t* n : {L"a", L"c", L"e", L"g", L"i", L"k"}) names.push_back({n, 0});
    const BlockNamesContSort sorter;
    for (int i = 0; i < static_cast<int>(names.size()); ++i)
        EXPECT_EQ(sorter.Find(names[static_cast<std::size_t>(i)], names), i);
    for (const wchar_t* missing : {L"0", L"b", L"h", L"z"})
        EXPECT_EQ(sorter.Find({missing, 0}, names), -1) << "looking for " << static_cast<char>(missing[0]);
    EXPECT_EQ(sorter.Find({L"a", 0}, {}), -1);
}

}  // namespace
