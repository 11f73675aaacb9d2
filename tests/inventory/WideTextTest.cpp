// Case and number conversions with the run-time's "C" locale behaviour.
#include <gtest/gtest.h>

#include "inventory/WideText.h"

namespace {

TEST(WideText, OnlyAsciiLettersHaveCase) {
    EXPECT_EQ(MakeLower(L"DOOR-Ä-Ж"), L"door-Ä-Ж");
    EXPECT_EQ(MakeUpper(L"qtb0012"), L"QTB0012");
    EXPECT_EQ(CompareNoCase(L"Door", L"dOOR"), 0);
    EXPECT_LT(CompareNoCase(L"Door", L"DOOR2"), 0);
    EXPECT_GT(CompareNoCase(L"b", L"A"), 0);
    // "_" lies between the upper- and lower-case letters: compared as lower case, it sorts first.
    EXPECT_LT(CompareNoCase(L"_x", L"Ax"), 0);
}

TEST(WideText, IntegerConversionStopsAtTheFirstNonDigit) {
    EXPECT_EQ(WToI(L"0012"), 12);
    EXPECT_EQ(WToI(L"abcd"), 0);
    EXPECT_EQ(WToI(L" -7x"), -7);
    EXPECT_EQ(WToI(L"99999999999"), 2147483647);
}

TEST(WideText, DecimalConversionIgnoresTheLocaleAndTrailingText) {
    EXPECT_DOUBLE_EQ(WToF(L"12.5"), 12.5);
    EXPECT_DOUBLE_EQ(WToF(L"  3.25 EUR"), 3.25);
    EXPECT_DOUBLE_EQ(WToF(L"1e3"), 1000.0);
    EXPECT_DOUBLE_EQ(WToF(L"ten"), 0.0);
    EXPECT_DOUBLE_EQ(WToF(L"12,5"), 12.0);
    EXPECT_DOUBLE_EQ(WToF(L""), 0.0);
}

}  // namespace
