// Price-list lines as the reader takes them, and files loaded and saved without loss.
#include <gtest/gtest.h>

#include <sys/stat.h>

#include <tuple>

#include "host/scripted/scriptededitor.h"
#include "pricelist/PriceListFile.h"
#include "tests/TempFolder.h"

namespace {

struct LineCase {
    std::wstring text;
    std::vector<PriceListRow> rows;
};

class PriceListLines : public ::testing::TestWithParam<LineCase> {};

TEST_P(PriceListLines, GiveTheseRows) {
    EXPECT_EQ(ParsePriceList(GetParam().text), GetParam().rows);
}

INSTANTIATE_TEST_SUITE_P(
    Rules, PriceListLines,
    ::testing::Values(
        LineCase{L"Block A|12.5|Red door\n", {{L"Block A", L"12.5", L"Red door"}}},
        LineCase{L"Block A|12.5\n", {{L"Block A", L"12.5", L""}}},
        LineCase{L"Chair|12.5|\n", {{L"Chair", L"12.5", L""}}},
        LineCase{L"A|1|b|c\n", {{L"A", L"1", L"b"}}}, LineCase{L"Block A||x\n", {}},
        LineCase{L"|5|x\n", {}}, LineCase{L"Chair\n", {}}, LineCase{L"X\n", {}},
        LineCase{L"\n\n|\n||\n", {}},
        LineCase{L"Price|not a number|x\n", {{L"Price", L"not a number", L"x"}}},
        // The last line has no line feed: it is never taken.
        LineCase{L"Door|10|front\nChair|5|oak", {{L"Door", L"10", L"front"}}},
        LineCase{L"Chair|5|oak", {}},
        // Whatever the last character is, it is cut: here the "k".
        LineCase{L"Door|10|front\nChair|5|oak\n",
                 {{L"Door", L"10", L"front"}, {L"Chair", L"5", L"oak"}}},
        // A NUL ends the line as a C string ends; its last character before the NUL goes.
        LineCase{std::wstring(L"Door|10|fronts\0junk\n", 20), {{L"Door", L"10", L"front"}}},
        LineCase{L"Door|10|front\nDoor|12|back\n",
                 {{L"Door", L"10", L"front"}, {L"Door", L"12", L"back"}}},
        // Long lines are read in pieces of 999 characters, each a line of its own: the first is
        // "N|1|" and 995 x, and loses its last character like any line.
        LineCase{L"N|1|" + std::wstring(995, L'x') + L"TAIL|2|z\n",
                 {{L"N", L"1", std::wstring(994, L'x')}, {L"TAIL", L"2", L"z"}}},
        // The reader stops at its buffer's size before it can run into the end of the file.
        LineCase{L"N|1|" + std::wstring(995, L'x'), {{L"N", L"1", std::wstring(994, L'x')}}},
        LineCase{L"|1|" + std::wstring(995, L'x'), {}},
        // 999 characters and the line feed leave an empty piece.
        LineCase{L"N|1|" + std::wstring(995, L'x') + L"\nA|2|b\n",
                 {{L"N", L"1", std::wstring(994, L'x')}, {L"A", L"2", L"b"}}}));

struct ScanCase {
    std::wstring text;
    // One a piece: line number, kind, name, price, piece of a long line, more fields.
    std::vector<std::tuple<std::size_t, PriceListLineKind, std::wstring, std::wstring, bool, bool>> lines;
};

class PriceListScan : public ::testing::TestWithParam<ScanCase> {};

TEST_P(PriceListScan, SaysWhatBecameOfEachLine) {
    std::vector<std::tuple<std::size_t, PriceListLineKind, std::wstring, std::wstring, bool, bool>> lines;
    for (const auto& line : ScanPriceList(GetParam().text))
        lines.emplace_back(line.line, line.kind, line.row.name, line.row.price, line.piece, line.moreFields);
    EXPECT_EQ(lines, GetParam().lines);
}

using K = PriceListLineKind;
INSTANTIATE_TEST_SUITE_P(
    Rules, PriceListScan,
    ::testing::Values(
        ScanCase{L"Door|10|front\n\n|5|x\nChair\nSofa||\nA|1|b|c\nLast|2|z",
                 {{1, K::Row, L"Door", L"10", false, false},
                  {2, K::Empty, L"", L"", false, false},
                  {3, K::NoName, L"", L"5", false, false},
                  {4, K::NoPrice, L"Chair", L"", false, false},
                  {5, K::NoPrice, L"Sofa", L"", false, false},
                  {6, K::Row, L"A", L"1", false, true},
                  {7, K::Unread, L"Last", L"2", false, false}}},
        ScanCase{L"N|1|" + std::wstring(995, L'x') + L"TAIL|2|z\nB|3|\n",
                 {{1, K::Row, L"N", L"1", true, false},
                  {1, K::Row, L"TAIL", L"2", true, false},
                  {2, K::Row, L"B", L"3", false, false}}},
        ScanCase{L"", {}}));

class PriceListFileTest : public ::testing::Test {
protected:
    TempFolder m_folder;
    ScriptedEditor m_editor;
};

TEST_F(PriceListFileTest, ListsLoadAndSaveBackByteForByte) {
    struct Case {
        std::string bytes;
        TextEncoding encoding;
        std::vector<PriceListRow> rows;
    };
    const Case cases[] = {
        {"Door|10|front\r\nChair|5|oak\r\n",
         TextEncoding::Locale,
         {{L"Door", L"10", L"front"}, {L"Chair", L"5", L"oak"}}},
        // Hebrew in code page 1255 and a Latin-1 e-acute: not valid UTF-8, a byte a character.
        {"Door|10|\xe3\xec\xfa\nCaf\xe9|2.5|t\xe9te\n",
         TextEncoding::Bytes,
         {{L"Door", L"10", {wchar_t(0xe3), wchar_t(0xec), wchar_t(0xfa)}},
          {{L'C', L'a', L'f', wchar_t(0xe9)}, L"2.5", {L't', wchar_t(0xe9), L't', L'e'}}}},
        {"\xd7\x93\xd7\x9c\xd7\xaa|10|\xd7\xa2\xd7\xa5\n",
         TextEncoding::Locale,
         {{L"\u05d3\u05dc\u05ea", L"10", L"\u05e2\u05e5"}}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.bytes);
        m_folder.write("list.prc", c.bytes);
        std::vector<PriceListRow> rows;
        TextFormat format;
        ASSERT_TRUE(LoadPriceListFile(m_folder.wpath("list.prc"), rows, format));
        EXPECT_EQ(format.encoding, c.encoding);
        EXPECT_EQ(rows, c.rows);
        ASSERT_TRUE(SavePriceListFile(m_folder.wpath("copy.prc"), rows, format));
        EXPECT_EQ(m_folder.read("copy.prc"), c.bytes);
    }
}

TEST_F(PriceListFileTest, SavingSkipsEmptyRowsAndWritesIncompleteOnesAsTheyStand) {
    const std::vector<PriceListRow> rows{{L"", L"", L""}, {L"", L"", L"text"}, {L"Door", L"", L""},
                                         {L"", L"", L""}};
    ASSERT_TRUE(SavePriceListFile(m_folder.wpath("out.prc"), rows, TextFormat{}));
    EXPECT_EQ(m_folder.read("out.prc"), "||text\nDoor||\n");
    ASSERT_TRUE(SavePriceListFile(m_folder.wpath("out.prc"), {{L"", L"", L""}}, TextFormat{}));
    EXPECT_EQ(m_folder.read("out.prc"), "");
}

TEST_F(PriceListFileTest, SavingKeepsTheFilePermissions) {
    m_folder.write("shared.prc", "A|1|\n");
    ASSERT_EQ(::chmod(m_folder.path("shared.prc").c_str(), 0640), 0);
    ASSERT_TRUE(SavePriceListFile(m_folder.wpath("shared.prc"), {{L"B", L"2", L""}}, TextFormat{}));
    struct stat info {};
    ASSERT_EQ(::stat(m_folder.path("shared.prc").c_str(), &info), 0);
    EXPECT_EQ(info.st_mode & 0777, 0640u);
    EXPECT_EQ(m_folder.read("shared.prc"), "B|2|\n");
}

}  // namespace
