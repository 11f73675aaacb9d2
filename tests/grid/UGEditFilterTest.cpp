// The base keystroke filter of the in-place editors, and the masked editor's input rule.
#include <gtest/gtest.h>

#include "grid/UGEditFilter.h"
#include "grid/UGMask.h"

namespace {

TEST(UGEditFilter, EachColumnTakesWhatItsTableAllows) {
    struct Row {
        int col;
        const wchar_t* text;
        int character;
        int accepted;
    };
    const Row rows[] = {
        {1, L"12", '.', 1},  {1, L"12.", '5', 1}, {1, L"12.5", '.', 0}, {1, L"12", 'a', 0},
        {1, L"12", 8, 1},    {1, L"", '|', 0},    {1, L"", '-', 0},     {2, L"x", 'a', 1},
        {2, L"x", '|', 0},   {2, L"x", '.', 1},   {3, L"x", '|', 1},    {0, L"", '|', 1},
        {-1, L"", '|', 1},
    };
    for (const Row& row : rows)
        EXPECT_EQ(UGEditKeystrokeFilter(row.col, row.text, row.character), row.accepted)
            << "column " << row.col << " character " << row.character;
}

TEST(UGMask, PlaceholdersTakeTheirClassAndLiteralsAreFilledIn) {
    EXPECT_EQ(UGMaskInsert(L"", 5, L'x'), L"x");
    EXPECT_EQ(UGMaskInsert(L"00-00", 0, L'4'), L"4");
    EXPECT_EQ(UGMaskInsert(L"00-00", 0, L'a'), std::nullopt);
    EXPECT_EQ(UGMaskInsert(L"00-00", 2, L'7'), L"-7");
    EXPECT_EQ(UGMaskInsert(L"00-00", 2, L'-'), L"-");
    EXPECT_EQ(UGMaskInsert(L"00-00", 5, L'1'), std::nullopt);
    EXPECT_EQ(UGMaskInsert(L"Aa?", 0, L'1'), std::nullopt);
    EXPECT_EQ(UGMaskInsert(L"Aa?", 1, L'1'), L"1");
    EXPECT_EQ(UGMaskInsert(L"Aa?", 2, L'%'), L"%");
}

}  // namespace
