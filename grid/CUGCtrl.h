// The spreadsheet-like grid control: a widget with a cell area, two headings, a corner button, two
// scroll bars and sheet tabs, which shows the cells of a data source through numbered cell types
// and tells its owner about everything that happens through overridable notifications.
//
// Use: derive from CUGCtrl, override the notifications you need (each is a public virtual member,
// in the order of the control's table, with the default stated beside it), then call CreateGrid or
// AttachGrid; both end by calling OnGridSetup and OnSheetSetup(0), where the subclass sets its
// columns, rows, widths and cell types. Keys arrive as virtual-key codes (grid/UGKeys.h: 13 Enter,
// 27 Escape, 40 Down ...). Operations return 0 on success, 1 for a bad argument, 2 where a
// notification refused; -1 comes from a data source that does not support an operation.
#pragma once

#include <QFont>
#include <QPen>
#include <QPixmap>
#include <QWidget>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "grid/CUGCell.h"
#include "grid/CUGGridInfo.h"
#include "grid/CUGSortCompare.h"
#include "grid/UGDefs.h"

class QMenu;
class QMimeData;
class CUGArrowType;
class CUGCellType;
class CUGCheckBoxType;
class CUGCnrBtn;
class CUGDropListType;
class CUGEdit;
class CUGGrid;
class CUGHScroll;
class CUGLstBox;
class CUGSideHdg;
class CUGTab;
class CUGTopHdg;
class CUGVScroll;

// Window styles CreateGrid understands.
inline constexpr unsigned WS_VISIBLE = 0x10000000;
inline constexpr unsigned WS_BORDER = 0x00800000;
inline constexpr unsigned WS_TABSTOP = 0x00010000;
inline constexpr unsigned WS_CLIPCHILDREN = 0x02000000;

// Numbers of the built-in cell types; the first type a user registers gets number 4.
inline constexpr int UGCT_NORMAL = 0;
inline constexpr int UGCT_DROPLIST = 1;
inline constexpr int UGCT_CHECKBOX = 2;
inline constexpr int UGCT_ARROW = 3;

// The first command id of the pop-up menu; smaller ids never reach OnMenuCommand.
inline constexpr unsigned UG_MENU_FIRST_ID = 1000;

class CUGCtrl : public QWidget, public CUGSortCompare {
    Q_OBJECT

public:
    explicit CUGCtrl(QWidget* parent = nullptr);
    ~CUGCtrl() override;
    CUGCtrl(const CUGCtrl&) = delete;
    CUGCtrl& operator=(const CUGCtrl&) = delete;

    // --- Creation ---------------------------------------------------------------------------
    // Places the control in `parent` at `rect` (WS_VISIBLE shows it, WS_BORDER draws a frame),
    // names it after `id` and runs the set-up notifications. 1.
    int CreateGrid(unsigned style, const QRect& rect, QWidget* parent, int id);
    // Takes the place of a placeholder widget of a dialog: the child of `parent` (searched
    // recursively) whose objectName() is the decimal control id, e.g. "216". The control gets the
    // placeholder's parent, geometry, layout slot, tab order, visibility and objectName, with a
    // frame and keyboard focus; the placeholder is hidden and deleted. Then the set-up
    // notifications run. 0 when there is no such placeholder, else 1.
    int AttachGrid(QWidget* parent, int controlId);

