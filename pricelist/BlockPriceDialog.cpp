// The price-list dialog: its controls, its state after every action, and its settings.
#include "pricelist/BlockPriceDialog.h"

#include <QFontMetrics>
#include <QLabel>
#include <QPalette>
#include <QPushButton>

#include "host/api/acapwindow.h"
#include "host/api/acededitor.h"
#include "pricelist/CStaticEx.h"
#include "pricelist/CurrentPriceList.h"
#include "pricelist/SettingsFiles.h"
#include "resources/BomTemplate.h"
#include "resources/DialogBuilder.h"
#include "resources/ModulePath.h"
#include "resources/StringTable.h"

BlockPriceDialog* blockPriceDialog = nullptr;

namespace {

// acedGetFileD's flags: a file to create, an existing file.
constexpr int kFileToCreate = 1;
constexpr int kExistingFile = 2;
constexpr int kLabelGap = 4;  // pixels between "Current file:" and the file's name

// The template's font under the face the dialog shows its controls in.
QFont CourierFont() {
    QFont font = TemplateFont(kBomTemplate);
    // Made at run time: Qt's font cache keeps the name after the module is unloaded.
    font.setFamily(QString::fromLatin1("Courier"));
    return font;
}

QWidget* MakeControl(const ControlTemplate& control, QWidget* parent) {
    if (control.id == IDC_PRICE_MESSAGE) return new CStaticEx(parent);
    return nullptr;
}

// The message label's own colour is pure red; disabled (the blink's other phase) it greys.
void MakeRed(QWidget* label) {
    QPalette palette = label->palette();
    for (const auto group : {QPalette::Active, QPalette::Inactive})
        palette.setColor(group, QPalette::WindowText, QColor(255, 0, 0));
    label->setPalette(palette);
}

}  // namespace

BlockPriceDialog::BlockPriceDialog(QWidget* parent) : QDialog(parent) {
    blockPriceDialog = this;
    BuildDialog(*this, kBomTemplate, CourierFont(), MakeControl);
    BindControls();
    ArrangeFileLabels();
    OnInitDialog();
}

BlockPriceDialog::~BlockPriceDialog() {
    if (blockPriceDialog == this) blockPriceDialog = nullptr;
}

void BlockPriceDialog::BindControls() {
    auto button = [this](int id) { return qobject_cast<QPushButton*>(GetDlgItem(*this, id)); };
    m_moveDown = button(IDC_PRICE_MOVE_DOWN);
    m_moveUp = button(IDC_PRICE_MOVE_UP);
    m_deleteRow = button(IDC_PRICE_DELETE_ROW);
    m_insertRow = button(IDC_PRICE_INSERT_ROW);
    m_saveAs = button(IDC_PRICE_SAVE_AS);
    m_save = button(IDC_PRICE_SAVE);
    m_fileLabel = qobject_cast<QLabel*>(GetDlgItem(*this, IDC_PRICE_FILE_LABEL));
    m_messageLabel = qobject_cast<CStaticEx*>(GetDlgItem(*this, IDC_PRICE_MESSAGE));
    MakeRed(m_messageLabel);

    const std::pair<int, void (BlockPriceDialog::*)()> handlers[] = {
        {IDC_PRICE_INSERT_ROW, &BlockPriceDialog::OnInsertRow},
        {IDC_PRICE_DELETE_ROW, &BlockPriceDialog::OnDeleteRow},
        {IDC_PRICE_NEW, &BlockPriceDialog::OnNew},
        {IDC_PRICE_OPEN, &BlockPriceDialog::OnOpen},
        {IDC_PRICE_SAVE, &BlockPriceDialog::OnSave},
        {IDC_PRICE_SAVE_AS, &BlockPriceDialog::OnSaveAs},
        {IDC_PRICE_CLOSE, &BlockPriceDialog::OnClose},
        {IDC_PRICE_MOVE_UP, &BlockPriceDialog::OnMoveUp},
        {IDC_PRICE_MOVE_DOWN, &BlockPriceDialog::OnMoveDown},
    };
    for (const auto& [id, handler] : handlers) {
        if (QPushButton* control = button(id))
            connect(control, &QPushButton::clicked, this, [this, handler = handler] { (this->*handler)(); });
    }
}

