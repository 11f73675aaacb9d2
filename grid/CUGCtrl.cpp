// The grid control: construction, creation, sheets, counts and sizes, and the layout pass.
#include "grid/CUGCtrl.h"

#include <QApplication>
#include <QLayout>
#include <QMenu>
#include <QPainter>
#include <QStyle>
#include <algorithm>

#include "grid/CUGArrowType.h"
#include "grid/CUGCheckBoxType.h"
#include "grid/CUGCnrBtn.h"
#include "grid/CUGDropListType.h"
#include "grid/CUGEdit.h"
#include "grid/CUGGrid.h"
#include "grid/CUGHScroll.h"
#include "grid/CUGLstBox.h"
#include "grid/CUGSideHdg.h"
#include "grid/CUGTab.h"
#include "grid/CUGTopHdg.h"
#include "grid/CUGVScroll.h"
#include "grid/UGLayout.h"
#include "grid/UGPalette.h"
#include "grid/UGSysColor.h"

namespace {

QRect ToQRect(const UGRect& r, const QPoint& origin) {
    return QRect(r.left + origin.x(), r.top + origin.y(), std::max(0, r.Width()),
                 std::max(0, r.Height()));
}

}  // namespace

CUGCtrl::CUGCtrl(QWidget* parent)
    : QWidget(parent),
      m_normalType(std::make_unique<CUGCellType>()),
      m_dropListType(std::make_unique<CUGDropListType>()),
      m_checkBoxType(std::make_unique<CUGCheckBoxType>()),
      m_arrowType(std::make_unique<CUGArrowType>()) {
    UGLoadSysColors(palette());
    m_GIList.push_back(std::make_unique<CUGGridInfo>());
    m_GI = m_GIList.front().get();
    m_GI->m_dataSource->SetSortCompare(this);
    CreateChildren();
    // The built-in types come first so that their numbers are fixed.
    AddCellType(m_normalType.get());
    AddCellType(m_dropListType.get());
    AddCellType(m_checkBoxType.get());
    AddCellType(m_arrowType.get());
}

CUGCtrl::~CUGCtrl() {
    // The cell area, the editor and the list box go first, while the control they report to is
    // still whole: a child that loses the focus as it goes still sends its notifications.
    m_editing = false;
    m_listBox->Close();
    delete m_listBox;
    setFocusProxy(nullptr);
    delete m_CUGGrid;
}

void CUGCtrl::CreateChildren() {
    m_CUGGrid = new CUGGrid(this);
    m_CUGTopHdg = new CUGTopHdg(this);
    m_CUGSideHdg = new CUGSideHdg(this);
    m_CUGCnrBtn = new CUGCnrBtn(this);
    m_CUGVScroll = new CUGVScroll(this);
    m_CUGHScroll = new CUGHScroll(this);
    m_CUGTab = new CUGTab(this);
    m_listBox = new CUGLstBox(this);
    m_menu = new QMenu(this);
    m_defEdit = new CUGEdit(m_CUGGrid);
    m_editCtrl = m_defEdit;
    setFocusProxy(m_CUGGrid);
    const int extent = style()->pixelMetric(QStyle::PM_ScrollBarExtent, nullptr, m_CUGVScroll);
    m_GI->m_vScrollWidth = extent;
    m_GI->m_hScrollHeight = extent;
}

void CUGCtrl::FinishCreation() {
    AdjustComponentSizes();
    OnGridSetup();
    OnSheetSetup(0);
    AdjustComponentSizes();
}

int CUGCtrl::CreateGrid(unsigned style, const QRect& rect, QWidget* parent, int id) {
    setParent(parent);
    setObjectName(QString::number(id));
    m_border = style & WS_BORDER;
    setContentsMargins(m_border ? QMargins(1, 1, 1, 1) : QMargins());
    setGeometry(rect);
    FinishCreation();
    if (style & WS_VISIBLE) show();
    return 1;
}

int CUGCtrl::AttachGrid(QWidget* parent, int controlId) {
    if (!parent) return 0;
    QWidget* placeholder = parent->findChild<QWidget*>(QString::number(controlId));
    if (!placeholder || placeholder == this) return 0;
    QWidget* holder = placeholder->parentWidget();
    setParent(holder);
    setGeometry(placeholder->geometry());
    if (QLayout* layout = holder->layout()) delete layout->replaceWidget(placeholder, this);
    QWidget::setTabOrder(placeholder, this);
    m_border = true;
    setContentsMargins(1, 1, 1, 1);
    setVisible(!placeholder->isHidden());
    placeholder->hide();
    placeholder->setObjectName(QString());
    placeholder->deleteLater();
    setObjectName(QString::number(controlId));
    FinishCreation();
    return 1;
}

// --- Counts and sizes ----------------------------------------------------------------------

