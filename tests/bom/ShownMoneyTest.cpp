// Sums of money as shown: exact in cents, whatever the binary values behind the figures.
#include <gtest/gtest.h>

#include "bom/BomRows.h"
#include "bom/ShownMoney.h"

namespace {

struct SumCase {
    std::vector<std::wstring> figures;
    std::wstring sum;
};

class ShownMoneySum : public ::testing::TestWithParam<SumCase> {};

TEST_P(ShownMoneySum, AddsTheFiguresExactly) {
    EXPECT_EQ(SumShownMoney(GetParam().figures), GetParam().sum);
}

INSTANTIATE_TEST_SUITE_P(
    Cases, ShownMoneySum,
    ::testing::Values(SumCase{{}, L"0.00"}, SumCase{{L"0.10", L"0.20"}, L"0.30"},
                      SumCase{{L"1800.00", L"-0.10"}, L"1799.90"},
                      SumCase{{L"-5.00", L"2.50"}, L"-2.50"}, SumCase{{L"-0.00"}, L"0.00"},
                      SumCase{{L"-1.25", L"1.25"}, L"0.00"},
                      SumCase{{L"999999999.99", L"0.01"}, L"1000000000.00"},
                      SumCase{{L"12345678901234567890.12", L"87654321098765432109.88"},
                              L"100000000000000000000.00"},
                      SumCase{{L"1000000000.00", L"-0.01"}, L"999999999.99"},
                      SumCase{{L"inf", L"1.00"}, L"inf"}));

TEST(ShownMoney, TheSumOfShownTotalsDiffersFromTheShownSumWhereRowsRound) {
    // Three rows of 0.005 (a price of three decimals): each row shows 0.01, as the binary value lies
    // just above 0.005; their unrounded sum lies just below 0.015 and shows as 0.01.
    const double total = 0.005;
    EXPECT_EQ(FormatMoney(total), L"0.01");
    EXPECT_EQ(FormatMoney(total + total + total), L"0.01");
    EXPECT_EQ(SumShownMoney({FormatMoney(total), FormatMoney(total), FormatMoney(total)}), L"0.03");
    // Prices of two decimals: the binary error of the sum stays far below half a cent.
    EXPECT_EQ(FormatMoney(1032.3 + 1032.3 + 1032.3), L"3096.90");
    EXPECT_EQ(SumShownMoney({L"1032.30", L"1032.30", L"1032.30"}), L"3096.90");
}

TEST(ShownMoney, RecognisesOnlyFiguresAsShown) {
    for (const wchar_t* good : {L"0.00", L"-3.10", L"123456.78"}) EXPECT_TRUE(IsShownMoney(good)) << good;
    for (const wchar_t* bad : {L"", L"1", L"1.0", L".00", L"1.000", L"inf", L"nan", L"1e5.00", L"--1.00"})
        EXPECT_FALSE(IsShownMoney(bad)) << bad;
}

}  // namespace
