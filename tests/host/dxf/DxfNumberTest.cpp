// Number texts of ASCII DXF: which forms count as numbers, what they read as, how new ones are
// written.
#include <gtest/gtest.h>

#include <limits>

#include "host/dxf/dxfnumber.h"

namespace {

struct NumberCase {
    const char* text;
    bool real;
    bool integer;
};

TEST(DxfNumber, FormsOfNumbers) {
    const NumberCase cases[] = {
        {"0", true, true},       {"-12", true, true},   {"+7", true, true},
        {"  42  ", true, true},  {"\t256", true, true}, {"1.5", true, false},
        {"-.5", true, false},    {"5.", true, false},   {"1e5", true, false},
        {"2.5E-3", true, false}, {"", false, false},    {"-", false, false},
        {".", false, false},     {"1e", false, false},  {"1.2.3", false, false},
        {"0x1F", false, false},  {"1 2", false, false}, {"nan", false, false},
        {"inf", false, false},   {"1,5", false, false}, {"e5", false, false},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(isDxfReal(c.text), c.real) << '"' << c.text << '"';
        EXPECT_EQ(isDxfInteger(c.text), c.integer) << '"' << c.text << '"';
    }
}

TEST(DxfNumber, ReadsWhatItAccepts) {
    EXPECT_EQ(parseDxfReal(" -1.25e2 "), -125.0);
    EXPECT_EQ(parseDxfReal("+.5"), 0.5);
    EXPECT_EQ(parseDxfReal("5."), 5.0);
    EXPECT_EQ(parseDxfReal("abc"), std::nullopt);
    EXPECT_EQ(parseDxfReal("1e999"), std::nullopt);
    EXPECT_EQ(parseDxfInteger("     37"), 37);
    EXPECT_EQ(parseDxfInteger("+3"), 3);
    EXPECT_EQ(parseDxfInteger("1.0"), std::nullopt);
    EXPECT_EQ(parseDxfInteger("99999999999999999999"), std::nullopt);
    EXPECT_EQ(parseDxfHex("1f"), 0x1Fu);
    EXPECT_EQ(parseDxfHex(" 100003F98 "), 0x100003F98u);
    EXPECT_EQ(parseDxfHex(""), std::nullopt);
    EXPECT_EQ(parseDxfHex("12345678901234567"), std::nullopt);
    EXPECT_TRUE(isDxfHex(""));
    EXPECT_TRUE(isDxfHex(" 0aF "));
    EXPECT_FALSE(isDxfHex("Standard"));
}

TEST(DxfNumber, WritesTheShortestTextThatReadsBack) {
    EXPECT_EQ(formatDxfReal(58.8), "58.8");
    EXPECT_EQ(formatDxfReal(2.0), "2.0");
    EXPECT_EQ(formatDxfReal(-0.5), "-0.5");
    EXPECT_EQ(formatDxfReal(1e20), "1e+20");
    EXPECT_EQ(formatDxfReal(0.1 + 0.2), "0.30000000000000004");
    for (const double value :
         {1.2 * 51, -1e-300, 123456789.125, std::numeric_limits<double>::max()}) {
        EXPECT_EQ(parseDxfReal(formatDxfReal(value)), value) << formatDxfReal(value);
    }
    EXPECT_EQ(formatDxfInteger(2, 6), "     2");
    EXPECT_EQ(formatDxfInteger(-40000, 6), "-40000");
    EXPECT_EQ(formatDxfHex(0x2AF), "2AF");
}

}  // namespace
