// The price-list grid: set-up, rows, validation, uniqueness, sorting, and the file's rows.
#include "pricelist/MyCug.h"

#include <QFontMetrics>
#include <cmath>

#include "grid/CUGGrid.h"
#include "grid/UGKeys.h"
#include "grid/UGSysColor.h"
#include "host/api/acapwindow.h"
#include "pricelist/BlockPriceDialog.h"
#include "pricelist/CStaticEx.h"
#include "resources/BomTemplate.h"
#include "resources/DialogBuilder.h"
#include "resources/StringTable.h"
#include "text/CaseRules.h"

namespace {

// The drop button sits in the cell's rightmost pixels; a click there is not an edit.
constexpr int kDropButtonZone = 20;
constexpr int kMessageBlinkPeriod = 200;

void EnableDialogItem(int id, bool enable) {
    if (blockPriceDialog != nullptr) EnableDlgItem(*blockPriceDialog, id, enable);
}

std::wstring TextOf(const CUGCell* cell) {
    const wchar_t* text = cell->GetText();
    return text ? std::wstring(text) : std::wstring();
}

// A price as the run-time's conversion reads it (text that is no number is 0), which the cell
// keeps once read, so a sort parses each price once. A "nan" counts as 0 too: it would otherwise
// be unordered against every price.
double PriceValue(const CUGCell* cell) {
    const double value = cell->GetNumber();
    return std::isnan(value) ? 0.0 : value;
}

int Sign(double a, double b) { return a < b ? -1 : (a > b ? 1 : 0); }

// Option `index` of a drop list's options, one a line.
std::wstring OptionAt(const std::wstring& options, long index) {
    std::size_t start = 0;
    for (long i = 0; i < index; ++i) {
        start = options.find(L'\n', start);
        if (start == std::wstring::npos) return {};
        ++start;
    }
    const std::size_t end = options.find(L'\n', start);
    return options.substr(start, end == std::wstring::npos ? std::wstring::npos : end - start);
}

}  // namespace

MyCug::MyCug(QWidget* parent) : CUGCtrl(parent) {}

// --- Set-up ----------------------------------------------------------------------------------

void MyCug::OnGridSetup() {
    m_sortEnabled = 1;
    m_modified = 0;
    EnableDialogItem(IDC_PRICE_SAVE, false);

    CUGCell defaults;
    GetGridDefault(&defaults);
    defaults.SetBackColor(GetSysColor(COLOR_WINDOW));
    SetGridDefault(&defaults);

    SetSideHdgWidth(0);
    SetStandardRowHeight(QFontMetrics(font()).height() + 3);
    if (m_columnWidths[0] == -1) {
        const int w = (contentsRect().width() - GetSideHdgWidth()) / 8;
        m_columnWidths[0] = 3 * w;
        m_columnWidths[1] = w;
        m_columnWidths[2] = 4 * w;
    }

    m_editor = new CUGMaskedEdit(GetGridWindow());
    m_editor->setObjectName(QString::number(kPriceEditorId));

    SetNumberCols(kPriceColumnCount);
    for (int col = 0; col < kPriceColumnCount; ++col) SetColWidth(col, m_columnWidths[col]);
    // Titles stand at the left, over the left-aligned texts of their columns.
    CUGCell heading;
    GetHeadingDefault(&heading);
    heading.SetAlignment(UG_ALIGNVCENTER);
    SetHeadingDefault(&heading);
    QuickSetText(kPriceNameColumn, -1, LoadModuleString(IDS_PRICE_COLUMN_NAME));
    QuickSetText(kPricePriceColumn, -1, LoadModuleString(IDS_PRICE_COLUMN_PRICE));
    QuickSetText(kPriceDescriptionColumn, -1, LoadModuleString(IDS_PRICE_COLUMN_DESCRIPTION));

    m_sortArrowIndex = AddCellType(&m_sortArrow);
    QuickSetCellType(kPriceNameColumn, -1, m_sortArrowIndex);
    QuickSetCellTypeEx(kPriceNameColumn, -1, UGCT_SORTARROWUP);
    // The whole current row is drawn highlighted: it is the row the row buttons act on.
    SetHighlightRow(1);

    m_blockNames.Load();
    m_blockNames.Sort();
    m_blockNames.UnmarkedNames(m_choiceList);
}

