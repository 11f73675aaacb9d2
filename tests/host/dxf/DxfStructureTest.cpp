// The second layer: sections, tables and block definitions found over the records, and files whose
// records do not nest as a DXF file must, refused with the place and what was expected there, or
// mended by a recovering read that lists each repair.
#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <string_view>

#include "host/dxf/dxfdocument.h"
#include "host/dxf/dxfstructure.h"

namespace {

// Tags given as "code value" pairs separated by "|", written as by hand: group codes unpadded.
std::string dxf(std::string_view tags) {
    std::string out;
    for (std::size_t at = 0; at < tags.size();) {
        const std::size_t bar = std::min(tags.find('|', at), tags.size());
        const std::string_view tag = tags.substr(at, bar - at);
        const std::size_t space = tag.find(' ');
        out += std::string(tag.substr(0, space)) + "\n" + std::string(tag.substr(space + 1)) + "\n";
        at = bar + 1;
    }
    return out;
}

DxfResult<DxfStructure> structureOf(const std::string& bytes) {
    auto tags = DxfTagFile::parse("plan.dxf", bytes);
    if (!tags.isOk()) return tags.error();
    const DxfRecords records(tags.value());
    return DxfStructure::index(tags.value(), records);
}

TEST(DxfStructure, FindsSectionsTablesAndBlocks) {
    const std::string bytes =
        dxf("999 comment|0 SECTION|2 HEADER|9 $ACADVER|1 AC1009|0 ENDSEC|"
            "0 SECTION|2 TABLES|0 TABLE|2 LAYER|70 2|0 LAYER|2 0|0 LAYER|2 A|0 ENDTAB|"
            "0 TABLE|2 STYLE|0 ENDTAB|0 ENDSEC|0 SECTION|2 BLOCKS|0 BLOCK|2 A|0 LINE|0 ENDBLK|"
            "0 BLOCK|2 B|0 ENDBLK|0 ENDSEC|0 SECTION|2 ENTITIES|0 INSERT|2 A|0 ENDSEC|0 EOF");
    auto structure = structureOf(bytes);
    ASSERT_TRUE(structure.isOk()) << structure.errorString();
    const DxfStructure& s = structure.value();
    std::vector<std::string> sections;
    for (const auto& section : s.sections()) sections.push_back(section.name);
    EXPECT_EQ(sections, (std::vector<std::string>{"HEADER", "TABLES", "BLOCKS", "ENTITIES"}));
    ASSERT_NE(s.table("LAYER"), nullptr);
    EXPECT_EQ(s.table("LAYER")->entries.size(), 2u);
    EXPECT_EQ(s.table("STYLE")->entries.size(), 0u);
    EXPECT_EQ(s.table("BLOCK_RECORD"), nullptr);
    ASSERT_EQ(s.blocks().size(), 2u);
    EXPECT_EQ(s.blocks()[0].end - s.blocks()[0].begin, 2u);  // one entity between BLOCK and ENDBLK
    EXPECT_EQ(s.section("ENTITIES")->end - s.section("ENTITIES")->begin, 2u);
}

// A file the strict read refuses, and what a recovering read makes of it: the repairs it lists and
// the bytes a save writes; no bytes when it cannot mend the file and refuses it alike.
struct RefusedCase {
    std::string input;
    std::string message;
    std::vector<std::string> repairs;
    std::string mended;
};

void PrintTo(const RefusedCase& c, std::ostream* out) { *out << c.message; }

// A record made by the recovering read, in the form it writes: group codes three wide.
std::string made(const char* type) { return std::string("  0\n") + type + "\n"; }

class RefusedStructure : public ::testing::TestWithParam<RefusedCase> {};

TEST_P(RefusedStructure, NamesThePlaceAndWhatWasExpected) {
    auto structure = structureOf(GetParam().input);
    ASSERT_FALSE(structure.isOk());
    EXPECT_EQ(structure.errorString(), GetParam().message);
    EXPECT_EQ(structure.error().kind(), DxfErrorKind::Structure);
}

TEST_P(RefusedStructure, IsMendedByARecoveringReadThatListsEachRepair) {
    const RefusedCase& c = GetParam();
    auto document = DxfDocument::readBytes("plan.dxf", c.input, DxfReading::Recover);
    if (c.mended.empty()) {
        ASSERT_FALSE(document.isOk());
        EXPECT_EQ(document.errorString(), c.message);
        return;
    }
    ASSERT_TRUE(document.isOk()) << document.errorString();
    EXPECT_EQ(document.value()->repairs(), c.repairs);
    EXPECT_EQ(document.value()->toBytes(), c.mended);
}

const std::string kEntities = dxf("0 SECTION|2 ENTITIES");

INSTANTIATE_TEST_SUITE_P(
    Inputs, RefusedStructure,
    ::testing::Values(
        RefusedCase{"",
                    "plan.dxf:1: expected \"0 SECTION\" or \"0 EOF\", found the end of the file",
                    {"plan.dxf:1: \"0 EOF\" added at the end of the file"},
                    made("EOF")},
        RefusedCase{dxf("0 LINE|0 EOF"),
                    "plan.dxf:1: expected \"0 SECTION\" or \"0 EOF\", found \"0 LINE\"",
                    {"plan.dxf:1: records outside any section put into a new ENTITIES section",
                     "plan.dxf:3: \"0 ENDSEC\" added before \"0 EOF\""},
                    made("SECTION") + "  2\nENTITIES\n0\nLINE\n" + made("ENDSEC") + "0\nEOF\n"},
        RefusedCase{dxf("8 0|0 EOF"),
                    "plan.dxf:1: expected \"0 SECTION\", found group code 8",
                    {"plan.dxf:1: tags before the first record left out"},
                    "0\nEOF\n"},
        RefusedCase{dxf("0 SECTION|70 1|0 ENDSEC|0 EOF"),
                    "plan.dxf:1: expected the section's name (group code 2) after \"0 SECTION\"",
                    {"plan.dxf:1: \"0 SECTION\" without a name left out",
                     "plan.dxf:5: \"0 ENDSEC\" outside a section left out"},
                    "0\nEOF\n"},
        RefusedCase{dxf("0 SECTION|2 ENTITIES|0 LINE|0 EOF"),
                    "plan.dxf:7: expected \"0 ENDSEC\", found \"0 EOF\"",
                    {"plan.dxf:7: \"0 ENDSEC\" added before \"0 EOF\""},
                    kEntities + "0\nLINE\n" + made("ENDSEC") + "0\nEOF\n"},
        RefusedCase{dxf("0 SECTION|2 ENTITIES|0 LINE|8 0"),
                    "plan.dxf:9: expected \"0 ENDSEC\", found the end of the file",
                    {"plan.dxf:9: \"0 ENDSEC\" added at the end of ENTITIES",
                     "plan.dxf:9: \"0 EOF\" added at the end of the file"},
                    kEntities + "0\nLINE\n8\n0\n" + made("ENDSEC") + made("EOF")},
        RefusedCase{dxf("0 SECTION|2 ENTITIES|0 ENDSEC"),
                    "plan.dxf:7: expected \"0 SECTION\" or \"0 EOF\", found the end of the file",
                    {"plan.dxf:7: \"0 EOF\" added at the end of the file"},
                    kEntities + "0\nENDSEC\n" + made("EOF")},
        // An ENDSEC too early: what follows is the section's own.
        RefusedCase{dxf("0 SECTION|2 ENTITIES|0 LINE|0 ENDSEC|0 CIRCLE|0 ENDSEC|0 EOF"),
                    "plan.dxf:9: expected \"0 SECTION\" or \"0 EOF\", found \"0 CIRCLE\"",
                    {"plan.dxf:7: \"0 ENDSEC\" inside ENTITIES left out: the section goes on "
                     "after it"},
                    kEntities + "0\nLINE\n0\nCIRCLE\n0\nENDSEC\n0\nEOF\n"},
        // A section that lost its head: its entities are not taken for blocks.
        RefusedCase{
            dxf("0 SECTION|2 BLOCKS|0 BLOCK|2 A|0 ENDBLK|0 ENDSEC|0 INSERT|2 A|0 ENDSEC|0 EOF"),
            "plan.dxf:13: expected \"0 SECTION\" or \"0 EOF\", found \"0 INSERT\"",
            {"plan.dxf:13: records outside any section put into a new ENTITIES section"},
            dxf("0 SECTION|2 BLOCKS|0 BLOCK|2 A|0 ENDBLK|0 ENDSEC") + made("SECTION") +
                "  2\nENTITIES\n0\nINSERT\n2\nA\n0\nENDSEC\n0\nEOF\n"},
        RefusedCase{
            dxf("0 SECTION|2 ENTITIES|0 SECTION|2 BLOCKS"),
            "plan.dxf:5: expected \"0 ENDSEC\", found \"0 SECTION\"",
            {"plan.dxf:5: \"0 ENDSEC\" added before this section",
             "plan.dxf:9: \"0 ENDSEC\" added at the end of BLOCKS",
             "plan.dxf:9: \"0 EOF\" added at the end of the file"},
            kEntities + made("ENDSEC") + "0\nSECTION\n2\nBLOCKS\n" + made("ENDSEC") + made("EOF")},
        RefusedCase{dxf("0 SECTION|2 TABLES|0 LAYER|0 ENDSEC|0 EOF"),
                    "plan.dxf:5: expected \"0 TABLE\" or \"0 ENDSEC\", found \"0 LAYER\"",
                    {"plan.dxf:5: a record of TABLES before its first table left out"},
                    dxf("0 SECTION|2 TABLES|0 ENDSEC|0 EOF")},
        RefusedCase{dxf("0 SECTION|2 TABLES|0 TABLE|2 LAYER|0 LAYER|0 ENDSEC"),
                    "plan.dxf:11: expected \"0 ENDTAB\", found \"0 ENDSEC\"",
                    {"plan.dxf:11: \"0 ENDTAB\" added at the end of TABLES",
                     "plan.dxf:13: \"0 EOF\" added at the end of the file"},
                    dxf("0 SECTION|2 TABLES|0 TABLE|2 LAYER|0 LAYER") + made("ENDTAB") +
                        "0\nENDSEC\n" + made("EOF")},
        RefusedCase{dxf("0 SECTION|2 TABLES|0 TABLE|70 0|0 ENDTAB"),
                    "plan.dxf:5: TABLE has no name (group code 2)",
                    {},
                    ""},
        RefusedCase{dxf("0 SECTION|2 BLOCKS|0 BLOCK|2 A|0 BLOCK|2 B"),
                    "plan.dxf:9: expected \"0 ENDBLK\", found \"0 BLOCK\"",
                    {"plan.dxf:9: \"0 ENDBLK\" added before this block",
                     "plan.dxf:13: \"0 ENDBLK\" added at the end of BLOCKS",
                     "plan.dxf:13: \"0 ENDSEC\" added at the end of BLOCKS",
                     "plan.dxf:13: \"0 EOF\" added at the end of the file"},
                    dxf("0 SECTION|2 BLOCKS|0 BLOCK|2 A") + made("ENDBLK") + dxf("0 BLOCK|2 B") +
                        made("ENDBLK") + made("ENDSEC") + made("EOF")},
        RefusedCase{dxf("0 SECTION|2 BLOCKS|0 BLOCK|8 0|70 0|0 ENDBLK"),
                    "plan.dxf:5: BLOCK has no name (group code 2)",
                    {},
                    ""},
        RefusedCase{dxf("0 SECTION|2 BLOCKS|0 LINE|0 ENDSEC"),
                    "plan.dxf:5: expected \"0 BLOCK\" or \"0 ENDSEC\", found \"0 LINE\"",
                    {"plan.dxf:5: a record of BLOCKS before its first block left out",
                     "plan.dxf:9: \"0 EOF\" added at the end of the file"},
                    dxf("0 SECTION|2 BLOCKS|0 ENDSEC") + made("EOF")},
        RefusedCase{dxf("0 SECTION|2 ENTITIES|0 LINE|0 ENDSEC|"
                        "0 SECTION|2 ENTITIES|0 CIRCLE|0 ENDSEC|0 EOF"),
                    "plan.dxf:9: a second ENTITIES section",
                    {"plan.dxf:9: a second ENTITIES section joined to the first"},
                    kEntities + "0\nLINE\n0\nCIRCLE\n0\nENDSEC\n0\nEOF\n"}),
    [](const auto& info) { return "case" + std::to_string(info.index); });

}  // namespace
