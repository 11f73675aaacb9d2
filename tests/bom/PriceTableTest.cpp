// The price table block: its name, text style, geometry and the failures it reports.
#include <gtest/gtest.h>

#include <cstdio>

#include "bom/PriceTable.h"
#include "bom/TableSource.h"
#include "host/scripted/memorydatabase.h"
#include "host/scripted/scriptededitor.h"

namespace {

std::string Number(double value) {
    char buffer[32];
    std::snprintf(buffer, sizeof buffer, "%g", value);
    return buffer;
}

std::string Narrow(const std::wstring& text) { return std::string(text.begin(), text.end()); }

// "'text' mode x,y x,y": a text or an attribute definition where it stands.
template <typename Text>
std::string Placed(const Text& a) {
    const char* mode = a.horizontalMode == AcDb::kTextLeft     ? "left"
                       : a.horizontalMode == AcDb::kTextCenter ? "centre"
                                                               : "right";
    return "'" + Narrow(a.textString) + "' " + mode + " " + Number(a.position.x) + "," +
           Number(a.position.y) + " " + Number(a.alignmentPoint.x) + "," +
           Number(a.alignmentPoint.y);
}

// One line a entity: "L x,y x,y" for a line; "A TAG 'text' mode x,y x,y" for an attribute
// definition, "T 'text' mode x,y x,y" for a text.
std::vector<std::string> Describe(const MemoryDatabase::BlockRecord& block) {
    std::vector<std::string> out;
    for (const auto& entity : block.entities) {
        if (const auto* line = std::get_if<AcDbLine>(&entity)) {
            out.push_back("L " + Number(line->startPoint.x) + "," + Number(line->startPoint.y) + " " +
                          Number(line->endPoint.x) + "," + Number(line->endPoint.y));
        } else if (const auto* a = std::get_if<AcDbAttributeDefinition>(&entity)) {
            out.push_back("A " + Narrow(a->tag) + " " + Placed(*a));
        } else {
            out.push_back("T " + Placed(std::get<AcDbText>(entity)));
        }
    }
    return out;
}

const std::vector<BomRow> kDoorRows{{L"door", L"10.00", L"3", L"front", L"30.00"},
                                    {L"Summary:", L"", L"", L"", L"30.00"}};

class PriceTableTest : public ::testing::Test {
protected:
    void SetUp() override { acdbHostApplicationServices()->setWorkingDatabase(&m_database); }
    void TearDown() override { acdbHostApplicationServices()->setWorkingDatabase(nullptr); }

    std::wstring NextName() {
        std::wstring name = L"unset";
        return NextTableBlockName(name) ? name : L"refused";
    }

