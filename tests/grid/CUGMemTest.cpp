// The in-memory data source: sparse storage, row and column splicing, find, and the stable sort.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "grid/CUGMem.h"
#include "grid/CUGSortCompare.h"

namespace {

void Put(CUGMem& mem, int col, long row, const wchar_t* text) {
    CUGCell cell;
    cell.SetText(text);
    ASSERT_EQ(mem.SetCell(col, row, &cell), 0);
}

std::wstring Text(CUGMem& mem, int col, long row) {
    CUGCell cell;
    if (mem.GetCell(col, row, &cell) != 0) return L"<none>";
    return cell.GetText() ? cell.GetText() : L"<no text>";
}

TEST(CUGMem, ReadingACellNeverWrittenLeavesTheCallersCellAlone) {
    CUGMem mem;
    CUGCell cell;
    EXPECT_EQ(mem.GetCell(0, 0, &cell), 1);  // no rows at all
    Put(mem, 3, 5, L"far");
    cell.SetCellType(2);
    EXPECT_EQ(mem.GetCell(1, 5, &cell), 1);   // a slot before the last one written
    EXPECT_EQ(mem.GetCell(4, 5, &cell), 1);   // past the end of the row
    EXPECT_EQ(mem.GetCell(0, 2, &cell), 1);   // a row before the last one written
    EXPECT_EQ(mem.GetCell(0, 6, &cell), 1);   // past the last row
    EXPECT_EQ(cell.GetText(), nullptr);
    EXPECT_EQ(cell.GetCellType(), 2);
    EXPECT_EQ(Text(mem, 3, 5), L"far");
    // Heading cells live beside the cells.
    Put(mem, 0, -1, L"Name");
    Put(mem, -1, -1, L"corner");
    EXPECT_EQ(Text(mem, 0, -1), L"Name");
    EXPECT_EQ(Text(mem, -1, -1), L"corner");
    EXPECT_EQ(Text(mem, 0, -2), L"<none>");
}

TEST(CUGMem, RowsAndColumnsSpliceInAndOut) {
    CUGMem mem;
    for (long row = 0; row < 3; ++row)
        for (int col = 0; col < 3; ++col)
            Put(mem, col, row, (std::to_wstring(col) + L"," + std::to_wstring(row)).c_str());
    EXPECT_EQ(mem.InsertRow(1), 0);
    EXPECT_EQ(Text(mem, 0, 1), L"<none>");
    EXPECT_EQ(Text(mem, 0, 2), L"0,1");
    EXPECT_EQ(mem.DeleteRow(0), 0);
    EXPECT_EQ(Text(mem, 2, 2), L"2,2");
    EXPECT_EQ(mem.DeleteRow(40), 0);  // missing: nothing to do, still success
    EXPECT_EQ(mem.InsertCol(0), 0);
    EXPECT_EQ(Text(mem, 1, 1), L"0,1");
    EXPECT_EQ(mem.DeleteCol(2), 0);
    EXPECT_EQ(Text(mem, 2, 1), L"2,1");
    EXPECT_EQ(mem.DeleteCell(2, 1), 0);
    EXPECT_EQ(Text(mem, 2, 1), L"<none>");
    EXPECT_EQ(mem.AppendRow(), 0);
    EXPECT_EQ(mem.Empty(), 0);
    EXPECT_EQ(Text(mem, 1, 1), L"<none>");
}

// Each search starts where the one before it ended.
TEST(CUGMem, FindWalksItsWayAndWraps) {
    struct Step {
        bool first;
        const wchar_t* text;
        int flags;
        int result, col;
        long row;
    };
    constexpr int kAllNoCase = UG_FIND_ALLCOLUMNS | UG_FIND_CASEINSENSITIVE;
    const Step steps[] = {
        {false, L"alpha", 0, 0, 0, 0},  // only after a full turn: the start cell is visited last
        {false, L"alpha", UG_FIND_PARTIAL, 0, 0, 3},
        {false, L"BETA", UG_FIND_CASEINSENSITIVE, 0, 0, 1},
        {false, L"BETA", 0, 1, 0, 1},
        {false, L"a", UG_FIND_UP | UG_FIND_PARTIAL, 0, 0, 0},
        {false, L"a", UG_FIND_UP | UG_FIND_PARTIAL, 0, 0, 4},  // backwards from row 0: the last row
        {false, L"a", UG_FIND_UP | UG_FIND_PARTIAL, 0, 0, 3},
        {true, L"beta", kAllNoCase, 0, 0, 1},  // along rows: every column of a row first
        {false, L"beta", kAllNoCase, 0, 2, 2},
        {false, L"beta", UG_FIND_ALLCOLUMNS | UG_FIND_UP, 0, 2, 2},  // the only exact match
    };
    CUGMem mem;  // column 0 of rows 0..4: alpha, Beta, <none>, alphabet, gamma
    Put(mem, 0, 0, L"alpha");
    Put(mem, 0, 1, L"Beta");
    Put(mem, 0, 3, L"alphabet");
    Put(mem, 0, 4, L"gamma");
    Put(mem, 2, 2, L"beta");
    int col = 0;
    long row = 0;
    for (const Step& step : steps) {
        SCOPED_TRACE(testing::PrintToString(std::wstring(step.text)) + " " +
                     std::to_string(step.flags));
        EXPECT_EQ(step.first ? mem.FindFirst(step.text, &col, &row, step.flags)
                             : mem.FindNext(step.text, &col, &row, step.flags),
                  step.result);
        EXPECT_EQ(col, step.col);
        EXPECT_EQ(row, step.row);
    }
    EXPECT_EQ(mem.FindFirst(L"delta", &col, &row, UG_FIND_ALLCOLUMNS), 1);
    CUGMem empty;
    EXPECT_EQ(empty.FindFirst(L"x", &col, &row, 0), 1);
}

// Compares by the length of the text and records whether it was ever handed a missing cell.
class ByLength final : public CUGSortCompare {
public:
    int OnSortCompare(const CUGCell* a, const CUGCell* b, int) override {
        if (!a || !b) {
            sawNull = true;
            return a ? 1 : (b ? -1 : 0);
        }
        return a->GetTextLength() - b->GetTextLength();
    }
    bool sawNull = false;
};

TEST(CUGMem, SortAsksTheOwnersComparisonAndKeepsEqualRowsInOrder) {
    CUGMem mem;
    ByLength owner;
    mem.SetSortCompare(&owner);
    const wchar_t* texts[] = {L"ccc", L"b", L"aa", L"d", L"ee"};
    for (long row = 0; row < 5; ++row) Put(mem, 0, row, texts[row]);
    Put(mem, 1, 5, L"row without column 0");
    EXPECT_EQ(mem.SortBy(0, 1), 0);
    EXPECT_TRUE(owner.sawNull);
    const std::vector<std::wstring> expected{L"<none>", L"b", L"d", L"aa", L"ee", L"ccc"};
    for (long row = 0; row < 6; ++row) EXPECT_EQ(Text(mem, 0, row), expected[static_cast<std::size_t>(row)]);
    EXPECT_EQ(Text(mem, 1, 0), L"row without column 0");  // the whole row moved
}

}  // namespace
