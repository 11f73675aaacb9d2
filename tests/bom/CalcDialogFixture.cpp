// The calculation dialog's test fixture.
#include "tests/bom/CalcDialogFixture.h"

#include <QTest>

#include "bom/CalcPriceState.h"
#include "grid/CUGTopHdg.h"
#include "resources/ModulePath.h"

const char* const kDoorsList =
    "Door|450|Interior door\n"
    "Window|620|Window 120 cm\n"
    "Desk|380|Office desk\n";

const std::vector<BomRow> kDoorsBill = {
    {L"door", L"450.00", L"4", L"Interior door", L"1800.00"},
    {L"window", L"620.00", L"10", L"Window 120 cm", L"6200.00"},
    {L"desk", L"380.00", L"0", L"Office desk", L"0.00"},
    {L"chair", L"0.00", L"2", L"", L"0.00"},
    {L"Summary:", L"", L"", L"", L"8000.00"},
};

void CalcDialogFixture::SetUp() {
    acdbHostApplicationServices()->setWorkingDatabase(&m_database);
    modulePath = m_folder.wpath("Tarnwick.arx");
    lastCalcFileName.clear();
    showPricesFlag = 1;
}

void CalcDialogFixture::TearDown() {
    acdbHostApplicationServices()->setWorkingDatabase(nullptr);
    modulePath.clear();
    lastCalcFileName.clear();
    showPricesFlag = 1;
}

std::wstring CalcDialogFixture::WriteList(const std::string& name, const std::string& text) {
    m_folder.write(name, text);
    return m_folder.wpath(name);
}

std::vector<AcDbObjectId> CalcDialogFixture::References(const std::wstring& block, int count) {
    std::vector<AcDbObjectId> ids;
    for (int i = 0; i < count; ++i) ids.push_back(m_database.addReference(block, {1.0 * i, 0, 0}));
    return ids;
}

std::vector<AcDbObjectId> CalcDialogFixture::DoorsDrawing() {
    std::vector<AcDbObjectId> ids = References(L"DOOR", 4);
    for (const auto& more : {References(L"window", 10), References(L"Chair", 2)})
        ids.insert(ids.end(), more.begin(), more.end());
    return ids;
}

std::unique_ptr<CalcPriceDialog> CalcDialogFixture::OpenDialog(
    const std::string& listText, std::vector<AcDbObjectId> references) {
    auto dialog = std::make_unique<CalcPriceDialog>();
    dialog->LoadSettings();
    if (!listText.empty()) {
        lastCalcFileName = WriteList("list.prc", listText);
        EXPECT_TRUE(dialog->LoadPriceList(lastCalcFileName));
    }
    m_editor.answerSelection(RTNORM, std::move(references));
    EXPECT_TRUE(dialog->CountSelection());
    dialog->OnInitDialog();
    dialog->show();
    m_editor.clearCalls();
    return dialog;
}

void CalcDialogFixture::ClickHeading(MyCug2& grid, int col) {
    const CUGGridInfo* gi = grid.GetGridInfo();
    const QPoint middle(gi->ColLeft(col) + gi->GetColWidth(col) / 2, grid.GetTH_Height() / 2);
    QTest::mouseClick(grid.GetTopHdgWindow(), Qt::LeftButton, {}, middle);
}

void CalcDialogFixture::DragDivider(MyCug2& grid, int col, int by) {
    const CUGGridInfo* gi = grid.GetGridInfo();
    const int edge = gi->ColLeft(col) + gi->GetColWidth(col) - 1;
    const int y = grid.GetTH_Height() / 2;
    QWidget* heading = grid.GetTopHdgWindow();
    QTest::mousePress(heading, Qt::LeftButton, {}, QPoint(edge, y));
    QTest::mouseMove(heading, QPoint(edge + by, y));
    QTest::mouseRelease(heading, Qt::LeftButton, {}, QPoint(edge + by, y));
}

std::vector<std::wstring> CalcDialogFixture::Column(MyCug2& grid, int col) {
    std::vector<std::wstring> texts;
    for (const BomRow& row : grid.ShownRows()) texts.push_back(row[static_cast<std::size_t>(col)]);
    return texts;
}
