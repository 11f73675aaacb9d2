// Block names read from 8-bit drawings (code pages 1251, 1252, 1253) and from "\U+XXXX" escapes,
// through the module's functions: sorted and looked up by the inventory in any case, and numbered
// past by the table's serial names. (Counting them against a price list: the console's tests.)
#include <gtest/gtest.h>

#include <clocale>

#include "bom/PriceTable.h"
#include "host/dxf/dxfdocument.h"
#include "host/scripted/scriptededitor.h"
#include "inventory/BlockNamesCont.h"
#include "tests/host/EncodedNameDrawings.h"
#include "tests/host/TestName.h"
#include "text/CaseRules.h"

namespace {

class DxfEncodedNames : public ::testing::TestWithParam<EncodedNameDrawing> {
protected:
    void SetUp() override {
        auto read = DxfDocument::readBytes(GetParam().file, fixtureBytes(GetParam().drawing));
        ASSERT_TRUE(read.isOk()) << read.errorString();
        m_document = read.takeValue();
        acdbHostApplicationServices()->setWorkingDatabase(m_document.get());
    }
    void TearDown() override { acdbHostApplicationServices()->setWorkingDatabase(nullptr); }

    std::unique_ptr<DxfDocument> m_document;
    ScriptedEditor m_editor;
};

TEST_P(DxfEncodedNames, SortAndAreFoundByTheInventoryInAnyCase) {
    BlockNamesCont names;
    names.Load();
    names.Sort();
    std::vector<std::wstring> sorted;
    for (const auto& entry : names.Names()) sorted.push_back(entry.name);
    EXPECT_EQ(sorted, GetParam().sortedNames);

    // Every name but the last, looked up in upper and in lower case.
    for (std::size_t i = 0; i + 1 < GetParam().sortedNames.size(); ++i) {
        const std::wstring& name = GetParam().sortedNames[i];
        names.SetMark((i % 2 == 0 ? MakeUpper(name) : MakeLower(name)).c_str(), 1);
    }
    std::wstring unmarked;
    names.UnmarkedNames(unmarked);
    EXPECT_EQ(unmarked, GetParam().sortedNames.back() + L"\n");
}

// The drawing's own block table finds a name in another case also when the environment's locale
// is the plain C one, which knows case only for A-Z.
TEST_P(DxfEncodedNames, AreFoundInTheBlockTableInAnyCaseWhateverTheLocale) {
    const std::string saved = std::setlocale(LC_ALL, nullptr);
    std::setlocale(LC_ALL, "C");
    for (const std::wstring& name : GetParam().sortedNames) {
        AcDbObjectId upper, lower;
        EXPECT_EQ(m_document->getBlockTableRecordId(MakeUpper(name), upper), Acad::eOk);
        EXPECT_EQ(m_document->getBlockTableRecordId(MakeLower(name), lower), Acad::eOk);
        EXPECT_EQ(upper, lower);
    }
    std::setlocale(LC_ALL, saved.c_str());
}

INSTANTIATE_TEST_SUITE_P(CodePages, DxfEncodedNames, ::testing::ValuesIn(encodedNameDrawings()),
                         [](const auto& info) { return testName(info.param.file); });

TEST(DxfEncodedTableNames, TheNextTableNumberCountsEscapedAndLowerCaseNames) {
    FixtureDrawing drawing;
    drawing.version = FixtureVersion::R12;
    drawing.codePage = "ANSI_1253";
    drawing.blocks = {{"qtb0012", {}, ""},
                      {"\\U+0051TB0020", {}, ""},  // QTB0020 with an escaped Q
                      {"QTB\xD9\xD9\xD9\xD9", {}, ""},  // QTBΩΩΩΩ: no number, counts as 0
                      {"\\U+FF31TB0030", {}, ""}};  // a full-width Q: not "QTB"
    auto read = DxfDocument::readBytes("tables.dxf", fixtureBytes(drawing));
    ASSERT_TRUE(read.isOk()) << read.errorString();
    const auto document = read.takeValue();
    acdbHostApplicationServices()->setWorkingDatabase(document.get());
    ScriptedEditor editor;
    std::wstring name;
    EXPECT_TRUE(NextTableBlockName(name));
    acdbHostApplicationServices()->setWorkingDatabase(nullptr);
    EXPECT_EQ(name, L"QTB0021");
}

}  // namespace
