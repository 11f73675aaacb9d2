// The rows the calculation grid shows and their summary.
#include <gtest/gtest.h>

#include "bom/BomRows.h"

namespace {

TEST(BomRows, NoRowsMeansNoSummaryRow) {
    const auto shown = FillFromResults({}, false);
    EXPECT_TRUE(shown.rows.empty());
    EXPECT_EQ(shown.summary, (ResultString{L"Summary:", 0.0, 0, L"", 0.0}));
}

TEST(BomRows, TheSummaryAddsTheUnroundedTotalsOfTheRowsShown) {
    const std::vector<ResultString> results{{L"a", 0.004, 1, L"x", 0.004},
                                            {L"b", 0.004, 1, L"", 0.004},
                                            {L"unsold", 9.0, 0, L"", 0.0}};
    const auto all = FillFromResults(results, false);
    ASSERT_EQ(all.rows.size(), 4u);
    EXPECT_EQ(all.rows[0], (BomRow{L"a", L"0.00", L"1", L"x", L"0.00"}));
    EXPECT_EQ(all.rows[2], (BomRow{L"unsold", L"9.00", L"0", L"", L"0.00"}));
    EXPECT_EQ(all.rows[3], (BomRow{L"Summary:", L"", L"", L"", L"0.01"}));

    const auto priced = FillFromResults(results, true);
    EXPECT_EQ(priced.rows.size(), 3u);
    EXPECT_DOUBLE_EQ(priced.summary.total, 0.008);
}

TEST(BomRows, MoneyHasTwoDecimalsAndQuantitiesNone) {
    EXPECT_EQ(FormatMoney(1234567.891), L"1234567.89");
    EXPECT_EQ(FormatMoney(2.5), L"2.50");
    EXPECT_EQ(FormatMoney(-0.125), L"-0.12");
    EXPECT_EQ(FormatQuantity(-3), L"-3");
}

}  // namespace