int CUGCtrl::GetNumberCols() const { return m_GI->m_numberCols; }
long CUGCtrl::GetNumberRows() const { return m_GI->m_numberRows; }
int CUGCtrl::GetCurrentCol() const { return m_GI->m_currentCol; }
long CUGCtrl::GetCurrentRow() const { return m_GI->m_currentRow; }
int CUGCtrl::GetLeftCol() const { return m_GI->m_leftCol; }
long CUGCtrl::GetTopRow() const { return m_GI->m_topRow; }
int CUGCtrl::GetRightCol() const { return m_GI->m_rightCol; }
long CUGCtrl::GetBottomRow() const { return m_GI->m_bottomRow; }

int CUGCtrl::SetNumberCols(int cols, int redraw) {
    if (m_GI->SetColCount(cols) != UG_SUCCESS) return UG_ERROR;
    m_GI->ClampCols();
    Relayout();
    if (redraw) RedrawAll();
    return UG_SUCCESS;
}

int CUGCtrl::SetNumberRows(long rows, int redraw) {
    if (m_GI->SetRowCount(rows) != UG_SUCCESS) return UG_ERROR;
    m_GI->ClampRows();
    if (CellAreaHeight() > 0) m_GI->m_topRow = std::min(m_GI->m_topRow, m_GI->MaxTopRow(CellAreaHeight()));
    m_GI->ComputeVisibleRange(CellAreaWidth(), CellAreaHeight());
    FireScrollChanges();
    if (m_GI->m_currentRow < 0 && rows >= 1) GotoRow(0);
    Relayout();
    if (redraw) RedrawAll();
    return UG_SUCCESS;
}

int CUGCtrl::GetColWidth(int col) const {
    return (col >= 0 && col < m_GI->m_numberCols) ? m_GI->GetColWidth(col) : 1;
}

int CUGCtrl::SetColWidth(int col, int width) {
    if (col < 0 || col >= m_GI->m_numberCols) {
        SetSH_ColWidth(col, width);
        return UG_ERROR;
    }
    if (width < 0) return UG_ERROR;
    m_GI->m_colInfo[static_cast<std::size_t>(col)].width = width;
    Relayout();
    RedrawAll();
    return UG_SUCCESS;
}

int CUGCtrl::SetDefColWidth(int width) {
    if (width < 0) return UG_ERROR;
    m_GI->m_defColWidth = width;
    return UG_SUCCESS;
}

int CUGCtrl::SetSH_ColWidth(int col, int width) {
    if (col != -1) return UG_ERROR;
    return SetSideHdgWidth(width);
}

int CUGCtrl::GetSideHdgWidth() const { return m_GI->m_sideHdgWidth; }

int CUGCtrl::SetSideHdgWidth(int width) {
    if (width < 0 || width > UG_MAX_SIDEHDG_WIDTH) return UG_ERROR;
    m_GI->m_sideHdgWidth = width;
    AdjustComponentSizes();
    return UG_SUCCESS;
}

int CUGCtrl::GetTH_Height() const { return m_GI->m_topHdgHeight; }

int CUGCtrl::SetTH_Height(int height) {
    if (height < 0 || height > UG_MAX_ROW_HEIGHT) return UG_ERROR;
    m_GI->m_topHdgHeight = height;
    AdjustComponentSizes();
    return UG_SUCCESS;
}

int CUGCtrl::GetStandardRowHeight() const { return m_GI->m_defRowHeight; }

int CUGCtrl::SetStandardRowHeight(int height) {
    if (height < 1 || height > UG_MAX_ROW_HEIGHT) return UG_ERROR;
    m_GI->m_defRowHeight = height;
    std::fill(m_GI->m_rowHeights.begin(), m_GI->m_rowHeights.end(), height);
    Relayout();
    RedrawAll();
    return UG_SUCCESS;
}

int CUGCtrl::GetRowHeight(long row) const { return m_GI->GetRowHeight(row); }

int CUGCtrl::SetRowHeight(long row, int height) {
    if (m_GI->m_uniformRowHeightFlag || row < 0 || row >= m_GI->m_numberRows || height < 0 ||
        height > UG_MAX_ROW_HEIGHT)
        return UG_ERROR;
    m_GI->m_rowHeights[static_cast<std::size_t>(row)] = height;
    Relayout();
    RedrawAll();
    return UG_SUCCESS;
}

int CUGCtrl::AppendRow() {
    if (const int result = m_GI->m_dataSource->AppendRow(); result != 0) return result;
    return SetNumberRows(m_GI->m_numberRows + 1);
}

int CUGCtrl::InsertRow(long row) {
    if (row < 0 || row > m_GI->m_numberRows) return UG_ERROR;
    m_GI->m_dataSource->InsertRow(row);
    const int result = SetNumberRows(m_GI->m_numberRows + 1);
    KeepEditorOnItsRow(row, 1);
    return result;
}

int CUGCtrl::DeleteRow(long row) {
    if (row < 0 || row >= m_GI->m_numberRows) return UG_ERROR;
    m_GI->m_dataSource->DeleteRow(row);
    const int result = SetNumberRows(m_GI->m_numberRows - 1);
    KeepEditorOnItsRow(row, -1);
    return result;
}

// --- Sheets and tabs -----------------------------------------------------------------------