    MemoryDatabase m_database;
    ScriptedEditor m_editor;
};

TEST_F(PriceTableTest, TheTextStyleIsCreatedOnceWithTheHebrewFont) {
    EXPECT_EQ(EnsureTableTextStyle(), 0);
    EXPECT_EQ(EnsureTableTextStyle(), 1);
    ASSERT_EQ(m_database.textStyles().size(), 2u);
    EXPECT_EQ(m_database.textStyles()[1], (AcDbTextStyleTableRecord{L"QTBTABLE", L"simpheb.shx"}));
}

TEST_F(PriceTableTest, SerialNamesFollowTheHighestQtbNumber) {
    EXPECT_EQ(NextName(), L"QTB0001");
    m_database.addBlock(L"QTB0007");
    m_database.addBlock(L"qtb0012");
    m_database.addBlock(L"QTBX");
    m_database.addBlock(L"QTB12");
    m_database.addBlock(L"QTB00500");
    m_database.addBlock(L"QTBabcd");
    m_database.addBlock(L"XQTB999");
    EXPECT_EQ(NextName(), L"QTB0013");
    EXPECT_TRUE(m_editor.calls().empty());
    m_database.addBlock(L"QTB9998");
    EXPECT_EQ(NextName(), L"QTB9999");
    m_database.addBlock(L"QTB9999");  // and none past it
    EXPECT_EQ(NextName(), L"refused");
    EXPECT_EQ(m_editor.calls(),
              (std::vector<RecordedCall>{{L"acedAlert", {L"Too large number for name of table price"}}}));
}

TEST_F(PriceTableTest, ATableOfOneRowAndItsSummary) {
    EnsureTableTextStyle();
    PriceTableExtent extent;
    ASSERT_EQ(DrawPriceTable(kDoorRows, true, L"QTB0001", L"QTBTABLE", 1.0, extent), 1);
    const auto* block = m_database.recordNamed(L"QTB0001");
    ASSERT_NE(block, nullptr);
    // Widths in characters 11, 11, 9, 12, 6; 1.2 units a character.
    EXPECT_EQ(Describe(*block),
              (std::vector<std::string>{
                  "L 58.8,2 0,2",
                  "A BLOCKNAME 'Block name' centre 1,0 6.6,0",
                  "A PRICE 'Item Price' centre 14.2,0 19.8,0",
                  "A QUANTITY 'Quantity' centre 27.4,0 31.8,0",
                  "A DESCRIPTION 'Description' centre 38.2,0 44.4,0",
                  "A TOTAL 'Total' centre 52.6,0 55.2,0",
                  "L 58.8,-1 0,-1",
                  "A BLOCKNAME1 'door' left 1,-3 0,-3",
                  "A PRICE1 '10.00' right 0,-3 25.4,-3",
                  "A QUANTITY1 '3' right 0,-3 36.2,-3",
                  "A DESCRIPTION1 'front' left 38.2,-3 0,-3",
                  "A TOTAL1 '30.00' right 0,-3 57.8,-3",
                  "L 58.8,-4 0,-4",
                  "A BLOCKNAME2 'Summary:' left 1,-6 0,-6",
                  "A PRICE2 '' right 0,-6 25.4,-6",
                  "A QUANTITY2 '' right 0,-6 36.2,-6",
                  "A DESCRIPTION2 '' left 38.2,-6 0,-6",
                  "A TOTAL2 '30.00' right 0,-6 57.8,-6",
                  "L 58.8,-7 0,-7",
                  "L 0,-7 0,2",
                  "L 13.2,-7 13.2,2",
                  "L 26.4,-7 26.4,2",
                  "L 37.2,-7 37.2,2",
                  "L 51.6,-7 51.6,2",
                  "L 58.8,-7 58.8,2"}));
    EXPECT_EQ(block->origin, (AcGePoint3d{0, 2, 0}));
    EXPECT_DOUBLE_EQ(extent.width, 58.8);
    EXPECT_DOUBLE_EQ(extent.height, 9.0);
}

TEST_F(PriceTableTest, EveryDefinitionIsAVisiblePlainTextInTheTableStyle) {
    EnsureTableTextStyle();
    AcDbObjectId style;
    ASSERT_EQ(m_database.getTextStyleId(L"QTBTABLE", style), Acad::eOk);
    PriceTableExtent extent;
    ASSERT_EQ(DrawPriceTable(kDoorRows, true, L"QTB0001", L"QTBTABLE", 2.5, extent), 1);
    for (const auto& entity : m_database.recordNamed(L"QTB0001")->entities) {
        const auto* a = std::get_if<AcDbAttributeDefinition>(&entity);
        if (a == nullptr) continue;
        EXPECT_EQ(a->textStyle, style);
        EXPECT_EQ(a->prompt, a->tag);
        EXPECT_DOUBLE_EQ(a->height, 2.5);
        EXPECT_DOUBLE_EQ(a->widthFactor, 1.0);
        EXPECT_FALSE(a->invisible || a->verifiable || a->preset || a->constant);
    }
    EXPECT_DOUBLE_EQ(extent.width, 49 * 1.2 * 2.5);
    EXPECT_DOUBLE_EQ(extent.height, 9 * 2.5);
}

// Every viewer draws texts: the text form puts one where each definition would stand, with the
// cell's tag in its extended data, and the table is known by it as by its definitions.
TEST_F(PriceTableTest, TheTextFormPutsATextWhereEachDefinitionStandsNamingItsCell) {
    EnsureTableTextStyle();
    PriceTableExtent attributes;
    PriceTableExtent texts;
    ASSERT_EQ(DrawPriceTable(kDoorRows, true, L"QTB0001", L"QTBTABLE", 1.0, attributes), 1);
    ASSERT_EQ(DrawPriceTable(kDoorRows, true, L"QTB0002", L"QTBTABLE", 1.0, texts,
                             TableForm::Texts),
              1);
    EXPECT_DOUBLE_EQ(texts.width, attributes.width);
    EXPECT_DOUBLE_EQ(texts.height, attributes.height);
    const MemoryDatabase::BlockRecord& drawn = *m_database.recordNamed(L"QTB0002");
    const auto expected = Describe(*m_database.recordNamed(L"QTB0001"));
    const auto got = Describe(drawn);
    ASSERT_EQ(got.size(), expected.size());
    for (std::size_t i = 0; i < got.size(); ++i) {
        if (!expected[i].starts_with("A ")) {
            EXPECT_EQ(got[i], expected[i]);
            continue;
        }
        const std::size_t text = expected[i].find(" '");
        EXPECT_EQ(got[i], "T" + expected[i].substr(text));
        std::wstring tag;
        std::wstring shown;
        ASSERT_TRUE(TableCellOf(m_database, drawn.entityIds[i], tag, shown));
        EXPECT_EQ("A " + Narrow(tag), expected[i].substr(0, text));
    }
    AcDbObjectId id;
    ASSERT_EQ(m_database.getBlockTableRecordId(L"QTB0002", id), Acad::eOk);
    EXPECT_TRUE(IsPriceTable(m_database, id));
}

TEST_F(PriceTableTest, HiddenPricesCollapseTheirColumnsAndDropTheSummary) {
    PriceTableExtent extent;
    ASSERT_EQ(DrawPriceTable(kDoorRows, false, L"QTB0001", L"QTBTABLE", 1.0, extent), 1);
    const auto lines = Describe(*m_database.recordNamed(L"QTB0001"));
    ASSERT_EQ(lines.size(), 15u);
    EXPECT_EQ(lines[2], "A QUANTITY 'Quantity' centre 14.2,0 18.6,0");
    EXPECT_EQ(lines[6], "A QUANTITY1 '3' right 0,-3 23,-3");
    // The price columns' verticals fall on their neighbours'.
    EXPECT_EQ(std::vector<std::string>(lines.begin() + 9, lines.end()),
              (std::vector<std::string>{"L 0,-4 0,2", "L 13.2,-4 13.2,2", "L 13.2,-4 13.2,2",
                                        "L 24,-4 24,2", "L 38.4,-4 38.4,2", "L 38.4,-4 38.4,2"}));
    EXPECT_DOUBLE_EQ(extent.height, 6.0);
}

TEST_F(PriceTableTest, HebrewDescriptionsAreRightJustified) {
    const std::vector<BomRow> rows{{L"a", L"1.00", L"1", L"\u05d3\u05dc\u05ea", L"1.00"},
                                   {L"b", L"1.00", L"1", std::wstring(1, wchar_t(233)), L"1.00"},
                                   {L"c", L"1.00", L"1", L"plain", L"1.00"},
                                   {L"d", L"1.00", L"1", std::wstring(1, wchar_t(251)), L"1.00"}};
    PriceTableExtent extent;
    ASSERT_EQ(DrawPriceTable(rows, true, L"QTB0001", L"QTBTABLE", 1.0, extent), 1);
    std::vector<AcDb::TextHorzMode> modes;
    for (const auto& entity : m_database.recordNamed(L"QTB0001")->entities) {
        const auto* a = std::get_if<AcDbAttributeDefinition>(&entity);
        if (a != nullptr && a->tag.starts_with(L"DESCRIPTION") && a->tag != L"DESCRIPTION")
            modes.push_back(a->horizontalMode);
    }
    EXPECT_EQ(modes, (std::vector<AcDb::TextHorzMode>{AcDb::kTextRight, AcDb::kTextRight,
                                                      AcDb::kTextLeft, AcDb::kTextLeft}));
}

// The block exists already and the table's text style does not: it is drawn into, in Standard.
TEST_F(PriceTableTest, AnEmptyGridIsHeadingsBetweenTwoRulesInAnExistingBlockAndInStandardStyle) {
    m_database.addBlock(L"QTB0001");
    PriceTableExtent extent;
    ASSERT_EQ(DrawPriceTable({}, true, L"qtb0001", L"QTBTABLE", 1.0, extent), 1);
    EXPECT_EQ(m_database.blockNames().size(), 3u);
    const auto lines = Describe(*m_database.recordNamed(L"QTB0001"));
    ASSERT_EQ(lines.size(), 1u + 5u + 1u + 6u);
    EXPECT_EQ(lines[6], "L 58.8,-1 0,-1");
    EXPECT_EQ(lines[7], "L 0,-1 0,2");
    EXPECT_DOUBLE_EQ(extent.height, 3.0);
    const auto& first = m_database.recordNamed(L"QTB0001")->entities.at(1);
    EXPECT_EQ(std::get<AcDbAttributeDefinition>(first).textStyle, m_database.textStyleIdAt(0));
}

TEST_F(PriceTableTest, WithNoStyleAtAllOrAnUnreadableBlockTableTheTableFails) {
    m_database.removeTextStyle(L"Standard");
    PriceTableExtent extent;
    EXPECT_EQ(DrawPriceTable(kDoorRows, true, L"QTB0001", L"QTBTABLE", 1.0, extent), 0);
    ASSERT_NE(m_database.recordNamed(L"QTB0001"), nullptr);  // the block stays, empty
    EXPECT_TRUE(m_database.recordNamed(L"QTB0001")->entities.empty());
    m_database.setBlockTableLookupStatus(Acad::eInvalidInput);
    EXPECT_EQ(DrawPriceTable(kDoorRows, true, L"QTB0002", L"QTBTABLE", 1.0, extent), 0);
    const std::wstring object = L"Cannot get an object \"AcDb";
    EXPECT_EQ(m_editor.calls(),
              (std::vector<RecordedCall>{
                  {L"acedAlert", {object + L"TextStyleTableRecord\" for the price table"}},
                  {L"acedAlert", {object + L"BlockTableRecord\" for the price table"}}}));
}

}  // namespace