    // --- Counts, sizes and sheets -----------------------------------------------------------
    int GetNumberCols() const;
    long GetNumberRows() const;
    int GetCurrentCol() const;
    long GetCurrentRow() const;
    int GetLeftCol() const;
    long GetTopRow() const;
    int GetRightCol() const;   // one past the last fully visible column
    long GetBottomRow() const;  // one past the last fully visible row
    int SetNumberCols(int cols, int redraw = 1);  // 0..32000
    // From 64001 rows on, every row has the standard height, for good.
    int SetNumberRows(long rows, int redraw = 1);
    int GetColWidth(int col) const;  // 1 for a column out of range
    // Columns 0..n-1 return 0; any other column goes to the side-heading column setter and the
    // result is 1 even when that applied the width.
    int SetColWidth(int col, int width);
    int SetDefColWidth(int width);
    int SetSH_ColWidth(int col, int width);  // the side heading has one column, -1
    int GetSideHdgWidth() const;
    int SetSideHdgWidth(int width);  // 0..1024
    int GetTH_Height() const;
    int SetTH_Height(int height);  // 0..1024
    int GetStandardRowHeight() const;
    int SetStandardRowHeight(int height);  // 1..1024; every row takes it
    int GetRowHeight(long row) const;
    int SetRowHeight(long row, int height);  // 1 in uniform mode
    int AppendRow();
    int InsertRow(long row);
    int DeleteRow(long row);
    int SetNumberSheets(int sheets);  // runs OnSheetSetup for every new sheet
    int GetNumberSheets() const;
    int SetSheetNumber(int sheet);
    int GetSheetNumber() const;
    int SetTabWidth(int width);
    int AddTab(const QString& label, long id);
    int DeleteTab(long id);

    // --- Moving and scrolling ---------------------------------------------------------------
    int GotoCell(int col, long row);
    int GotoRow(long row);
    int GotoCol(int col);
    // 0 up, 1 down, 2 page up, 3 page down, 4 first row, 5 last row; above 5 nothing (0).
    int MoveCurrentRow(int code);
    int SetTopRow(long row);
    int SetLeftCol(int col);

    // --- Cells ------------------------------------------------------------------------------
    int GetCell(int col, long row, CUGCell* cell);
    int SetCell(int col, long row, CUGCell* cell);  // OnSetCell first
    // The cell as it is drawn: the stored cell over the column's and the sheet's defaults.
    int GetCellIndirect(int col, long row, CUGCell* cell);
    int QuickGetText(int col, long row, std::wstring* text);
    const wchar_t* QuickGetText(int col, long row);  // null when the cell has no text
    int QuickSetText(int col, long row, std::wstring_view text);
    int QuickSetLabelText(int col, long row, std::wstring_view text);
    int QuickSetCellType(int col, long row, int index);
    int QuickSetCellTypeEx(int col, long row, int style);
    int QuickSetAlignment(int col, long row, short alignment);
    int SetGridDefault(const CUGCell* cell);
    int GetGridDefault(CUGCell* cell) const;
    int SetHeadingDefault(const CUGCell* cell);
    int GetHeadingDefault(CUGCell* cell) const;
    int SetColDefault(int col, const CUGCell* cell);
    int GetColDefault(int col, CUGCell* cell) const;
    CUGDataSource* GetDataSource() const;
    int SortBy(int col, int direction = 1);  // 1 ascending, 2 descending

    // --- Cell types, fonts, pens, bitmaps ---------------------------------------------------
    // The type stays owned by the caller and must outlive the control. -1 for null.
    int AddCellType(CUGCellType* type);
    CUGCellType* GetCellType(int index) const;  // type 0 for an unknown number
    UGFont AddFont(const QFont& font);
    const QFont& GetFont(UGFont handle) const;  // the default font for handle 0
    int SetDefFont(UGFont handle);
    UGPen AddPen(const QPen& pen);
    QPen GetPen(UGPen handle) const;  // the grid-line pen for handle 0
    UGBitmap AddBitmap(const QPixmap& bitmap);
    const QPixmap* GetBitmap(UGBitmap handle) const;

    // --- Editing ----------------------------------------------------------------------------
    // Edits the current (or given) cell; a key other than 0 is the editor's first keystroke.
    int StartEdit();
    int StartEdit(int key);
    int StartEdit(int col, long row, int key);
    bool IsEditing() const { return m_editing; }
    CUGEdit* GetEditClass() const { return m_editCtrl; }