// --- Rows ------------------------------------------------------------------------------------

void MyCug::RebuildChoiceList() {
    m_blockNames.ClearMarks();
    const long rows = GetNumberRows();
    for (long row = 0; row < rows; ++row) {
        const wchar_t* name = QuickGetText(kPriceNameColumn, row);
        if (name != nullptr && *name != L'\0') m_blockNames.SetMark(name, 1);
    }
    m_blockNames.UnmarkedNames(m_choiceList);
}

void MyCug::InitRow(long row) {
    CUGCell cell;
    cell.SetCellType(UGCT_DROPLIST);
    cell.SetText(L"");
    SetCell(kPriceNameColumn, row, &cell);
    RebuildChoiceList();
    QuickSetLabelText(kPriceNameColumn, row, m_choiceList);
    QuickSetText(kPricePriceColumn, row, L"0");
    QuickSetText(kPriceDescriptionColumn, row, L"");
    SetHighlightRow(1);
}

void MyCug::AddRowAtEnd() {
    AppendRow();
    const long row = GetNumberRows() - 1;
    InitRow(row);
    StartEdit(kPriceNameColumn, row, 0);
}

void MyCug::InsertRowAfter(long row) {
    const long rows = GetNumberRows();
    if (row >= 0 && row < rows - 1) {
        InsertRow(row + 1);
        InitRow(row + 1);
        StartEdit(kPriceNameColumn, row + 1, 0);
    } else {
        AddRowAtEnd();
    }
    RedrawAll();
}

void MyCug::Clear() {
    m_modified = 0;
    EnableDialogItem(IDC_PRICE_SAVE, false);
    // Row by row from the last, as deleting each would, but with one recount at the end.
    for (long row = GetNumberRows(); row >= 0; --row) GetDataSource()->DeleteRow(row);
    SetNumberRows(0);
}

bool MyCug::MoveRowDown() { return MoveRow(1); }
bool MyCug::MoveRowUp() { return MoveRow(-1); }

bool MyCug::MoveRow(int direction) {
    const long row = GetCurrentRow();
    const long other = row + direction;
    const long rows = GetNumberRows();
    if (row < 0 || other < 0 || row >= rows || other >= rows) return false;
    for (int col = 0; col < GetNumberCols(); ++col) {
        std::wstring a;
        std::wstring b;
        QuickGetText(col, row, &a);
        QuickGetText(col, other, &b);
        QuickSetText(col, row, b);
        QuickSetText(col, other, a);
    }
    RedrawAll();
    MoveCurrentRow(direction > 0 ? 1 : 0);
    StartEdit(GetCurrentCol(), GetCurrentRow(), 0);
    RedrawAll();
    return true;
}

// --- Names and validation ----------------------------------------------------------------------

bool MyCug::IsNameUnique(const std::wstring& name, long row) {
    const long rows = GetNumberRows();
    for (long other = 0; other < rows; ++other) {
        if (other == row) continue;
        const wchar_t* text = QuickGetText(kPriceNameColumn, other);
        if (CompareNoCase(name, text ? text : L"") == 0) return false;
    }
    return true;
}

bool MyCug::Reject(int col, long row, int messageId) {
    if (blockPriceDialog != nullptr) {
        blockPriceDialog->MessageLabel()->ShowMessage(0, kMessageBlinkPeriod,
                                                      LoadModuleString(messageId));
    }
    Beep(1000, 50);
    GotoCell(col, row);
    return false;
}

bool MyCug::Validate() {
    const long rows = GetNumberRows();
    for (long row = 0; row < rows; ++row) {
        std::wstring name;
        std::wstring price;
        QuickGetText(kPriceNameColumn, row, &name);
        QuickGetText(kPricePriceColumn, row, &price);
        if (name.empty() && price.empty()) continue;
        if (name.empty()) return Reject(kPriceNameColumn, row, IDS_PRICE_NAME_ABSENT);
        if (price.empty()) return Reject(kPricePriceColumn, row, IDS_PRICE_PRICE_ABSENT);
    }
    return true;
}