// "Current file:" is wider in Courier than the template's font allows for: it keeps its text
// whole and the file's name starts after it, ending where the template ends it.
void BlockPriceDialog::ArrangeFileLabels() {
    QLabel* caption = nullptr;
    for (QLabel* label : findChildren<QLabel*>()) {
        if (label->objectName().isEmpty() && !label->text().isEmpty()) caption = label;
    }
    if (caption == nullptr || m_fileLabel == nullptr) return;
    const QFontMetrics metrics(caption->font());
    const int captionWidth = metrics.horizontalAdvance(caption->text());
    caption->resize(std::max(caption->width(), captionWidth), caption->height());
    const int left = std::max(m_fileLabel->x(), caption->x() + caption->width() + kLabelGap);
    const int right = m_fileLabel->geometry().right();
    m_fileLabel->setGeometry(left, m_fileLabel->y(), right - left + 1,
                             std::max(m_fileLabel->height(), metrics.height()));
    caption->resize(caption->width(), std::max(caption->height(), metrics.height()));
    // The message stands on the file name's line, over its end while it shows.
    m_messageLabel->setAlignment(Qt::AlignLeft | Qt::AlignBottom);
    m_messageLabel->raise();
}

void BlockPriceDialog::OnInitDialog() {
    m_skipUniqueness = 0;
    m_gridAttached = 0;
    m_listOpen = 0;
    for (QPushButton* button : {m_save, m_saveAs, m_insertRow, m_deleteRow, m_moveUp, m_moveDown})
        button->setEnabled(false);
    ReadSettings();
}

int BlockPriceDialog::DoModal() {
    exec();
    return IDCANCEL;
}

// --- Settings ----------------------------------------------------------------------------------

void BlockPriceDialog::ReadSettings() {
    const SettingsPaths paths = GetSettingsPaths(modulePath, kPriceListSettingsFile);
    (void)ReadColumnWidths(paths.widths, m_grid.ColumnWidths(), kPriceColumnCount);
    (void)ReadFileNameSetting(paths.fileName, priceListFileName);
}

void BlockPriceDialog::WriteSettings() {
    const SettingsPaths paths = GetSettingsPaths(modulePath, kPriceListSettingsFile);
    m_grid.StoreColumnWidths();
    // A settings file that cannot be written is skipped: the list itself is safe.
    (void)WriteColumnWidths(paths.widths, m_grid.ColumnWidths(), kPriceColumnCount);
    (void)WriteFileNameSetting(paths.fileName, priceListFileName);
}

// --- Helpers -----------------------------------------------------------------------------------

int BlockPriceDialog::AskToSave() {
    if (!m_grid.IsModified() || priceListFileName.empty() || m_grid.GetNumberRows() < 1)
        return IDNO;
    const std::wstring text = FormatModuleString(IDS_PRICE_SAVE_CHANGES, priceListFileName);
    return AfxMessageBox(text.c_str(), MB_YESNOCANCEL);
}

void BlockPriceDialog::AttachGridOnce() {
    if (m_gridAttached) return;
    m_grid.AttachGrid(this, IDC_PRICE_GRID);
    m_gridAttached = 1;
    m_insertRow->setEnabled(true);
    m_deleteRow->setEnabled(true);
}

void BlockPriceDialog::ShowFileName() {
    const QString name = QString::fromStdWString(priceListFileName);
    m_fileLabel->setToolTip(name);
    m_fileLabel->setText(
        m_fileLabel->fontMetrics().elidedText(name, Qt::ElideMiddle, m_fileLabel->width()));
}

// The host's file dialog; any answer but its cancel (-5001) is a chosen file.
bool BlockPriceDialog::ChooseFile(int titleId, const std::wstring& defaultName, int flags,
                                  std::wstring& path) {
    resbuf result;
    const int status =
        acedGetFileD(LoadModuleString(titleId).c_str(), defaultName.c_str(),
                     LoadModuleString(IDS_PRICE_EXTENSION).c_str(), flags, &result);
    if (status == RTERROR) return false;
    path = result.resval.rstring;
    return true;
}

// --- Handlers ----------------------------------------------------------------------------------

