// The module's string table: texts by id, and the one argument a text takes.
#include <gtest/gtest.h>

#include "resources/StringTable.h"

namespace {

TEST(StringTable, HoldsTheEditorsTextsAsItShowsThem) {
    const std::pair<int, const wchar_t*> expected[] = {
        {IDS_PRICE_COLUMN_NAME, L"Block name"},
        {IDS_PRICE_COLUMN_PRICE, L"Price"},
        {IDS_PRICE_COLUMN_DESCRIPTION, L"Description"},
        {IDS_PRICE_NAME_ABSENT, L"Block name is absent"},
        {IDS_PRICE_PRICE_ABSENT, L"Price is absent"},
        {IDS_PRICE_TITLE_NEW, L"New"},
        {IDS_PRICE_TITLE_OPEN, L"Open"},
        {IDS_PRICE_TITLE_SAVE_AS, L"Save as"},
        {IDS_PRICE_EXTENSION, L"prc"},
    };
    for (const auto& [id, text] : expected) EXPECT_EQ(LoadModuleString(id), text) << id;
}

TEST(StringTable, AnUnknownIdGivesAnEmptyText) { EXPECT_EQ(LoadModuleString(4711), L""); }

TEST(StringTable, FormattingPutsTheArgumentInPlaceOfItsMark) {
    EXPECT_EQ(FormatModuleString(IDS_PRICE_NAME_NOT_UNIQUE, L"Door"), L"Block name Door is not unique");
    EXPECT_EQ(FormatModuleString(IDS_PRICE_SAVE_CHANGES, L"/plans/a %s.prc"),
              L"Save changes to /plans/a %s.prc");
    EXPECT_EQ(FormatModuleString(IDS_PRICE_NAME_ABSENT, L"x"), L"Block name is absent");
}

}  // namespace