void MyCug::StoreColumnWidths() {
    for (int col = 0; col < kPriceColumnCount; ++col) m_columnWidths[col] = GetColWidth(col);
}

// --- Files -------------------------------------------------------------------------------------

std::vector<PriceListRow> MyCug::Rows() {
    const long count = GetNumberRows();
    std::vector<PriceListRow> rows(static_cast<std::size_t>(count));
    for (long row = 0; row < count; ++row) {
        PriceListRow& out = rows[static_cast<std::size_t>(row)];
        QuickGetText(kPriceNameColumn, row, &out.name);
        QuickGetText(kPricePriceColumn, row, &out.price);
        QuickGetText(kPriceDescriptionColumn, row, &out.description);
    }
    return rows;
}

std::wstring MyCug::ListOption(int col, long row, long index) {
    CUGCell cell;
    GetCellIndirect(col, row, &cell);
    const wchar_t* options = cell.GetLabelText();
    return OptionAt(options ? options : L"", index);
}

void MyCug::SetRows(const std::vector<PriceListRow>& rows) {
    // The rows are counted once and then filled: appending them one at a time would lay the grid
    // out again for every row.
    SetNumberRows(static_cast<long>(rows.size()), 0);
    CUGCell cell;
    for (std::size_t i = 0; i < rows.size(); ++i) {
        const long row = static_cast<long>(i);
        cell.ClearAll();
        cell.SetText(rows[i].name);
        cell.SetCellType(UGCT_DROPLIST);
        SetCell(kPriceNameColumn, row, &cell);
        cell.ClearAll();
        cell.SetText(rows[i].price);
        SetCell(kPricePriceColumn, row, &cell);
        cell.ClearAll();
        cell.SetText(rows[i].description);
        SetCell(kPriceDescriptionColumn, row, &cell);
    }
    RedrawAll();
}

bool MyCug::LoadFromFile(const std::wstring& path) {
    std::vector<PriceListRow> rows;
    TextFormat format;
    if (!LoadPriceListFile(path, rows, format)) return false;
    Clear();
    m_format = format;
    SetRows(rows);
    return true;
}

bool MyCug::SaveToFile(const std::wstring& path) {
    return SavePriceListFile(path, Rows(), m_format);
}

// --- Notifications -----------------------------------------------------------------------------

void MyCug::OnRowChange(long, long newrow) {
    const long rows = GetNumberRows();
    if (newrow <= 0) {
        EnableDialogItem(IDC_PRICE_MOVE_UP, false);
        EnableDialogItem(IDC_PRICE_MOVE_DOWN, true);
    } else if (newrow == rows - 1) {
        EnableDialogItem(IDC_PRICE_MOVE_UP, true);
        EnableDialogItem(IDC_PRICE_MOVE_DOWN, false);
    } else {
        EnableDialogItem(IDC_PRICE_MOVE_UP, true);
        EnableDialogItem(IDC_PRICE_MOVE_DOWN, true);
    }
}

void MyCug::OnCellChange(int, int, long, long) { RedrawAll(); }

void MyCug::OnCellLeftClick(int col, long row, int updn, const QRect& rect, const QPoint& point,
                            int processed) {
    if (blockPriceDialog != nullptr) blockPriceDialog->MessageLabel()->StopMessage();
    const bool valid = col >= 0 && col < GetNumberCols() && row >= 0 && row < GetNumberRows();
    if (valid && updn) {
        if (col == kPriceNameColumn && m_nameClickLock) return;
        // A click the drop list took for its button opens the list, whatever the button's width.
        if (!processed && rect.adjusted(0, 0, -kDropButtonZone, 0).contains(point)) StartEdit();
    }
    RedrawAll();
}

