// The second layer: sections, tables and block definitions found over the records, and files whose
// records do not nest as a DXF file must, refused with the place and what was expected there.
#include <gtest/gtest.h>

#include "host/dxf/dxfstructure.h"

namespace {

std::string dxf(std::initializer_list<std::pair<int, const char*>> tags) {
    std::string out;
    for (const auto& [code, value] : tags) out += std::to_string(code) + "\n" + value + "\n";
    return out;
}

DxfResult<DxfStructure> structureOf(const std::string& bytes) {
    auto tags = DxfTagFile::parse("plan.dxf", bytes);
    if (!tags.isOk()) return DxfError(tags.errorString());
    const DxfRecords records(tags.value());
    return DxfStructure::index(tags.value(), records);
}

TEST(DxfStructure, FindsSectionsTablesAndBlocks) {
    const std::string bytes =
        dxf({{999, "comment"}, {0, "SECTION"},  {2, "HEADER"}, {9, "$ACADVER"}, {1, "AC1009"},
             {0, "ENDSEC"},    {0, "SECTION"},  {2, "TABLES"}, {0, "TABLE"},    {2, "LAYER"},
             {70, "2"},        {0, "LAYER"},    {2, "0"},      {0, "LAYER"},    {2, "A"},
             {0, "ENDTAB"},    {0, "TABLE"},    {2, "STYLE"},  {0, "ENDTAB"},   {0, "ENDSEC"},
             {0, "SECTION"},   {2, "BLOCKS"},   {0, "BLOCK"},  {2, "A"},        {0, "LINE"},
             {0, "ENDBLK"},    {0, "BLOCK"},    {2, "B"},      {0, "ENDBLK"},   {0, "ENDSEC"},
             {0, "SECTION"},   {2, "ENTITIES"}, {0, "INSERT"}, {2, "A"},        {0, "ENDSEC"},
             {0, "EOF"}});
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

struct RefusedCase {
    std::string input;
    std::string message;
};

void PrintTo(const RefusedCase& c, std::ostream* out) { *out << c.message; }

class RefusedStructure : public ::testing::TestWithParam<RefusedCase> {};

TEST_P(RefusedStructure, NamesThePlaceAndWhatWasExpected) {
    auto structure = structureOf(GetParam().input);
    ASSERT_FALSE(structure.isOk());
    EXPECT_EQ(structure.errorString(), GetParam().message);
}

INSTANTIATE_TEST_SUITE_P(
    Inputs, RefusedStructure,
    ::testing::Values(
        RefusedCase{"",
                    "plan.dxf:1: expected \"0 SECTION\" or \"0 EOF\", found the end of the file"},
        RefusedCase{dxf({{0, "LINE"}, {0, "EOF"}}),
                    "plan.dxf:1: expected \"0 SECTION\" or \"0 EOF\", found \"0 LINE\""},
        RefusedCase{dxf({{8, "0"}, {0, "EOF"}}),
                    "plan.dxf:1: expected \"0 SECTION\", found group code 8"},
        RefusedCase{dxf({{0, "SECTION"}, {70, "1"}, {0, "ENDSEC"}, {0, "EOF"}}),
                    "plan.dxf:1: expected the section's name (group code 2) after \"0 SECTION\""},
        RefusedCase{dxf({{0, "SECTION"}, {2, "ENTITIES"}, {0, "LINE"}, {0, "EOF"}}),
                    "plan.dxf:7: expected \"0 ENDSEC\", found \"0 EOF\""},
        RefusedCase{dxf({{0, "SECTION"}, {2, "ENTITIES"}, {0, "LINE"}, {8, "0"}}),
                    "plan.dxf:9: expected \"0 ENDSEC\", found the end of the file"},
        RefusedCase{dxf({{0, "SECTION"}, {2, "ENTITIES"}, {0, "ENDSEC"}}),
                    "plan.dxf:7: expected \"0 SECTION\" or \"0 EOF\", found the end of the file"},
        RefusedCase{dxf({{0, "SECTION"}, {2, "ENTITIES"}, {0, "SECTION"}, {2, "BLOCKS"}}),
                    "plan.dxf:5: expected \"0 ENDSEC\", found \"0 SECTION\""},
        RefusedCase{dxf({{0, "SECTION"}, {2, "TABLES"}, {0, "LAYER"}, {0, "ENDSEC"}, {0, "EOF"}}),
                    "plan.dxf:5: expected \"0 TABLE\" or \"0 ENDSEC\", found \"0 LAYER\""},
        RefusedCase{dxf({{0, "SECTION"},
                         {2, "TABLES"},
                         {0, "TABLE"},
                         {2, "LAYER"},
                         {0, "LAYER"},
                         {0, "ENDSEC"}}),
                    "plan.dxf:11: expected \"0 ENDTAB\", found \"0 ENDSEC\""},
        RefusedCase{dxf({{0, "SECTION"}, {2, "TABLES"}, {0, "TABLE"}, {70, "0"}, {0, "ENDTAB"}}),
                    "plan.dxf:5: TABLE has no name (group code 2)"},
        RefusedCase{
            dxf({{0, "SECTION"}, {2, "BLOCKS"}, {0, "BLOCK"}, {2, "A"}, {0, "BLOCK"}, {2, "B"}}),
            "plan.dxf:9: expected \"0 ENDBLK\", found \"0 BLOCK\""},
        RefusedCase{
            dxf({{0, "SECTION"}, {2, "BLOCKS"}, {0, "BLOCK"}, {8, "0"}, {70, "0"}, {0, "ENDBLK"}}),
            "plan.dxf:5: BLOCK has no name (group code 2)"},
        RefusedCase{dxf({{0, "SECTION"}, {2, "BLOCKS"}, {0, "LINE"}, {0, "ENDSEC"}}),
                    "plan.dxf:5: expected \"0 BLOCK\" or \"0 ENDSEC\", found \"0 LINE\""},
        RefusedCase{
            dxf({{0, "SECTION"}, {2, "ENTITIES"}, {0, "ENDSEC"}, {0, "SECTION"}, {2, "ENTITIES"}}),
            "plan.dxf:7: a second ENTITIES section"}),
    [](const auto& info) { return "case" + std::to_string(info.index); });

}  // namespace
