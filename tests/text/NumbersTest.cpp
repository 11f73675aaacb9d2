// WToF reads what the C run-time's strtod reads in the "C" locale, for every kind of text.
#include <gtest/gtest.h>

#include <locale.h>

#include <cmath>
#include <cstdlib>
#include <string>

#include "text/Numbers.h"

namespace {

double Reference(const std::wstring& text) {
    std::string narrow;
    for (const wchar_t c : text) {
        if (c <= 0 || c > 127) break;
        narrow += static_cast<char>(c);
    }
    const locale_t c = newlocale(LC_ALL_MASK, "C", static_cast<locale_t>(nullptr));
    const double value = strtod_l(narrow.c_str(), nullptr, c);
    freelocale(c);
    return value;
}

const wchar_t* const kTexts[] = {
    L"12.5", L"450", L"0", L"-0", L"-12.75", L".5", L"-.5", L"5.", L".", L"-", L"", L"  12",
    L"\t7", L"+5", L"+.5", L"12,5", L"1e3", L"1E-2", L"1e", L"1e+", L"2e+3x", L"0x1A", L"-0X10",
    L"0x", L"0xg", L"00012.500", L"0.1", L"9007199254740993", L"123456789012345678901234567890",
    L"1.7976931348623157e308", L"1e309", L"-1e309", L"4.9e-324", L"1e-330", L"2.2250738585072011e-308",
    L"inf", L"-Infinity", L"nan", L"NAN(123)", L"abc", L"12abc", L"1.2.3", L"7\u00A0\u20AC",
    L"\u0661\u0662", L"12\u0663",
    L"0.000000000000000000000000000000000000000000000000000000000000000000000000000000000001",
    L"3.14159265358979323846264338327950288419716939937510582097494459230781640628620899",
};

TEST(WToF, ReadsWhatStrtodReads) {
    for (const wchar_t* text : kTexts) {
        const double expected = Reference(text);
        const double got = WToF(text);
        const std::string shown(text, text + std::wcslen(text));
        if (std::isnan(expected)) {
            EXPECT_TRUE(std::isnan(got)) << shown;
        } else {
            EXPECT_EQ(got, expected) << shown;
            EXPECT_EQ(std::signbit(got), std::signbit(expected)) << shown;
        }
    }
}

TEST(WToF, ReadsEveryPriceOfAWideRangeExactlyAsStrtod) {
    unsigned seed = 5;
    for (int i = 0; i < 20000; ++i) {
        seed = seed * 1103515245u + 12345u;
        const std::wstring text = std::to_wstring(seed % 100000) + L"." +
                                  std::to_wstring(seed % 1000 + 1000).substr(1);
        ASSERT_EQ(WToF(text), Reference(text)) << std::string(text.begin(), text.end());
    }
}

}  // namespace
