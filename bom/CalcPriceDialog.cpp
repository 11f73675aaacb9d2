// The calculation dialog's handlers.
#include "bom/CalcPriceDialog.h"

#include <QCheckBox>
#include <QCloseEvent>
#include <QFontMetrics>
#include <QLabel>
#include <QMouseEvent>
#include <QPushButton>

#include "bom/CalcPriceState.h"
#include "bom/PriceTable.h"
#include "bom/Report.h"
#include "bom/TableSource.h"
#include "host/api/acapwindow.h"
#include "host/api/acededitor.h"
#include "pricelist/FilesInUse.h"
#include "pricelist/SettingsFiles.h"
#include "resources/BomReportTemplate.h"
#include "resources/DialogBuilder.h"
#include "resources/ModulePath.h"

CalcPriceDialog* calcPriceDialog = nullptr;

namespace {

constexpr int kOpenExisting = 2;
constexpr int kCreateNew = 1;

SettingsPaths CalculationSettingsPaths() {
    return GetSettingsPaths(modulePath, kCalculationSettingsFile);
}

}  // namespace

CalcPriceDialog::CalcPriceDialog(QWidget* parent) : QDialog(parent) {
    BuildDialog(*this, kBomReportTemplate, TemplateFont(kBomReportTemplate));
    m_fileLabel = qobject_cast<QLabel*>(GetDlgItem(*this, IDC_REPORT_FILE_LABEL));
    m_showPrice = qobject_cast<QCheckBox*>(GetDlgItem(*this, IDC_REPORT_SHOW_PRICE));
    auto connectButton = [this](int id, void (CalcPriceDialog::*handler)()) {
        if (auto* button = qobject_cast<QPushButton*>(GetDlgItem(*this, id)))
            connect(button, &QPushButton::clicked, this, [this, handler] { (this->*handler)(); });
    };
    connectButton(IDC_REPORT_ATTACH, &CalcPriceDialog::OnAttachNew);
    connectButton(IDC_REPORT_INSERT, &CalcPriceDialog::OnInsert);
    connectButton(IDC_REPORT_SAVE, &CalcPriceDialog::OnSaveToFile);
    connectButton(IDC_REPORT_CLOSE, &CalcPriceDialog::SaveAndClose);
    if (m_showPrice != nullptr)
        connect(m_showPrice, &QCheckBox::clicked, this, [this] { OnShowPrice(); });
    calcPriceDialog = this;
}

CalcPriceDialog::~CalcPriceDialog() {
    if (calcPriceDialog == this) calcPriceDialog = nullptr;
}

void CalcPriceDialog::LoadSettings() {
    const SettingsPaths paths = CalculationSettingsPaths();
    ReadColumnWidths(paths.widths, m_grid.SavedWidths().data(), kBomColumnCount);
    ReadFileNameSetting(paths.fileName, lastCalcFileName);
    int texts = 0;
    ReadColumnWidths(GetSettingsPaths(modulePath, kTableFormSettingsFile).widths, &texts, 1);
    m_tableForm = texts == 1 ? TableForm::Texts : TableForm::Attributes;
}

bool CalcPriceDialog::LoadPriceList(const std::wstring& path) {
    if (!m_calculation.LoadPriceList(path)) return false;
    if (m_initialised) {
        m_grid.RemoveAllRows();
        m_grid.RedrawAll();
    }
    m_grid.SetReportFormat(m_calculation.PriceListFormat());
    return true;
}

bool CalcPriceDialog::CountSelection() {
    m_calculation.SetListOnlyPricedBlocks(m_grid.ListOnlyPricedBlocks());
    return m_calculation.CountSelection();
}

void CalcPriceDialog::OnInitDialog() {
    if (m_initialised) return;
    m_initialised = true;
    m_grid.AttachGrid(this, IDC_REPORT_GRID);
    m_grid.FillFromResults(m_calculation.Results());
    ShowFileName();
    if (m_showPrice != nullptr) m_showPrice->setChecked(showPricesFlag != 0);
}

