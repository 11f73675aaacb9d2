// The grid control: cells and their defaults, quick operations, sorting, cell types, fonts, pens,
// bitmaps and the pop-up menu.
#include <QMenu>
#include <memory>

#include "grid/CUGCellFormat.h"
#include "grid/CUGCellType.h"
#include "grid/CUGCtrl.h"
#include "grid/CUGGrid.h"
#include "grid/UGPalette.h"

int CUGCtrl::GetCell(int col, long row, CUGCell* cell) {
    return m_GI->m_dataSource->GetCell(col, row, cell);
}

int CUGCtrl::SetCell(int col, long row, CUGCell* cell) {
    OnSetCell(col, row, cell);
    return m_GI->m_dataSource->SetCell(col, row, cell);
}

int CUGCtrl::GetCellIndirect(int col, long row, CUGCell* cell) {
    if (col < 0 || row < 0) {
        cell->CopyInfoFrom(m_GI->m_hdgDefaults);
    } else {
        cell->CopyInfoFrom(m_GI->m_gridDefaults);
        if (col < m_GI->m_numberCols) {
            if (const auto& defaults = m_GI->m_colInfo[static_cast<std::size_t>(col)].defaults)
                cell->AddInfoFrom(*defaults);
        }
    }
    if (m_GI->m_dataSource->GetCell(col, row, &m_stored) == UG_SUCCESS) cell->AddInfoFrom(m_stored);
    if (CUGCellFormat* format = cell->GetFormatClass()) format->ApplyDisplayFormat(cell);
    return UG_SUCCESS;
}

int CUGCtrl::QuickGetText(int col, long row, std::wstring* text) {
    m_cell.ClearAll();
    GetCell(col, row, &m_cell);
    const wchar_t* value = m_cell.GetText();
    text->assign(value ? value : L"");
    return UG_SUCCESS;
}

const wchar_t* CUGCtrl::QuickGetText(int col, long row) {
    m_cell.ClearAll();
    GetCell(col, row, &m_cell);
    return m_cell.GetText();
}

// Every quick setter: read the cell into the scratch cell, change one property, write it back.
template <typename Change>
int CUGCtrl::QuickModify(int col, long row, Change change) {
    m_cell.ClearAll();
    GetCell(col, row, &m_cell);
    change(m_cell);
    return SetCell(col, row, &m_cell);
}

int CUGCtrl::QuickSetText(int col, long row, std::wstring_view text) {
    return QuickModify(col, row, [&](CUGCell& cell) { cell.SetText(text); });
}

int CUGCtrl::QuickSetLabelText(int col, long row, std::wstring_view text) {
    return QuickModify(col, row, [&](CUGCell& cell) { cell.SetLabelText(text); });
}

int CUGCtrl::QuickSetCellType(int col, long row, int index) {
    return QuickModify(col, row, [&](CUGCell& cell) { cell.SetCellType(index); });
}

int CUGCtrl::QuickSetCellTypeEx(int col, long row, int style) {
    return QuickModify(col, row, [&](CUGCell& cell) { cell.SetCellTypeEx(style); });
}

int CUGCtrl::QuickSetAlignment(int col, long row, short alignment) {
    return QuickModify(col, row, [&](CUGCell& cell) { cell.SetAlignment(alignment); });
}

int CUGCtrl::SetGridDefault(const CUGCell* cell) { return m_GI->m_gridDefaults.CopyInfoFrom(*cell); }
int CUGCtrl::GetGridDefault(CUGCell* cell) const { return cell->CopyInfoFrom(m_GI->m_gridDefaults); }
int CUGCtrl::SetHeadingDefault(const CUGCell* cell) { return m_GI->m_hdgDefaults.CopyInfoFrom(*cell); }
int CUGCtrl::GetHeadingDefault(CUGCell* cell) const { return cell->CopyInfoFrom(m_GI->m_hdgDefaults); }

int CUGCtrl::SetColDefault(int col, const CUGCell* cell) {
    if (col < 0 || col >= m_GI->m_numberCols || !cell) return UG_ERROR;
    m_GI->m_colInfo[static_cast<std::size_t>(col)].defaults = std::make_unique<CUGCell>(*cell);
    return UG_SUCCESS;
}

