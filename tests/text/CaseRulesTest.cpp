// Case rules in every script, and numbers read as the "C" locale reads them.
#include <gtest/gtest.h>

#include <clocale>

#include "text/CaseRules.h"
#include "text/Numbers.h"

namespace {

struct SameName {
    const wchar_t* a;
    const wchar_t* b;
};

// Names a draughtsman calls the same block, from several scripts.
const SameName kSameNames[] = {
    {L"Door", L"dOOR"},
    {L"ÄRMEL", L"ärmel"},           // Latin-1
    {L"Façade-É", L"FAÇADE-é"},     // Latin-1
    {L"Стул", L"стул"},             // Cyrillic
    {L"ШКАФ-Ё", L"шкаф-ё"},         // Cyrillic with Ё
    {L"Ωmega", L"ωMEGA"},           // Greek
    {L"ΟΔΟΣ", L"οδος"},             // Greek final sigma folds with capital sigma
    {L"שולחן", L"שולחן"},           // Hebrew has no case: equal only to itself
    {L"\u212A", L"k"},              // the Kelvin sign folds to k
};

TEST(CaseRules, NamesThatDifferOnlyInCaseAreEqualInEveryScript) {
    for (const auto& [a, b] : kSameNames) {
        EXPECT_EQ(CompareNoCase(a, b), 0) << testing::PrintToString(std::wstring(a));
        EXPECT_EQ(FoldCase(a), FoldCase(b)) << testing::PrintToString(std::wstring(a));
    }
}

struct DifferentName {
    const wchar_t* a;
    const wchar_t* b;
};

const DifferentName kDifferentNames[] = {
    {L"Door", L"DOOR2"},
    {L"стул", L"стол"},
    {L"שולחן", L"שולחנ"},  // final and plain nun are different letters
    {L"e", L"é"},          // accents are not case
    {L"ß", L"ss"},         // simple folding keeps one character for one
};

TEST(CaseRules, OtherLettersStayDifferent) {
    for (const auto& [a, b] : kDifferentNames) {
        EXPECT_NE(CompareNoCase(a, b), 0) << testing::PrintToString(std::wstring(a));
        EXPECT_NE(FoldCase(a), FoldCase(b)) << testing::PrintToString(std::wstring(a));
    }
}

TEST(CaseRules, LowerAndUpperCaseMapOneCharacterForOne) {
    EXPECT_EQ(MakeLower(L"DOOR-Ä-Ж-Ω"), L"door-ä-ж-ω");
    EXPECT_EQ(MakeUpper(L"qtb0012-ä-ж-ω"), L"QTB0012-Ä-Ж-Ω");
    EXPECT_EQ(MakeLower(L"ΟΔΟΣ"), L"οδοσ");
    // Bytes that are not valid UTF-8 travel as lone surrogates and keep their value.
    EXPECT_EQ(MakeLower(L"A\xDCC4"), L"a\xDCC4");
    EXPECT_EQ(FoldCase(L"\xDCC4"), L"\xDCC4");
}

TEST(CaseRules, TheLocaleOfTheEnvironmentDoesNotChangeTheRules) {
    const char* previous = std::setlocale(LC_ALL, nullptr);
    const std::string saved = previous ? previous : "C";
    std::setlocale(LC_ALL, "C");
    EXPECT_EQ(CompareNoCase(L"Стул", L"стул"), 0);
    EXPECT_EQ(MakeLower(L"ÄRMEL"), L"ärmel");
    std::setlocale(LC_ALL, saved.c_str());
}

TEST(CaseRules, OrderIgnoresCaseAndFollowsTheFoldedCodePoints) {
    EXPECT_LT(CompareNoCase(L"Door", L"DOOR2"), 0);
    EXPECT_GT(CompareNoCase(L"b", L"A"), 0);
    // "_" lies between the upper- and lower-case letters: compared as lower case, it sorts first.
    EXPECT_LT(CompareNoCase(L"_x", L"Ax"), 0);
    EXPECT_LT(CompareNoCase(L"Zebra", L"ärmel"), 0);
    EXPECT_LT(CompareNoCase(L"АЛЬФА", L"бета"), 0);
}

TEST(Numbers, IntegerConversionStopsAtTheFirstNonDigit) {
    EXPECT_EQ(WToI(L"0012"), 12);
    EXPECT_EQ(WToI(L"abcd"), 0);
    EXPECT_EQ(WToI(L" -7x"), -7);
    EXPECT_EQ(WToI(L"99999999999"), 2147483647);
    EXPECT_EQ(WToI(L"-99999999999"), -2147483647 - 1);
    EXPECT_EQ(WToL(L"  +42 rows"), 42L);
}

TEST(Numbers, ShortestFormReadsBackAsTheSameNumber) {
    EXPECT_EQ(FormatShortest(0.1), L"0.1");
    EXPECT_EQ(FormatShortest(3096.9000000000015), L"3096.9000000000015");
    EXPECT_DOUBLE_EQ(WToF(FormatShortest(1.0 / 3.0)), 1.0 / 3.0);
}

}  // namespace
