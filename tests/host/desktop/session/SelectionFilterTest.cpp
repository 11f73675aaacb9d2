// Selection filters from group codes, and the wildcards they match with.
#include <gtest/gtest.h>

#include "host/desktop/session/selectionfilter.h"

namespace {

TEST(SelectionFilter, WildcardsAsCadProgramsKnowThem) {
    const struct {
        const wchar_t* pattern;
        const wchar_t* text;
        bool matches;
    } cases[] = {
        {L"INSERT", L"INSERT", true},    {L"INSERT", L"insert", true},
        {L"INSERT", L"LINE", false},     {L"LINE,ARC", L"ARC", true},
        {L"LINE,ARC", L"CIRCLE", false}, {L"*", L"ANYTHING", true},
        {L"D*", L"DOOR", true},          {L"D*", L"WINDOW", false},
        {L"QTB####", L"QTB0001", true},  {L"QTB####", L"QTB00A1", false},
        {L"?OOR", L"DOOR", true},        {L"~INSERT", L"LINE", true},
        {L"~INSERT", L"INSERT", false},  {L"", L"", true},
        {L"Стул", L"стул", true},
    };
    for (const auto& c : cases)
        EXPECT_EQ(matchesWildcard(c.pattern, c.text), c.matches)
            << testing::PrintToString(std::wstring(c.pattern)) << " "
            << testing::PrintToString(std::wstring(c.text));
}

// Other group codes are refused: the desktop editor's tests, with the message the user sees.
TEST(SelectionFilter, TypeLayerAndNameFromTheirGroupCodesAndNoneWithoutAFilter) {
    const std::vector<resbuf> items{resbuf::groupCode(0, L"INSERT"), resbuf::groupCode(8, L"FURN*"),
                                    resbuf::groupCode(2, L"DESK,CHAIR")};
    const SelectionFilterResult made = makeSelectionFilter(&items);
    ASSERT_TRUE(made.filter);
    EXPECT_TRUE(made.filter->acceptsType(L"INSERT"));
    EXPECT_FALSE(made.filter->acceptsType(L"LINE"));
    EXPECT_TRUE(made.filter->acceptsLayer(L"FURNITURE"));
    EXPECT_FALSE(made.filter->acceptsLayer(L"WALLS"));
    EXPECT_TRUE(made.filter->acceptsBlockName(L"chair"));
    EXPECT_FALSE(made.filter->acceptsBlockName(L"DOOR"));
    EXPECT_TRUE(made.filter->needsReferenceData());
    const SelectionFilterResult none = makeSelectionFilter(nullptr);
    ASSERT_TRUE(none.filter);
    EXPECT_TRUE(none.filter->acceptsType(L"CIRCLE"));
    EXPECT_FALSE(none.filter->needsReferenceData());
}

}  // namespace