void BlockPriceDialog::OnNew() {
    const int answer = AskToSave();
    if (answer == IDCANCEL) return;
    if (answer == IDYES && !m_grid.SaveToFile(priceListFileName)) return;
    std::wstring path;
    if (!ChooseFile(IDS_PRICE_TITLE_NEW, L"", kFileToCreate, path)) return;
    priceListFileName = path;
    ShowFileName();
    // The rows of the list that was open go into the new file before the grid is emptied.
    if (!m_grid.SaveToFile(path)) return;
    AttachGridOnce();
    m_listOpen = 1;
    m_grid.Clear();
    m_grid.AddRowAtEnd();
    m_grid.SetModified(0);
    m_save->setEnabled(false);
    m_saveAs->setEnabled(true);
    m_moveUp->setEnabled(false);
    m_moveDown->setEnabled(false);
}

void BlockPriceDialog::OnOpen() {
    const int answer = AskToSave();
    if (answer == IDCANCEL) return;
    if (answer == IDYES && !m_grid.SaveToFile(priceListFileName)) return;
    std::wstring path;
    if (!ChooseFile(IDS_PRICE_TITLE_OPEN, priceListFileName, kExistingFile, path)) return;
    (void)OpenList(path);  // a list that cannot be read has been told by the host's alert
}

bool BlockPriceDialog::OpenList(const std::wstring& path) {
    AttachGridOnce();
    if (!m_grid.LoadFromFile(path)) return false;
    m_listOpen = 1;
    priceListFileName = path;
    ShowFileName();
    m_saveAs->setEnabled(true);
    m_grid.SetModified(0);
    m_save->setEnabled(false);
    if (m_grid.GetNumberRows() < 2) {
        m_moveUp->setEnabled(false);
        m_moveDown->setEnabled(false);
    }
    return true;
}

void BlockPriceDialog::OnSave() {
    if (!m_grid.IsModified() || priceListFileName.empty() || m_grid.GetNumberRows() < 1) return;
    if (!m_grid.Validate()) return;
    // A save that failed saved nothing: the list stays modified, so closing still asks.
    if (!m_grid.SaveToFile(priceListFileName)) return;
    ShowFileName();
    m_grid.SetModified(0);
    m_save->setEnabled(false);
}

void BlockPriceDialog::OnSaveAs() {
    if (!m_listOpen || !m_grid.Validate()) return;
    std::wstring path;
    if (!ChooseFile(IDS_PRICE_TITLE_SAVE_AS, priceListFileName, kFileToCreate, path)) return;
    priceListFileName = path;
    if (!m_grid.SaveToFile(path)) return;
    ShowFileName();
    m_grid.SetModified(0);
    m_save->setEnabled(false);
}

void BlockPriceDialog::OnInsertRow() {
    if (m_listOpen) m_grid.InsertRowAfter(m_grid.GetCurrentRow());
}

void BlockPriceDialog::OnDeleteRow() {
    if (m_listOpen && m_grid.GetCurrentRow() >= 0) {
        m_grid.DeleteRow(m_grid.GetCurrentRow());
        if (m_grid.GetCurrentRow() >= 0) m_grid.StartEdit(kPriceNameColumn, m_grid.GetCurrentRow(), 0);
    }
    m_skipUniqueness = 0;
    if (m_grid.GetNumberRows() < 2) {
        m_moveUp->setEnabled(false);
        m_moveDown->setEnabled(false);
    }
}

void BlockPriceDialog::OnMoveUp() { m_grid.MoveRowUp(); }
void BlockPriceDialog::OnMoveDown() { m_grid.MoveRowDown(); }

void BlockPriceDialog::OnClose() {
    if (!m_listOpen) {
        QDialog::reject();
        return;
    }
    const int answer = AskToSave();
    if (answer == IDCANCEL) return;
    if (answer == IDYES) {
        if (!m_grid.Validate()) return;
        // The host has shown why the file could not be written; the close goes on.
        (void)m_grid.SaveToFile(priceListFileName);
    }
    WriteSettings();
    QDialog::reject();
}

// Escape on a button and the window's close box end the dialog the way "&Close" does, so that
// no way out loses changes without asking.
void BlockPriceDialog::reject() { OnClose(); }
