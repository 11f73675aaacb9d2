// Typed numbers and points, and numbers written back for echo.
#include <gtest/gtest.h>

#include "host/desktop/session/inputtext.h"

namespace {

TEST(InputText, RealsAreReadWithAPointWhateverTheLocale) {
    const struct {
        const wchar_t* text;
        std::optional<double> value;
    } cases[] = {
        {L"2", 2.0},
        {L" -0.5 ", -0.5},
        {L"+3", 3.0},
        {L"1e3", 1000.0},
        {L".25", 0.25},
        {L"", std::nullopt},
        {L"1,5", std::nullopt},
        {L"abc", std::nullopt},
        {L"2x", std::nullopt},
        {L"inf", std::nullopt},
        {L"nan", std::nullopt},
        {L"\u0661", std::nullopt},
    };
    for (const auto& c : cases)
        EXPECT_EQ(parseReal(c.text), c.value) << testing::PrintToString(std::wstring(c.text));
}

TEST(InputText, PointsTakeTwoOrThreeCoordinatesAndRelativeOnes) {
    const AcGePoint3d last{10, 20, 5};
    const struct {
        const wchar_t* text;
        const AcGePoint3d* last;
        std::optional<AcGePoint3d> point;
    } cases[] = {
        {L"1,2", nullptr, AcGePoint3d{1, 2, 0}},
        {L"1.5, -2 ,3", nullptr, AcGePoint3d{1.5, -2, 3}},
        {L"@1,2", &last, AcGePoint3d{11, 22, 5}},
        {L"@1,2,3", &last, AcGePoint3d{11, 22, 8}},
        {L"@1,2", nullptr, AcGePoint3d{1, 2, 0}},
        {L"1", nullptr, std::nullopt},
        {L"1,2,3,4", nullptr, std::nullopt},
        {L"1,,2", nullptr, std::nullopt},
        {L"W", nullptr, std::nullopt},
        {L"", nullptr, std::nullopt},
    };
    for (const auto& c : cases) {
        const auto point = parsePoint(c.text, c.last);
        EXPECT_EQ(point.has_value(), c.point.has_value())
            << testing::PrintToString(std::wstring(c.text));
        if (point && c.point) {
            EXPECT_EQ(*point, *c.point);
        }
    }
}

TEST(InputText, NumbersAreWrittenShortestAndReadBackExactly) {
    EXPECT_EQ(formatReal(0.5), L"0.5");
    EXPECT_EQ(formatReal(12.0), L"12");
    EXPECT_EQ(formatReal(-3.25), L"-3.25");
    EXPECT_EQ(formatReal(1e-7), L"1e-07");
    for (const double value : {0.1, 1.0 / 3.0, 2.0 / 3.0 * 1e10, 123456.789012345}) {
        const auto back = parseReal(formatReal(value));
        ASSERT_TRUE(back);
        EXPECT_EQ(*back, value);
    }
    EXPECT_EQ(formatPoint({1, 2.5, 0}), L"1,2.5,0");
}

}  // namespace