    // --- Drawing, selection, options --------------------------------------------------------
    int RedrawAll();
    int RedrawCell(int col, long row);
    int RedrawRow(long row);
    int EnableUpdate(int flag);
    int Select(int col, long row);
    int SelectRow(long row);
    int ClearSelections();
    int IsSelected(int col, long row) const;
    int SetMultiSelectMode(int mode);
    int SetHighlightRow(int flag);
    int SetUserSizingMode(int flag);
    int UseHints(int flag);
    bool IsHintsEnabled() const { return m_useHints != 0; }
    int SetGridLineColor(COLORREF color);

    // --- Pop-up menu ------------------------------------------------------------------------
    int AddMenuItem(unsigned id, const QString& text);
    int EmptyMenu();
    int EnableMenu(int flag);
    QMenu* GetPopupMenu() const { return m_menu; }
    // Shows the pop-up menu for a cell at a global position: 2 when OnMenuStart refuses, 1 when
    // the menu is disabled or empty.
    int StartMenu(int col, long row, int section, const QPoint& globalPos);
    // A command: ids from 1000 on are pop-up menu items and go to OnMenuCommand.
    virtual int OnCommand(unsigned id);

    // --- Child windows, list box, input state -----------------------------------------------
    CUGGrid* GetGridWindow() const { return m_CUGGrid; }
    CUGTopHdg* GetTopHdgWindow() const { return m_CUGTopHdg; }
    CUGSideHdg* GetSideHdgWindow() const { return m_CUGSideHdg; }
    CUGCnrBtn* GetCnrBtnWindow() const { return m_CUGCnrBtn; }
    CUGVScroll* GetVScrollWindow() const { return m_CUGVScroll; }
    CUGHScroll* GetHScrollWindow() const { return m_CUGHScroll; }
    CUGTab* GetTabWindow() const { return m_CUGTab; }
    CUGLstBox* GetListBox() const { return m_listBox; }
    // The rectangle of a cell in cell-area coordinates (the grid line right and below excluded).
    QRect GetCellRect(int col, long row) const;
    // The modifier keys of the input being handled, as the cell types need them.
    Qt::KeyboardModifiers GetKeyboardModifiers() const { return m_modifiers; }
    void SetKeyboardModifiers(Qt::KeyboardModifiers modifiers) { m_modifiers = modifiers; }
    // The layout pass; also runs on every resize.
    void AdjustComponentSizes();
    CUGGridInfo* GetGridInfo() const { return m_GI; }

