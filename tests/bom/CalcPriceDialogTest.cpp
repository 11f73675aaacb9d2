// The calculation dialog's buttons and settings, clicked for real: another price list attached,
// the report saved, the table drawn, the settings read and written.
#include <QApplication>
#include <QCheckBox>
#include <QLabel>
#include <QPushButton>
#include <QTest>
#include <algorithm>
#include <filesystem>

#include "bom/CalcPriceState.h"
#include "bom/TableSource.h"
#include "pricelist/PriceListFile.h"
#include "resources/BomReportTemplate.h"
#include "resources/DialogBuilder.h"
#include "tests/ModalDialogs.h"
#include "tests/bom/CalcDialogFixture.h"

namespace {

using CalcPriceDialogTest = CalcDialogFixture;

const char* const kDoorsReport =
    "Block name Item Price   Quantity          Description      Total\n"
    "      door     450.00          4        Interior door    1800.00\n"
    "    window     620.00         10        Window 120 cm    6200.00\n"
    "      desk     380.00          0          Office desk       0.00\n"
    "     chair       0.00          2                            0.00\n"
    "  Summary:                                               8000.00\n";

QLabel* FileLabel(const CalcPriceDialog& dialog) {
    return qobject_cast<QLabel*>(GetDlgItem(dialog, IDC_REPORT_FILE_LABEL));
}

TEST_F(CalcPriceDialogTest, TheFileLabelShowsTheListAndTheCheckBoxTheFlag) {
    showPricesFlag = 0;
    const auto dialog = OpenDialog(kDoorsList, DoorsDrawing());
    EXPECT_EQ(calcPriceDialog, dialog.get());
    EXPECT_EQ(FileLabel(*dialog)->text().toStdWString(), m_folder.wpath("list.prc"));
    EXPECT_EQ(FileLabel(*dialog)->toolTip().toStdWString(), m_folder.wpath("list.prc"));
    const auto* check = qobject_cast<QCheckBox*>(GetDlgItem(*dialog, IDC_REPORT_SHOW_PRICE));
    ASSERT_NE(check, nullptr);
    EXPECT_FALSE(check->isChecked());
    EXPECT_EQ(dialog->Grid().GetColWidth(kPriceColumn), 0);
}

TEST_F(CalcPriceDialogTest, AttachNewLoadsTheOtherListAndCountsAgain) {
    const auto dialog = OpenDialog(kDoorsList, DoorsDrawing());
    const std::wstring second = WriteList("chairs.prc", "Chair|99.5|Swivel chair\nDoor|500|Oak\n");
    m_editor.answerFile(RTNORM, second);
    m_editor.answerSelection(RTNORM, DoorsDrawing());
    ASSERT_TRUE(ClickDlgItem(*dialog, IDC_REPORT_ATTACH));

    EXPECT_EQ(m_editor.callsOf(L"acedGetFileD"),
              (std::vector<RecordedCall>{
                  {L"acedGetFileD", {L"Open", m_folder.wpath("list.prc"), L"prc", L"2"}}}));
    EXPECT_EQ(m_editor.callsOf(L"acedSSGet").size(), 1u);
    EXPECT_EQ(dialog->Grid().ShownRows(),
              (std::vector<BomRow>{{L"chair", L"99.50", L"2", L"Swivel chair", L"199.00"},
                                   {L"door", L"500.00", L"4", L"Oak", L"2000.00"},
                                   {L"window", L"0.00", L"10", L"", L"0.00"},
                                   {L"Summary:", L"", L"", L"", L"2199.00"}}));
    EXPECT_EQ(lastCalcFileName, second);
    EXPECT_EQ(FileLabel(*dialog)->text().toStdWString(), second);
    EXPECT_TRUE(dialog->isVisible());
}

TEST_F(CalcPriceDialogTest, AttachNewCancelledOrWithAnUnreadableListKeepsTheBill) {
    const auto dialog = OpenDialog(kDoorsList, DoorsDrawing());
    m_editor.answerFile(RTERROR);
    ASSERT_TRUE(ClickDlgItem(*dialog, IDC_REPORT_ATTACH));
    const std::wstring missing = m_folder.wpath("missing.prc");
    m_editor.answerFile(RTNORM, missing);
    ASSERT_TRUE(ClickDlgItem(*dialog, IDC_REPORT_ATTACH));
    EXPECT_EQ(m_editor.callsOf(L"acedAlert"),
              (std::vector<RecordedCall>{
                  {L"acedAlert", {L"File " + missing + L" could  not be opened"}}}));
    EXPECT_TRUE(m_editor.callsOf(L"acedSSGet").empty());
    EXPECT_EQ(dialog->Grid().ShownRows(), kDoorsBill);
    EXPECT_EQ(lastCalcFileName, m_folder.wpath("list.prc"));
}

TEST_F(CalcPriceDialogTest, AttachNewWithTheSelectionCancelledLeavesTheGridEmpty) {
    const auto dialog = OpenDialog(kDoorsList, DoorsDrawing());
    m_editor.answerFile(RTNORM, WriteList("other.prc", "Desk|1|x\n"));
    m_editor.answerSelection(RTCAN);
    ASSERT_TRUE(ClickDlgItem(*dialog, IDC_REPORT_ATTACH));
    EXPECT_EQ(dialog->Grid().GetNumberRows(), 0);
    EXPECT_EQ(lastCalcFileName, m_folder.wpath("other.prc"));
    EXPECT_EQ(FileLabel(*dialog)->text().toStdWString(), m_folder.wpath("list.prc"));
}

TEST_F(CalcPriceDialogTest, SaveToFileProposesListDashDrawingAndWritesTheReport) {
    m_editor.setVariable(L"DWGNAME", resbuf::stringValue(L"plan.dxf"));
    const auto dialog = OpenDialog(kDoorsList, DoorsDrawing());
    m_editor.answerFile(RTNORM, m_folder.wpath("chosen.txt"));
    ASSERT_TRUE(ClickDlgItem(*dialog, IDC_REPORT_SAVE));
    EXPECT_EQ(m_editor.callsOf(L"acedGetFileD"),
              (std::vector<RecordedCall>{
                  {L"acedGetFileD", {L"Save as", m_folder.wpath("list-plan.txt"), L"txt", L"1"}}}));
    EXPECT_EQ(m_folder.read("chosen.txt"), kDoorsReport);
    EXPECT_TRUE(dialog->isVisible());
}

TEST_F(CalcPriceDialogTest, TheReportFollowsTheSortAndTheHiddenPrices) {
    m_editor.setVariable(L"DWGNAME", resbuf::stringValue(L"plan.dxf"));
    const auto dialog = OpenDialog(kDoorsList, DoorsDrawing());
    ClickHeading(dialog->Grid(), kQuantityColumn);
    ASSERT_TRUE(ClickDlgItem(*dialog, IDC_REPORT_SHOW_PRICE));
    m_editor.answerFile(RTNORM, m_folder.wpath("hidden.txt"));
    ASSERT_TRUE(ClickDlgItem(*dialog, IDC_REPORT_SAVE));
    EXPECT_EQ(m_folder.read("hidden.txt"),
              "Block name   Quantity          Description\n"
              "      desk          0          Office desk\n"
              "     chair          2                     \n"
              "      door          4        Interior door\n"
              "    window         10        Window 120 cm\n");
}

TEST_F(CalcPriceDialogTest, AReportThatCannotBeWrittenOrWouldWriteOverAFileInUseAlertsOnly) {
    m_folder.write("plan.dxf", "  0\nEOF\n");
    std::filesystem::create_symlink("list.prc", m_folder.path("link.prc"));
    m_editor.setVariable(L"DWGPREFIX", resbuf::stringValue(m_folder.wpath("")));
    m_editor.setVariable(L"DWGNAME", resbuf::stringValue(L"plan.dxf"));
    const auto dialog = OpenDialog(kDoorsList, DoorsDrawing());
    const std::vector<std::string> before = m_folder.entries();
    const std::pair<std::wstring, std::wstring> cases[] = {
        {m_folder.wpath("no such folder/report.txt"), L" could  not be opened"},
        {m_folder.wpath(""), L" could  not be opened"},
        {m_folder.wpath("plan.dxf"), L" is the drawing that is open: it is not written over"},
        {m_folder.wpath("link.prc"), L" is the price list in use: it is not written over"},
    };
    for (const auto& [target, alert] : cases) {
        m_editor.clearCalls();
        m_editor.answerFile(RTNORM, target);
        ASSERT_TRUE(ClickDlgItem(*dialog, IDC_REPORT_SAVE));
        EXPECT_EQ(m_editor.callsOf(L"acedAlert"),
                  (std::vector<RecordedCall>{{L"acedAlert", {L"File " + target + alert}}}));
    }
    EXPECT_EQ(m_folder.entries(), before);
    EXPECT_EQ(m_folder.read("plan.dxf"), "  0\nEOF\n");
    EXPECT_EQ(m_folder.read("list.prc"), kDoorsList);
    EXPECT_TRUE(dialog->isVisible());
}

TEST_F(CalcPriceDialogTest, InsertDrawsTheTableBlockAndEndsWithOk) {
    const auto dialog = OpenDialog(kDoorsList, DoorsDrawing());
    ASSERT_TRUE(ClickDlgItem(*dialog, IDC_REPORT_INSERT));
    EXPECT_FALSE(dialog->isVisible());
    EXPECT_EQ(dialog->result(), IDOK);
    EXPECT_EQ(dialog->TableBlockName(), L"QTB0001");

    const MemoryDatabase::BlockRecord* table = m_database.recordNamed(L"QTB0001");
    ASSERT_NE(table, nullptr);
    // The headings and five rows of five attributes; the top rule, the rule under the headings,
    // one under each row and six verticals.
    EXPECT_EQ(table->entities.size(), 5u + 5u * 5u + 1u + 1u + 5u + 6u);
    std::vector<std::wstring> totals;
    for (const auto& entity : table->entities)
        if (const auto* a = std::get_if<AcDbAttributeDefinition>(&entity);
            a && a->tag.starts_with(L"TOTAL"))
            totals.push_back(a->textString);
    EXPECT_EQ(totals, (std::vector<std::wstring>{L"Total", L"1800.00", L"6200.00", L"0.00", L"0.00",
                                                 L"8000.00"}));
    EXPECT_EQ(m_database.textStyles().back().name, L"QTBTABLE");
    // Five rows and the headings, three units each; widths in characters at 1.2 units each.
    EXPECT_DOUBLE_EQ(dialog->TableHeight(), 18.0);
    EXPECT_DOUBLE_EQ(dialog->TableWidth(), 1.2 * (11 + 11 + 9 + 14 + 8));
    EXPECT_EQ(table->origin, (AcGePoint3d{0.0, 2.0, 0.0}));
    // The settings were saved first.
    EXPECT_FALSE(Settings("tarnwick2.set").empty());

    // "tabletext.set" holding 1 asks for the texts every viewer draws, and the table records it.
    m_folder.write("tabletext.set", "1 ");
    const auto texts = OpenDialog(kDoorsList, DoorsDrawing());
    ASSERT_TRUE(ClickDlgItem(*texts, IDC_REPORT_INSERT));
    EXPECT_EQ(texts->TableBlockName(), L"QTB0002");
    table = m_database.recordNamed(L"QTB0002");
    ASSERT_NE(table, nullptr);
    EXPECT_EQ(std::count_if(table->entities.begin(), table->entities.end(),
                            [](const auto& e) { return std::holds_alternative<AcDbText>(e); }),
              5 + 5 * 5);
    AcDbObjectId block;
    ASSERT_EQ(m_database.getBlockTableRecordId(L"QTB0002", block), Acad::eOk);
    const auto source = ReadTableSource(m_database, block);
    ASSERT_TRUE(source.has_value());
    EXPECT_TRUE(source->textForm);
}

TEST_F(CalcPriceDialogTest, InsertStopsAfterQtb9999) {
    m_database.addBlock(L"QTB9999");
    const auto dialog = OpenDialog(kDoorsList, DoorsDrawing());
    ASSERT_TRUE(ClickDlgItem(*dialog, IDC_REPORT_INSERT));
    EXPECT_EQ(
        m_editor.callsOf(L"acedAlert"),
        (std::vector<RecordedCall>{{L"acedAlert", {L"Too large number for name of table price"}}}));
    EXPECT_EQ(dialog->result(), IDCANCEL);
    EXPECT_EQ(m_database.recordNamed(L"QTB10000"), nullptr);
}

TEST_F(CalcPriceDialogTest, CloseAndTheCloseBoxWriteTheSettings) {
    auto dialog = OpenDialog(kDoorsList, DoorsDrawing());
    DragDivider(dialog->Grid(), kNameColumn, 20);
    ASSERT_TRUE(ClickDlgItem(*dialog, IDC_REPORT_SHOW_PRICE));  // the hidden columns keep theirs
    ASSERT_TRUE(ClickDlgItem(*dialog, IDC_REPORT_CLOSE));
    EXPECT_EQ(dialog->result(), IDCANCEL);
    const int share = 4 * (dialog->Grid().contentsRect().width() / 20);
    const std::string s = std::to_string(share) + " ";
    EXPECT_EQ(Settings("tarnwick2.set"), std::to_string(share + 20) + " " + s + s + s + s);
    EXPECT_EQ(Settings("filename.set"), m_folder.path("list.prc"));

    std::filesystem::remove(m_folder.path("tarnwick2.set"));
    dialog = OpenDialog("", {});
    lastCalcFileName = L"/lists/other.prc";
    dialog->close();
    EXPECT_EQ(dialog->result(), IDCANCEL);
    EXPECT_EQ(Settings("filename.set"), "/lists/other.prc");
    EXPECT_FALSE(Settings("tarnwick2.set").empty());
}

TEST_F(CalcPriceDialogTest, EscapeOnAButtonEndsWithoutWritingTheSettings) {
    const auto dialog = OpenDialog(kDoorsList, DoorsDrawing());
    QWidget* close = GetDlgItem(*dialog, IDC_REPORT_CLOSE);
    close->setFocus();
    QTest::keyClick(close, Qt::Key_Escape);
    EXPECT_FALSE(dialog->isVisible());
    EXPECT_EQ(dialog->result(), IDCANCEL);
    EXPECT_FALSE(std::filesystem::exists(m_folder.path("tarnwick2.set")));
}

TEST_F(CalcPriceDialogTest, SettingsGiveTheWidthsAndTheFileNameUpToItsFirstBlank) {
    m_folder.write("tarnwick2.set", "120 40 60 200 70 ");
    m_folder.write("filename.set", "/my lists/doors.prc");
    CalcPriceDialog dialog;
    dialog.LoadSettings();
    EXPECT_EQ(lastCalcFileName, L"/my");
    dialog.OnInitDialog();
    std::vector<int> widths;
    for (int col = 0; col < kBomColumnCount; ++col)
        widths.push_back(dialog.Grid().GetColWidth(col));
    EXPECT_EQ(widths, (std::vector<int>{120, 40, 60, 200, 70}));
}

}  // namespace
