// The first layer: ASCII and binary DXF split into tags, what it refuses and how it says so, and
// the form of the tags that edits add.
#include <gtest/gtest.h>

#include <cstdio>
#include <cstring>
#include <string>

#include "host/dxf/dxftagfile.h"
#include "tests/host/TestName.h"

namespace {

using Tags = std::vector<std::pair<int, std::string>>;

Tags tagsOf(const DxfTagFile& file) {
    Tags tags;
    for (std::uint32_t i = 0; i < file.tagCount(); ++i)
        tags.emplace_back(file.code(i), std::string(file.value(i)));
    return tags;
}

// Every byte belongs to exactly one tag, the prefix or the trailer.
std::string rebuilt(const DxfTagFile& file) {
    std::string bytes(file.prefix());
    for (std::uint32_t i = 0; i < file.tagCount(); ++i) bytes += file.raw(i);
    return bytes + std::string(file.trailer());
}

struct AsciiCase {
    const char* name;
    std::string input;
    Tags tags;
    std::vector<std::uint32_t> recordStarts;
    bool reachedEof;
};

void PrintTo(const AsciiCase& c, std::ostream* out) { *out << c.name; }

class AsciiTags : public ::testing::TestWithParam<AsciiCase> {};

TEST_P(AsciiTags, SplitIntoTagsThatRebuildTheFile) {
    const AsciiCase& c = GetParam();
    auto file = DxfTagFile::parse("plan.dxf", c.input);
    ASSERT_TRUE(file.isOk()) << file.errorString();
    EXPECT_EQ(tagsOf(file.value()), c.tags);
    EXPECT_EQ(file.value().recordStarts(), c.recordStarts);
    EXPECT_EQ(file.value().reachedEof(), c.reachedEof);
    EXPECT_EQ(rebuilt(file.value()), c.input);
}

INSTANTIATE_TEST_SUITE_P(
    Inputs, AsciiTags,
    ::testing::Values(
        AsciiCase{"smallest",
                  "  0\nSECTION\n  2\nENTITIES\n  0\nENDSEC\n  0\nEOF\n",
                  {{0, "SECTION"}, {2, "ENTITIES"}, {0, "ENDSEC"}, {0, "EOF"}},
                  {0, 2, 3},
                  true},
        AsciiCase{"crlf",
                  "  0\r\nSECTION\r\n  2\r\nHEADER\r\n  0\r\nEOF\r\n",
                  {{0, "SECTION"}, {2, "HEADER"}, {0, "EOF"}},
                  {0, 2},
                  true},
        AsciiCase{"padded numbers",
                  " 70\n\t256\n 10\n  1.5e3 \n",
                  {{70, "\t256"}, {10, "  1.5e3 "}},
                  {0},
                  false},
        AsciiCase{"eof without line end", "0\nEOF", {{0, "EOF"}}, {0}, true},
        AsciiCase{"bytes after eof", "  0\nEOF\nignore\nthis\nand", {{0, "EOF"}}, {0}, true},
        AsciiCase{"byte order mark", "\xEF\xBB\xBF  0\nEOF\n", {{0, "EOF"}}, {0}, true},
        AsciiCase{"comments first",
                  "999\nmade by hand\n  0\nEOF\n",
                  {{999, "made by hand"}, {0, "EOF"}},
                  {0, 1},
                  true},
        AsciiCase{"empty values", "  1\n\n  0\nEOF\n", {{1, ""}, {0, "EOF"}}, {0, 1}, true},
        AsciiCase{"empty file", "", {}, {}, false},
        AsciiCase{"arrow block of a dimension style",
                  "  0\nDIMSTYLE\n105\n1A\n  5\nBOXBLANK\n  0\nEOF\n",
                  {{0, "DIMSTYLE"}, {105, "1A"}, {5, "BOXBLANK"}, {0, "EOF"}},
                  {0, 3},
                  true},
        AsciiCase{"code 5 after a subclass marker is data",
                  "  0\nOBJ\n  5\n1F\n100\nX\n  5\n*\n",
                  {{0, "OBJ"}, {5, "1F"}, {100, "X"}, {5, "*"}},
                  {0},
                  false},
        AsciiCase{"blank handle", "  0\nLINE\n  5\n\n", {{0, "LINE"}, {5, ""}}, {0}, false}),
    [](const auto& info) { return testName(info.param.name); });

struct RefusedCase {
    std::string input;
    std::string message;
};

void PrintTo(const RefusedCase& c, std::ostream* out) { *out << c.message; }

class RefusedAscii : public ::testing::TestWithParam<RefusedCase> {};

TEST_P(RefusedAscii, NamesTheLineAndWhatWasExpected) {
    auto file = DxfTagFile::parse("plan.dxf", GetParam().input);
    ASSERT_FALSE(file.isOk());
    EXPECT_EQ(file.errorString(), GetParam().message);
}

INSTANTIATE_TEST_SUITE_P(
    Inputs, RefusedAscii,
    ::testing::Values(
        RefusedCase{"  0\nSECTION\nabc\nx\n", "plan.dxf:3: expected a group code, found \"abc\""},
        RefusedCase{"\n", "plan.dxf:1: expected a group code, found \"\""},
        RefusedCase{"  0\nLINE\n99999\nx\n", "plan.dxf:3: expected a group code, found \"99999\""},
        RefusedCase{" 1 0\nx\n", "plan.dxf:1: expected a group code, found \" 1 0\""},
        RefusedCase{std::string(300, ' ') + "0\nx\n",
                    "plan.dxf:1: expected a group code, found \"" + std::string(40, ' ') + "...\""},
        RefusedCase{"  0\nSECTION\n  2\n",
                    "plan.dxf:4: expected the value of group code 2, found the end of the file"},
        RefusedCase{"  0\nSECTION\n  2",
                    "plan.dxf:4: expected the value of group code 2, found the end of the file"},
        RefusedCase{"  0\nLINE\n 10\nabc\n",
                    "plan.dxf:4: expected a number for group code 10, found \"abc\""},
        RefusedCase{" 20\n1.5.2\n",
                    "plan.dxf:2: expected a number for group code 20, found \"1.5.2\""},
        RefusedCase{" 40\n\n", "plan.dxf:2: expected a number for group code 40, found \"\""},
        RefusedCase{" 70\n1.5\n",
                    "plan.dxf:2: expected an integer for group code 70, found \"1.5\""},
        RefusedCase{" 90\n12a\n",
                    "plan.dxf:2: expected an integer for group code 90, found \"12a\""},
        RefusedCase{"290\ntrue\n",
                    "plan.dxf:2: expected an integer for group code 290, found \"true\""},
        RefusedCase{"310\n0FXY\n",
                    "plan.dxf:2: expected hexadecimal data for group code 310, found \"0FXY\""},
        RefusedCase{"  0\nLINE\n  5\nXYZ\n",
                    "plan.dxf:4: expected a hexadecimal handle for group code 5, found \"XYZ\""},
        RefusedCase{"  0\nDIMSTYLE\n105\nG1\n",
                    "plan.dxf:4: expected a hexadecimal handle for group code 105, found \"G1\""},
        RefusedCase{" 10\nx\x01y\n",
                    "plan.dxf:2: expected a number for group code 10, found \"x?y\""}),
    [](const auto& info) { return "case" + std::to_string(info.index); });

// Binary DXF: a sentinel, then codes of one byte (R12) or two (later), values in their own
// encoding.
class BinaryWriter {
public:
    explicit BinaryWriter(bool byteCodes) : m_byteCodes(byteCodes) {
        m_bytes.assign("AutoCAD Binary DXF\r\n\x1a\0", 22);
    }
    BinaryWriter& code(int code) {
        if (m_byteCodes && code < 255) {
            m_bytes += static_cast<char>(code);
        } else {
            if (m_byteCodes) m_bytes += '\xff';
            append(static_cast<std::int16_t>(code));
        }
        return *this;
    }
    BinaryWriter& text(int c, std::string_view value) {
        code(c);
        m_bytes += value;
        m_bytes += '\0';
        return *this;
    }
    template <typename T>
    BinaryWriter& number(int c, T value) {
        code(c);
        return append(value);
    }
    BinaryWriter& raw(std::string_view bytes) {
        m_bytes += bytes;
        return *this;
    }
    const std::string& bytes() const { return m_bytes; }

private:
    template <typename T>
    BinaryWriter& append(T value) {
        char buffer[sizeof value];
        std::memcpy(buffer, &value, sizeof value);
        m_bytes.append(buffer, sizeof value);
        return *this;
    }
    bool m_byteCodes;
    std::string m_bytes;
};

TEST(BinaryTags, WideCodesCarryTypedValues) {
    BinaryWriter in(false);
    in.text(0, "SECTION").text(2, "ENTITIES").text(0, "LINE").text(5, "1F").number(10, 2.5);
    in.number(70, std::int16_t{-3})
        .number(90, std::int32_t{70000})
        .number(160, std::int64_t{1} << 40);
    in.number(290, std::uint8_t{1}).code(310).raw(std::string("\x03\x01\x02\x03", 4));
    in.text(0, "ENDSEC").text(0, "EOF");
    auto file = DxfTagFile::parse("plan.dxf", in.bytes());
    ASSERT_TRUE(file.isOk()) << file.errorString();
    const DxfTagFile& f = file.value();
    ASSERT_EQ(f.tagCount(), 12u);
    EXPECT_EQ(f.value(1), "ENTITIES");
    EXPECT_EQ(f.handle(3), 0x1Fu);
    EXPECT_EQ(f.real(4), 2.5);
    EXPECT_EQ(f.integer(5), -3);
    EXPECT_EQ(f.integer(6), 70000);
    EXPECT_EQ(f.integer(7), std::int64_t{1} << 40);
    EXPECT_EQ(f.integer(8), 1);
    EXPECT_EQ(f.value(9), std::string_view("\x01\x02\x03", 3));
    EXPECT_EQ(f.recordStarts(), (std::vector<std::uint32_t>{0, 2, 10, 11}));
    EXPECT_TRUE(f.reachedEof());
    EXPECT_EQ(rebuilt(f), in.bytes());
}

TEST(BinaryTags, R12WritesCodesInOneByteAndEscapesLargeOnes) {
    BinaryWriter in(true);
    in.text(0, "SECTION").text(2, "ENTITIES").text(1002, "{").number(1070, std::int16_t{7});
    in.text(0, "ENDSEC").text(0, "EOF");
    auto file = DxfTagFile::parse("plan.dxf", in.bytes());
    ASSERT_TRUE(file.isOk()) << file.errorString();
    EXPECT_EQ(tagsOf(file.value())[2], (std::pair<int, std::string>{1002, "{"}));
    EXPECT_EQ(file.value().integer(3), 7);
    EXPECT_EQ(rebuilt(file.value()), in.bytes());
}

TEST(BinaryTags, ACutValueNamesItsByteOffset) {
    const std::string start = BinaryWriter(false).text(0, "SECTION").bytes();  // 32 bytes
    const std::vector<RefusedCase> cases{
        {BinaryWriter(false).text(0, "SECTION").code(10).raw("abc").bytes(),
         "plan.dxf:byte 32: expected the 8-byte value of group code 10, found the end of the file"},
        {BinaryWriter(false).text(0, "SECTION").code(1).raw("abc").bytes(),
         "plan.dxf:byte 32: expected the zero byte that ends the value of group code 1, found the "
         "end of the file"},
        {BinaryWriter(false).text(0, "SECTION").raw("\x01").bytes(),
         "plan.dxf:byte 32: expected a two-byte group code, found the end of the file"},
        {BinaryWriter(false).text(0, "SECTION").code(310).raw("\x05\x01\x02").bytes(),
         "plan.dxf:byte 32: expected 5 bytes of data of group code 310, found the end of the file"},
        {BinaryWriter(false).text(0, "SECTION").code(70).bytes(),
         "plan.dxf:byte 32: expected the 2-byte value of group code 70, found the end of the file"},
        {BinaryWriter(false).text(0, "LINE").text(5, "QQ").bytes(),
         "plan.dxf:byte 31: expected a hexadecimal handle for group code 5, found \"QQ\""},
        {BinaryWriter(true).text(0, "SECTION").raw("\xff\x01").bytes(),
         "plan.dxf:byte 31: expected a two-byte group code, found the end of the file"},
    };
    EXPECT_EQ(start.size(), 32u);
    for (const auto& c : cases) {
        auto file = DxfTagFile::parse("plan.dxf", c.input);
        ASSERT_FALSE(file.isOk()) << c.message;
        EXPECT_EQ(file.errorString(), c.message);
    }
}

// The raw text of a tag added to a file of the given form.
std::string added(const std::string& input, std::uint32_t (*append)(DxfTagFile&)) {
    auto file = DxfTagFile::parse("plan.dxf", input);
    if (!file.isOk()) return file.errorString();
    return std::string(file.value().raw(append(file.value())));
}

// Files of more than a few megabytes are scanned in two parts at once; what they give must be
// what one scan gives, whatever lies where the second part was guessed to begin.
constexpr std::size_t kRecordsInALargeFile = 300'000;  // some 10 MB

TEST(LargeFiles, ReadInTwoPartsAsInOne) {
    std::string ascii;
    for (std::size_t i = 0; i < kRecordsInALargeFile; ++i) {
        char handle[16];
        std::snprintf(handle, sizeof handle, "%zX", i + 16);
        ascii += std::string("  0\nINSERT\n  5\n") + handle + "\n  2\nB" + std::to_string(i % 7) +
                 "\n 67\n" + (i == kRecordsInALargeFile - 2 ? "1" : "0") + "\n 10\n1.5\n";
    }
    const std::string junk = "not a tag\n";
    auto file = DxfTagFile::parse("plan.dxf", ascii + "  0\nEOF\n" + junk);
    ASSERT_TRUE(file.isOk()) << file.errorString();
    const DxfTagFile& f = file.value();
    ASSERT_EQ(f.recordStarts().size(), kRecordsInALargeFile + 1);
    for (std::uint32_t r = 0; r <= kRecordsInALargeFile; ++r)
        ASSERT_EQ(f.recordStarts()[r], 5 * r) << r;
    EXPECT_EQ(f.recordName(kRecordsInALargeFile - 1), "B" + std::to_string((kRecordsInALargeFile - 1) % 7));
    EXPECT_EQ(f.paperSpaceRecords(), std::vector<std::uint32_t>{kRecordsInALargeFile - 2});
    EXPECT_EQ(f.highestHandle(), kRecordsInALargeFile + 15);
    EXPECT_TRUE(f.reachedEof());
    EXPECT_EQ(f.trailer(), junk);
    EXPECT_EQ(f.value(5 * 200'000 + 2), "B" + std::to_string(200'000 % 7));
    EXPECT_EQ(rebuilt(f), ascii + "  0\nEOF\n" + junk);

    // A fault late in the file is named by its line, counted from the file's start.
    std::string faulty = ascii;
    faulty.replace(faulty.rfind("1.5"), 3, "x.5");
    auto refused = DxfTagFile::parse("plan.dxf", faulty);
    ASSERT_FALSE(refused.isOk());
    EXPECT_EQ(refused.errorString(), "plan.dxf:" + std::to_string(10 * kRecordsInALargeFile) +
                                         ": expected a number for group code 10, found \"x.5\"");

    // "0 EOF" in the first half: what follows is kept as it is, however it looks.
    const std::size_t second = ascii.find("  0\nINSERT", 1);
    const std::string early = ascii.substr(0, second) + "  0\nEOF\n" + ascii.substr(second) + junk;
    auto ended = DxfTagFile::parse("plan.dxf", early);
    ASSERT_TRUE(ended.isOk()) << ended.errorString();
    EXPECT_EQ(ended.value().trailer(), ascii.substr(second) + junk);
}

TEST(LargeFiles, ABinaryFileReadsRightWhereAValueLooksLikeARecordStart) {
    // Each coordinate's bytes hold a zero code and a capital letter, where a guess would stop;
    // the records' own types are in small letters, so that every guess is wrong.
    double trap = 0.0;
    std::memcpy(&trap, "\0\0ABCDE\0", sizeof trap);
    BinaryWriter in(false);
    for (std::size_t i = 0; i < kRecordsInALargeFile; ++i)
        in.text(0, "line").text(8, "0").number(10, trap).number(20, trap).number(30, 2.0);
    in.text(0, "EOF");
    auto file = DxfTagFile::parse("plan.dxf", in.bytes());
    ASSERT_TRUE(file.isOk()) << file.errorString();
    const DxfTagFile& f = file.value();
    ASSERT_EQ(f.recordStarts().size(), kRecordsInALargeFile + 1);
    EXPECT_EQ(f.recordStarts().back(), 5 * kRecordsInALargeFile);
    for (std::uint32_t r = 0; r < kRecordsInALargeFile; r += 997) {
        ASSERT_EQ(f.recordStarts()[r], 5 * r);
        ASSERT_EQ(f.real(5 * r + 2), trap);
    }
    EXPECT_EQ(rebuilt(f), in.bytes());
}

TEST(AddedTags, TakeTheFormOfTheirFile) {
    const std::string lf = "  0\nEOF\n";
    const std::string crlf = "  0\r\nEOF\r\n";
    const std::string wide = BinaryWriter(false).text(0, "EOF").bytes();
    const std::string narrow = BinaryWriter(true).text(0, "EOF").bytes();
    auto name = [](DxfTagFile& f) { return f.appendString(2, "QTB0001"); };
    auto real = [](DxfTagFile& f) { return f.appendReal(10, 58.8); };
    auto whole = [](DxfTagFile& f) { return f.appendReal(20, -2.0); };
    auto flags = [](DxfTagFile& f) { return f.appendInteger(70, 2); };
    auto count = [](DxfTagFile& f) { return f.appendInteger(90, 4); };
    auto handle = [](DxfTagFile& f) { return f.appendHandle(5, 0x2AF); };
    auto group = [](DxfTagFile& f) { return f.appendString(1002, "{"); };

    EXPECT_EQ(added(lf, name), "  2\nQTB0001\n");
    EXPECT_EQ(added(lf, real), " 10\n58.8\n");
    EXPECT_EQ(added(lf, whole), " 20\n-2.0\n");
    EXPECT_EQ(added(lf, flags), " 70\n     2\n");
    EXPECT_EQ(added(lf, count), " 90\n        4\n");
    EXPECT_EQ(added(lf, handle), "  5\n2AF\n");
    EXPECT_EQ(added(lf, group), "1002\n{\n");
    EXPECT_EQ(added(crlf, name), "  2\r\nQTB0001\r\n");
    EXPECT_EQ(added(wide, name), std::string("\x02\x00QTB0001\x00", 10));
    EXPECT_EQ(added(wide, flags), std::string("\x46\x00\x02\x00", 4));
    EXPECT_EQ(added(wide, count), std::string("\x5a\x00\x04\x00\x00\x00", 6));
    EXPECT_EQ(added(wide, real), BinaryWriter(false).number(10, 58.8).bytes().substr(22));
    EXPECT_EQ(added(narrow, name), std::string("\x02QTB0001\x00", 9));
    EXPECT_EQ(added(narrow, group), std::string("\xff\xea\x03{\x00", 5));
}

TEST(AddedTags, ReadBackLikeTheFilesOwnAndKeepTheirViews) {
    auto file = DxfTagFile::parse("plan.dxf", "  0\nEOF\n");
    ASSERT_TRUE(file.isOk());
    DxfTagFile& f = file.value();
    const std::uint32_t text = f.appendString(1, "door");
    const std::uint32_t real = f.appendReal(10, 0.1 + 0.2);
    const std::uint32_t integer = f.appendInteger(70, -5);
    const std::uint32_t handle = f.appendHandle(330, 0x1F);
    EXPECT_EQ(f.value(text), "door");
    EXPECT_EQ(f.real(real), 0.1 + 0.2);
    EXPECT_EQ(f.integer(integer), -5);
    EXPECT_EQ(f.handle(handle), 0x1Fu);
    EXPECT_EQ(f.originalTagCount(), 1u);
    EXPECT_EQ(f.location(text), "plan.dxf");
    EXPECT_EQ(f.location(0), "plan.dxf:1");
    // Views of them survive later additions.
    const std::string_view view = f.value(f.appendString(1, "a default text longer than a short string"));
    const std::string_view rawView = f.raw(f.appendString(2, "TAG"));
    for (int i = 0; i < 10000; ++i) f.appendString(1, std::string(100, 'x'));
    EXPECT_EQ(view, "a default text longer than a short string");
    EXPECT_EQ(rawView, "  2\nTAG\n");
}

}  // namespace