int CUGCtrl::SetNumberSheets(int sheets) {
    if (sheets < 1) return UG_ERROR;
    const int old = GetNumberSheets();
    if (m_currentSheet >= sheets) SetSheetNumber(sheets - 1);
    m_GIList.resize(static_cast<std::size_t>(sheets));
    CUGGridInfo* const current = m_GI;
    for (int sheet = old; sheet < sheets; ++sheet) {
        auto& info = m_GIList[static_cast<std::size_t>(sheet)];
        info = std::make_unique<CUGGridInfo>();
        info->m_dataSource->SetSortCompare(this);
        info->m_vScrollWidth = current->m_vScrollWidth;
        info->m_hScrollHeight = current->m_hScrollHeight;
        // Notifications always see the sheet they concern as the current one.
        m_GI = info.get();
        OnSheetSetup(sheet);
    }
    m_GI = current;
    return UG_SUCCESS;
}

int CUGCtrl::GetNumberSheets() const { return static_cast<int>(m_GIList.size()); }

int CUGCtrl::SetSheetNumber(int sheet) {
    if (sheet < 0 || sheet >= GetNumberSheets()) return UG_ERROR;
    if (m_editing) EditFinished(EditEnd::FocusLost);
    m_listBox->Close();
    m_currentSheet = sheet;
    m_GI = m_GIList[static_cast<std::size_t>(sheet)].get();
    AdjustComponentSizes();
    return UG_SUCCESS;
}

int CUGCtrl::GetSheetNumber() const { return m_currentSheet; }

int CUGCtrl::SetTabWidth(int width) {
    if (width < 0) return UG_ERROR;
    m_GI->m_tabWidth = width;
    AdjustComponentSizes();
    return UG_SUCCESS;
}

int CUGCtrl::AddTab(const QString& label, long id) { return m_CUGTab->AddTab(label, id); }
int CUGCtrl::DeleteTab(long id) { return m_CUGTab->DeleteTab(id); }

// --- Layout --------------------------------------------------------------------------------

int CUGCtrl::CellAreaWidth() const { return m_CUGGrid->width(); }
int CUGCtrl::CellAreaHeight() const { return m_CUGGrid->height(); }

void CUGCtrl::AdjustComponentSizes() { RunLayout(true); }
void CUGCtrl::Relayout() { RunLayout(false); }

void CUGCtrl::RunLayout(bool takeFocus) {
    QWidget* focus = QApplication::focusWidget();
    if (takeFocus && focus != m_CUGGrid && !m_CUGGrid->isAncestorOf(focus) && focus != m_listBox)
        m_CUGGrid->setFocus(Qt::OtherFocusReason);
    const QRect client = contentsRect();
    const UGLayout layout = UGComputeLayout(*m_GI, client.width(), client.height());
    const QPoint origin = client.topLeft();
    QRect grid = ToQRect(layout.grid, origin);
    QRect topHdg = ToQRect(layout.topHdg, origin);
    QRect sideHdg = ToQRect(layout.sideHdg, origin);
    QRect cnrBtn = ToQRect(layout.cnrBtn, origin);
    QRect vScroll = ToQRect(layout.vScroll, origin);
    QRect hScroll = ToQRect(layout.hScroll, origin);
    QRect tabs = ToQRect(layout.tab, origin);
    OnAdjustComponentSizes(&grid, &topHdg, &sideHdg, &cnrBtn, &vScroll, &hScroll, &tabs);

    auto place = [](QWidget* child, const QRect& rect) {
        child->setGeometry(rect);
        child->setVisible(!rect.isEmpty());
    };
    if (m_tabSizing) {
        place(m_CUGHScroll, hScroll);
        place(m_CUGTab, tabs);
        m_CUGHScroll->update();
        m_CUGTab->update();
        return;
    }
    place(m_CUGGrid, grid);
    place(m_CUGTopHdg, topHdg);
    place(m_CUGSideHdg, sideHdg);
    place(m_CUGCnrBtn, cnrBtn);
    place(m_CUGVScroll, vScroll);
    place(m_CUGHScroll, hScroll);
    place(m_CUGTab, tabs);
    m_GI->ComputeVisibleRange(grid.width(), grid.height());
    UpdateScrollBars();
    RedrawAll();
    m_GI->m_lastTopRow = m_GI->m_topRow;
    m_GI->m_lastLeftCol = m_GI->m_leftCol;
}

void CUGCtrl::UpdateScrollBars() {
    m_CUGVScroll->Update();
    m_CUGHScroll->Update();
}

void CUGCtrl::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    AdjustComponentSizes();
}

void CUGCtrl::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::PaletteChange) {
        UGLoadSysColors(palette());
        RedrawAll();
    }
}

void CUGCtrl::paintEvent(QPaintEvent*) {
    if (!m_border) return;
    QPainter dc(this);
    dc.setPen(UGToQColor(GetSysColor(COLOR_BTNSHADOW)));
    dc.drawRect(rect().adjusted(0, 0, -1, -1));
}