    // --- Notifications, in the order of the control's table ---------------------------------
    virtual void OnSectionSetFocus(int section);                                   // -
    virtual void OnGridSetup();                                                    // -
    virtual void OnSheetSetup(int sheetNumber);                                    // -
    // The first pair is the view's origin (left column, top row), not the current cell.
    virtual int OnCanMoveCell(int oldcol, long oldrow, int newcol, long newrow);  // allow
    virtual int OnCanScrollView(int oldcol, int newcol, long oldrow, long newrow);  // allow
    virtual void OnHitBottom(long numRows, long rowsPastEnd, long rowsFound);      // -
    virtual void OnHook7(int value1, int value2);                                  // -
    virtual int OnCanSizeCol(int col);                                             // allow
    virtual void OnColSizing(int col, int* width);                                 // -
    virtual void OnColSized(int col, int* width);                                  // -
    virtual int OnCanSizeRow(long row);                                            // allow
    virtual void OnRowSizing(long row, int* height);                               // -
    virtual void OnRowSized(long row, int* height);                                // -
    virtual int OnCanSizeTopHdg();                                                 // allow
    virtual int OnCanSizeSideHdg();                                                // allow
    virtual int OnTopHdgSizing(int* height);                                       // allow
    virtual int OnSideHdgSizing(int* width);                                       // allow
    virtual int OnTopHdgSized(int* height);                                        // allow
    virtual int OnSideHdgSized(int* width);                                        // allow
    virtual void OnColChange(int oldcol, int newcol);                              // -
    virtual void OnRowChange(long oldrow, long newrow);                            // -
    virtual void OnCellChange(int oldcol, int newcol, long oldrow, long newrow);  // -
    virtual void OnLeftColChange(int oldcol, int newcol);                          // -
    virtual void OnTopRowChange(long oldrow, long newrow);                         // -
    // updn: 1 button down, 0 up; processed: a cell type already handled the input.
    virtual void OnCellLeftClick(int col, long row, int updn, const QRect& rect, const QPoint& point,
                                 int processed);                                   // -
    virtual void OnCellRightClick(int col, long row, int updn, const QRect& rect,
                                  const QPoint& point, int processed);             // -
    virtual void OnCellDoubleClick(int col, long row, const QRect& rect, const QPoint& point,
                                   int processed);                                 // -
    virtual void OnCellMouseMove(int col, long row, const QPoint& point, unsigned keyFlags,
                                 int processed);                                   // -
    virtual void OnTopHdgLeftClick(int col, long row, int updn, const QRect& rect,
                                   const QPoint& point, int processed);            // -
    virtual void OnTopHdgRightClick(int col, long row, int updn, const QRect& rect,
                                    const QPoint& point, int processed);           // -
    virtual void OnTopHdgDoubleClick(int col, long row, const QRect& rect, const QPoint& point,
                                     int processed);                               // -
    virtual void OnSideHdgLeftClick(int col, long row, int updn, const QRect& rect,
                                    const QPoint& point, int processed);           // -
    virtual void OnSideHdgRightClick(int col, long row, int updn, const QRect& rect,
                                     const QPoint& point, int processed);          // -
    virtual void OnSideHdgDoubleClick(int col, long row, const QRect& rect, const QPoint& point,
                                      int processed);                              // -
    virtual void OnCornerLeftClick(int updn, const QRect& rect, const QPoint& point,
                                   int processed);                                 // -
    virtual void OnCornerRightClick(int updn, const QRect& rect, const QPoint& point,
                                    int processed);                                // -
    virtual void OnCornerDoubleClick(const QRect& rect, const QPoint& point, int processed);  // -
    virtual void OnGridKeyDown(int* vcKey, int processed);                         // -
    virtual void OnGridCharDown(int* vcKey, int processed);                        // -
    virtual void OnHook40(int value1, int value2, int value3);                     // -
    virtual void OnSetCell(int col, long row, CUGCell* cell);                      // -
    virtual void OnHook42(int value1, int value2, int value3);                     // -
    virtual int OnCellTypeNotify(long id, int col, long row, long msg, long param);  // allow
    // The handler may put its own editor (a CUGEdit, e.g. a CUGMaskedEdit) into *edit.
    virtual int OnEditStart(int col, long row, CUGEdit** edit);                    // allow
    // 0 swallows the character; the handler may change *vcKey. The base filters columns 1 and 2
    // of this system's tables (see grid/UGEditFilter.h).
    virtual int OnEditKeystroke(int col, long row, CUGEdit* edit, int* vcKey);
    // 0 keeps the editor open and stores nothing.
    virtual int OnEditFinish(int col, long row, CUGEdit* edit, const wchar_t* string,
                             int cancelFlag);                                      // allow
    virtual int OnEditContinue(int oldcol, long oldrow, int* newcol, long* newrow);  // allow
    virtual void OnMenuCommand(int col, long row, int section, int item);          // -
    virtual int OnMenuStart(int col, long row, int section);                       // allow
    virtual int OnCellTip(int col, long row, int section, std::wstring* string);  // "Col:%d Row:%ld"
    virtual int OnHook51(int value1, int value2);                                  // allow
    virtual int OnHook52(int value1, int value2);                                  // allow
    virtual int OnDragEnter(const QMimeData* data);                                // deny
    virtual int OnDragOver(const QMimeData* data, int col, long row);              // deny
    virtual int OnDragDrop(const QMimeData* data, int col, long row);              // deny
    int OnSortCompare(const CUGCell* cell1, const CUGCell* cell2, int flags) override;  // base rule
    // kind: 1 the cell area paints, 2 a heading or the corner button.
    virtual void OnPaintSetup(QPainter* dc, int section, int kind);                // -
    virtual void OnAdjustComponentSizes(QRect* grid, QRect* topHdg, QRect* sideHdg,
                                        QRect* cnrBtn, QRect* vScroll, QRect* hScroll,
                                        QRect* tabs);                              // -
    virtual void OnTabSelected(long id);                                           // -
    virtual COLORREF OnQueryBackColor(int section);  // window colour for the cells, else button face
    virtual void OnDrawFocusRect(QPainter* dc, QRect* rect);                       // draws
    virtual void OnSectionKillFocus(int section);                                  // -
    virtual int OnTopHdgPress(int col);                                            // allow
    virtual int OnTopHdgRelease(int col, int col2);                                // allow
    virtual void OnTabsSizing(int x, int y);                                       // -

protected:
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