int CUGCtrl::GetColDefault(int col, CUGCell* cell) const {
    if (col < 0 || col >= m_GI->m_numberCols) return UG_ERROR;
    const auto& defaults = m_GI->m_colInfo[static_cast<std::size_t>(col)].defaults;
    if (defaults)
        cell->CopyInfoFrom(*defaults);
    else
        cell->ClearAll();
    return UG_SUCCESS;
}

CUGDataSource* CUGCtrl::GetDataSource() const { return m_GI->m_dataSource; }

int CUGCtrl::SortBy(int col, int direction) {
    if (direction != 1 && direction != UG_SORT_DESCENDING) return UG_ERROR;
    const int result = m_GI->m_dataSource->SortBy(col, direction);
    RedrawAll();
    return result;
}

// --- Cell types, fonts, pens, bitmaps ------------------------------------------------------

int CUGCtrl::AddCellType(CUGCellType* type) {
    if (!type) return -1;
    type->m_ctrl = this;
    type->m_ID = static_cast<int>(m_cellTypeList.size());
    m_cellTypeList.push_back(type);
    return type->m_ID;
}

CUGCellType* CUGCtrl::GetCellType(int index) const {
    if (index < 0 || index >= static_cast<int>(m_cellTypeList.size())) return m_cellTypeList.front();
    return m_cellTypeList[static_cast<std::size_t>(index)];
}

UGFont CUGCtrl::AddFont(const QFont& font) {
    m_fonts.push_back(font);
    return UGFont{static_cast<std::int32_t>(m_fonts.size())};
}

const QFont& CUGCtrl::GetFont(UGFont handle) const {
    const auto index = static_cast<std::size_t>(handle);
    if (index > 0 && index <= m_fonts.size()) return m_fonts[index - 1];
    const auto def = static_cast<std::size_t>(m_defFont);
    return (def > 0 && def <= m_fonts.size()) ? m_fonts[def - 1] : font();
}

int CUGCtrl::SetDefFont(UGFont handle) {
    const auto index = static_cast<std::size_t>(handle);
    if (index > m_fonts.size()) return UG_ERROR;
    m_defFont = handle;
    RedrawAll();
    return UG_SUCCESS;
}

UGPen CUGCtrl::AddPen(const QPen& pen) {
    m_pens.push_back(pen);
    return UGPen{static_cast<std::int32_t>(m_pens.size())};
}

QPen CUGCtrl::GetPen(UGPen handle) const {
    const auto index = static_cast<std::size_t>(handle);
    if (index > 0 && index <= m_pens.size()) return m_pens[index - 1];
    return QPen(UGToQColor(m_GI->m_gridLineColor), 1);
}

UGBitmap CUGCtrl::AddBitmap(const QPixmap& bitmap) {
    m_bitmaps.push_back(bitmap);
    return UGBitmap{static_cast<std::int32_t>(m_bitmaps.size())};
}

const QPixmap* CUGCtrl::GetBitmap(UGBitmap handle) const {
    const auto index = static_cast<std::size_t>(handle);
    return (index > 0 && index <= m_bitmaps.size()) ? &m_bitmaps[index - 1] : nullptr;
}

// --- Pop-up menu ---------------------------------------------------------------------------

int CUGCtrl::AddMenuItem(unsigned id, const QString& text) {
    QAction* action = m_menu->addAction(text);
    connect(action, &QAction::triggered, this, [this, id] { OnCommand(id); });
    return UG_SUCCESS;
}

int CUGCtrl::EmptyMenu() {
    m_menu->clear();
    return UG_SUCCESS;
}

int CUGCtrl::EnableMenu(int flag) {
    m_menuEnabled = flag ? 1 : 0;
    return UG_SUCCESS;
}

int CUGCtrl::StartMenu(int col, long row, int section, const QPoint& globalPos) {
    if (!m_menuEnabled || m_menu->isEmpty()) return UG_ERROR;
    if (!OnMenuStart(col, row, section)) return UG_REFUSED;
    m_menuCol = col;
    m_menuRow = row;
    m_menuSection = section;
    m_menu->popup(globalPos);
    return UG_SUCCESS;
}

int CUGCtrl::OnCommand(unsigned id) {
    if (id >= UG_MENU_FIRST_ID) OnMenuCommand(m_menuCol, m_menuRow, m_menuSection, static_cast<int>(id & 0xFFFF));
    return UG_SUCCESS;
}
