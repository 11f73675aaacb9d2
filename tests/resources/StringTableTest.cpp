// The module's string table: the one argument a text takes, and unknown ids.
#include <gtest/gtest.h>

#include "resources/StringTable.h"

namespace {

TEST(StringTable, FormattingPutsTheArgumentInPlaceOfItsMark) {
    EXPECT_EQ(FormatModuleString(IDS_PRICE_NAME_NOT_UNIQUE, L"Door"), L"Block name Door is not unique");
    EXPECT_EQ(FormatModuleString(IDS_PRICE_SAVE_CHANGES, L"/plans/a %s.prc"),
              L"Save changes to /plans/a %s.prc");
    EXPECT_EQ(FormatModuleString(IDS_PRICE_NAME_ABSENT, L"x"), L"Block name is absent");
    EXPECT_EQ(LoadModuleString(4711), L"");
}

}  // namespace