    CUGGridInfo* m_GI = nullptr;  // the current sheet

private:
    template <typename Change>
    int QuickModify(int col, long row, Change change);
    friend class CUGEdit;
    friend class CUGGrid;
    friend class CUGSideHdg;
    friend class CUGTab;
    friend class CUGTopHdg;

    enum class EditEnd { Enter, Cancel, FocusLost, NextCol, PrevCol, PrevRow, NextRow };
    struct PendingEdit {
        int col;
        long row;
        int key;
    };

    void CreateChildren();
    void FinishCreation();
    void Relayout();  // the layout pass without taking the focus, after counts and sizes change
    void RunLayout(bool takeFocus);
    void UpdateScrollBars();
    void FireScrollChanges();
    void ScrollToShow(int col, long row);
    int CellAreaWidth() const;
    int CellAreaHeight() const;
    void EditFinished(EditEnd how);
    // A press in a heading ends an edit first, as one in the cell area does: sorting or moving
    // rows under an open editor would store its text in another row. False while the owner keeps
    // the edit open.
    bool FinishEditForPress();
    // An open editor follows its row when `delta` rows are inserted (1) or deleted (-1) at `row`
    // before it; when its own row is deleted its text has nowhere to go, and it is put away.
    void KeepEditorOnItsRow(long row, long delta);
    bool NextEditCell(EditEnd how, int* col, long* row) const;

    CUGGrid* m_CUGGrid = nullptr;
    CUGTopHdg* m_CUGTopHdg = nullptr;
    CUGSideHdg* m_CUGSideHdg = nullptr;
    CUGCnrBtn* m_CUGCnrBtn = nullptr;
    CUGVScroll* m_CUGVScroll = nullptr;
    CUGHScroll* m_CUGHScroll = nullptr;
    CUGTab* m_CUGTab = nullptr;
    CUGLstBox* m_listBox = nullptr;
    QMenu* m_menu = nullptr;
    std::vector<std::unique_ptr<CUGGridInfo>> m_GIList;
    int m_currentSheet = 0;
    CUGCell m_cell;  // scratch cell of the quick operations
    CUGCell m_stored;  // scratch of GetCellIndirect
    int m_menuCol = -1;
    long m_menuRow = -1;
    int m_menuSection = 0;
    int m_menuEnabled = 0;
    int m_enableUpdate = 1;
    int m_tabSizing = 0;  // during a drag of the tab divider only the tabs and the bar move
    int m_useHints = 0;
    bool m_border = false;
    Qt::KeyboardModifiers m_modifiers;

    std::unique_ptr<CUGCellType> m_normalType;
    std::unique_ptr<CUGDropListType> m_dropListType;
    std::unique_ptr<CUGCheckBoxType> m_checkBoxType;
    std::unique_ptr<CUGArrowType> m_arrowType;
    std::vector<CUGCellType*> m_cellTypeList;  // index = cell-type number
    std::vector<QFont> m_fonts;
    std::vector<QPen> m_pens;
    std::vector<QPixmap> m_bitmaps;
    UGFont m_defFont{};

    CUGEdit* m_defEdit = nullptr;
    CUGEdit* m_editCtrl = nullptr;
    bool m_editing = false;
    bool m_finishingEdit = false;
    int m_editCol = -1;
    long m_editRow = -1;
    std::unique_ptr<PendingEdit> m_pendingEdit;
};