int CalcPriceDialog::DoModal() {
    OnInitDialog();
    return exec() == IDOK ? IDOK : IDCANCEL;
}

void CalcPriceDialog::ShowFileName() {
    if (m_fileLabel == nullptr) return;
    // A long path keeps its start and its file name; the whole of it is in the tip.
    const QString path = QString::fromStdWString(lastCalcFileName);
    m_fileLabel->setText(
        QFontMetrics(m_fileLabel->font()).elidedText(path, Qt::ElideMiddle, m_fileLabel->width()));
    m_fileLabel->setToolTip(path);
}

void CalcPriceDialog::EndDialog(int result) { done(result); }

void CalcPriceDialog::SaveAndClose() {
    m_grid.SaveColumnWidths();
    const SettingsPaths paths = CalculationSettingsPaths();
    WriteColumnWidths(paths.widths, m_grid.SavedWidths().data(), kBomColumnCount);
    WriteFileNameSetting(paths.fileName, lastCalcFileName);
    EndDialog(IDCANCEL);
}

void CalcPriceDialog::reject() { EndDialog(IDCANCEL); }

void CalcPriceDialog::closeEvent(QCloseEvent* event) {
    SaveAndClose();
    event->accept();
}

void CalcPriceDialog::mousePressEvent(QMouseEvent* event) {
    setFocus();
    QDialog::mousePressEvent(event);
}

void CalcPriceDialog::OnAttachNew() {
    resbuf chosen;
    if (acedGetFileD(L"Open", lastCalcFileName.c_str(), L"prc", kOpenExisting, &chosen) != RTNORM)
        return;
    const std::wstring path = chosen.resval.rstring;
    // The rows keep their counts when the list cannot be read: counting again would add to them.
    if (!LoadPriceList(path)) return;
    lastCalcFileName = path;
    m_priceListLoaded = true;
    if (!CountSelection()) return;
    m_grid.FillFromResults(m_calculation.Results());
    ShowFileName();
}

void CalcPriceDialog::OnInsert() {
    SaveAndClose();
    EnsureTableTextStyle();
    std::wstring blockName;
    if (!NextTableBlockName(blockName)) {
        EndDialog(IDCANCEL);
        return;
    }
    m_tableBlockName = blockName;
    if (m_grid.DrawPriceTable(blockName.c_str(), kTableTextStyle, 1.0, m_tableForm) != 1) {
        EndDialog(IDCANCEL);
        return;
    }
    RecordSource();
    EndDialog(IDOK);
}

void CalcPriceDialog::RecordSource() {
    std::optional<TableSource> source = m_calculation.CountedSource();
    if (!source) return;  // too many references picked to record
    source->priceList = m_priceListLoaded ? lastCalcFileName : std::wstring();
    source->showPrices = showPricesFlag != 0;
    source->scale = 1.0;
    source->textForm = m_tableForm == TableForm::Texts;
    source->onlyPriced = m_grid.ListOnlyPricedBlocks();
    if (m_grid.IsSorted()) {
        source->sortColumn = m_grid.SortedColumn();
        source->sortAscending = m_grid.SortedAscending();
    }
    RecordTableSource(m_tableBlockName, *source, m_grid.ShownRows());
}

void CalcPriceDialog::OnSaveToFile() {
    resbuf drawingName;
    if (acedGetVar(L"DWGNAME", &drawingName) != RTNORM) drawingName = resbuf::stringValue(L"");
    const std::wstring proposal = ProposeReportName(lastCalcFileName, drawingName.resval.rstring);
    resbuf chosen;
    if (acedGetFileD(L"Save as", proposal.c_str(), L"txt", kCreateNew, &chosen) != RTNORM) return;
    if (RefuseToWriteOver(chosen.resval.rstring, lastCalcFileName)) return;
    m_grid.WriteReport(chosen.resval.rstring);
}

void CalcPriceDialog::OnShowPrice() {
    showPricesFlag = m_showPrice->isChecked() ? 1 : 0;
    m_grid.ApplyShowPrices();
}