void MyCug::OnTopHdgLeftClick(int col, long, int updn, const QRect&, const QPoint&, int) {
    if (!updn || !m_sortEnabled || col < 0 || col >= GetNumberCols()) return;
    QuickSetCellType(m_sortCol, -1, UGCT_NORMAL);
    if (col != m_sortCol) {
        m_sortCol = col;
        m_sortAscending = 1;
    } else {
        m_sortAscending = !m_sortAscending;
    }
    SortBy(col, m_sortAscending ? 1 : UG_SORT_DESCENDING);
    QuickSetCellType(col, -1, m_sortArrowIndex);
    QuickSetCellTypeEx(col, -1, m_sortAscending ? UGCT_SORTARROWUP : UGCT_SORTARROWDOWN);
    RedrawAll();
}

void MyCug::OnGridKeyDown(int* vcKey, int) {
    if (*vcKey == VK_ESCAPE && blockPriceDialog != nullptr) blockPriceDialog->OnClose();
}

void MyCug::OnGridCharDown(int* vcKey, int processed) {
    // Typing a name starts its edit. A key the drop list took, and control keys such as Escape
    // and Enter, type nothing: they must not open an empty editor over the name.
    if (processed || GetCurrentCol() != kPriceNameColumn) return;
    if (*vcKey < 32 && *vcKey != VK_BACK) return;
    StartEdit(*vcKey);
}

int MyCug::OnCellTypeNotify(long, int col, long row, long msg, long param) {
    // A name chosen from the drop list is a finished edit of the name cell like a typed one.
    if (msg != UGCT_DROPLISTSELECT) return 1;
    return AcceptNewText(col, row, ListOption(col, row, param)) ? 1 : 0;
}

int MyCug::OnEditStart(int, long, CUGEdit** edit) {
    if (m_editor != nullptr) *edit = m_editor;
    return 1;
}

int MyCug::OnEditFinish(int col, long row, CUGEdit*, const wchar_t* string, int) {
    return AcceptNewText(col, row, string ? string : L"") ? 1 : 0;
}

bool MyCug::AcceptNewText(int col, long row, const std::wstring& text) {
    m_sortEnabled = 1;
    m_modified = 1;
    EnableDialogItem(IDC_PRICE_SAVE, true);
    const bool skip = blockPriceDialog != nullptr && blockPriceDialog->SkipUniqueness() != 0;
    if (skip || col != kPriceNameColumn || text.empty() || IsNameUnique(text, row)) return true;
    AfxMessageBox(FormatModuleString(IDS_PRICE_NAME_NOT_UNIQUE, text).c_str(), MB_OK);
    StartEdit(kPriceNameColumn, row, 0);
    // Asked from a finishing edit, the grid keeps that edit open instead: it starts again on the
    // name as it was, which the refused one did not change.
    if (IsEditing() && GetEditClass() == m_editor) {
        std::wstring name;
        QuickGetText(kPriceNameColumn, row, &name);
        m_editor->setText(QString::fromStdWString(name));
        m_editor->selectAll();
    }
    m_sortEnabled = 0;
    return false;
}

// Descending swaps the cells, so the results for empty texts change sign to keep them last.
int MyCug::OnSortCompare(const CUGCell* cell1, const CUGCell* cell2, int flags) {
    const bool descending = flags & UG_SORT_DESCENDING;
    if (descending) std::swap(cell1, cell2);
    if (cell1 == nullptr) return cell2 != nullptr ? -1 : 0;
    if (cell2 == nullptr) return 1;
    const bool empty1 = cell1->GetTextLength() == 0;
    const bool empty2 = cell2->GetTextLength() == 0;
    if (empty1 || empty2) {
        if (empty1 && empty2) return 0;
        const int emptyLast = descending ? -1 : 1;
        return empty1 ? emptyLast : -emptyLast;
    }
    // Texts equal ignoring case read as the same number, so prices need no text comparison.
    if (m_sortCol == kPricePriceColumn)
        return Sign(PriceValue(cell1), PriceValue(cell2));
    switch (cell1->GetDataType()) {
        case UGCELLDATA_NUMBER:
        case UGCELLDATA_BOOL:
        case UGCELLDATA_CURRENCY:
            if (CompareNoCase(TextOf(cell1), TextOf(cell2)) == 0) return 0;
            return Sign(cell1->GetNumber(), cell2->GetNumber());
        default:
            return CompareNoCase(cell1->GetText(), cell2->GetText());
    }
}
