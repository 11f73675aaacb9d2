// The price-list grid: block name, price and description, one row per priced block. Names come
// from a drop list of the drawing's blocks that no row uses yet; names must be unique ignoring
// case; rows sort by a heading click; the list loads from and saves to a price-list file. The grid
// reaches the one open price-list dialog for its buttons and message label.
#pragma once

#include <string>
#include <vector>

#include "grid/CUGCtrl.h"
#include "grid/CUGMaskedEdit.h"
#include "grid/CUGSortArrowType.h"
#include "inventory/BlockNamesCont.h"
#include "pricelist/PriceListFile.h"
#include "text/TextFile.h"

inline constexpr int kPriceColumnCount = 3;
inline constexpr int kPriceNameColumn = 0;
inline constexpr int kPricePriceColumn = 1;
inline constexpr int kPriceDescriptionColumn = 2;
// The control id of the grid's in-place editor.
inline constexpr int kPriceEditorId = 125;

class MyCug final : public CUGCtrl {
    Q_OBJECT

public:
    explicit MyCug(QWidget* parent = nullptr);

    // --- Operations the dialog uses --------------------------------------------------------
    // Every row with a name and a price, or with neither; else the message in the dialog's label,
    // a beep, the offending cell made current, and false.
    [[nodiscard]] bool Validate();
    // The price-list file's load and save; false, after the host's alert, when the file cannot be
    // opened. A failed load leaves the grid as it was.
    [[nodiscard]] bool LoadFromFile(const std::wstring& path);
    [[nodiscard]] bool SaveToFile(const std::wstring& path);
    // Removes every row; clears the modified flag.
    void Clear();
    // Appends an initialised row and starts editing its name.
    void AddRowAtEnd();
    // Inserts an initialised row after `row` and edits its name; after the last row, or with no
    // row, the new row is appended.
    void InsertRowAfter(long row);
    // Exchange the current row's texts with the next (previous) row's and follow them; false when
    // there is no such row.
    bool MoveRowDown();
    bool MoveRowUp();
    // No row but `row` holds `name` in any case.
    bool IsNameUnique(const std::wstring& name, long row);
    // Copies the grid's present column widths into the stored widths.
    void StoreColumnWidths();

    // The stored widths of the three columns, -1 when unset; the set-up uses them.
    int* ColumnWidths() { return m_columnWidths; }
    int IsModified() const { return m_modified; }
    void SetModified(int modified) { m_modified = modified; }
    int IsSortEnabled() const { return m_sortEnabled; }
    int SortColumn() const { return m_sortCol; }
    int IsSortAscending() const { return m_sortAscending; }
    // The unused block names, each followed by a line feed, as the last initialised row got them.
    const std::wstring& ChoiceList() const { return m_choiceList; }
    // The rows as the file would hold them.
    std::vector<PriceListRow> Rows();
    // The encoding and line ends of the list, so that a saved file keeps those of the opened one.
    const TextFormat& Format() const { return m_format; }

    // --- Notifications -----------------------------------------------------------------------
    void OnGridSetup() override;
    void OnRowChange(long oldrow, long newrow) override;
    void OnCellChange(int oldcol, int newcol, long oldrow, long newrow) override;
    void OnCellLeftClick(int col, long row, int updn, const QRect& rect, const QPoint& point,
                         int processed) override;
    void OnTopHdgLeftClick(int col, long row, int updn, const QRect& rect, const QPoint& point,
                           int processed) override;
    void OnGridKeyDown(int* vcKey, int processed) override;
    void OnGridCharDown(int* vcKey, int processed) override;
    int OnCellTypeNotify(long id, int col, long row, long msg, long param) override;
    int OnEditStart(int col, long row, CUGEdit** edit) override;
    int OnEditFinish(int col, long row, CUGEdit* edit, const wchar_t* string,
                     int cancelFlag) override;
    int OnSortCompare(const CUGCell* cell1, const CUGCell* cell2, int flags) override;

private:
    void InitRow(long row);
    void RebuildChoiceList();
    bool MoveRow(int direction);
    // A finished change of a cell's text: modified, "&Save" enabled, and the name checked.
    bool AcceptNewText(int col, long row, const std::wstring& text);
    bool Reject(int col, long row, int messageId);
    void SetRows(const std::vector<PriceListRow>& rows);
    std::wstring ListOption(int col, long row, long index);

    int m_columnWidths[kPriceColumnCount] = {-1, -1, -1};
    BlockNamesCont m_blockNames;
    std::wstring m_choiceList;
    int m_sortEnabled = 1;
    int m_nameClickLock = 0;
    int m_modified = 0;
    CUGMaskedEdit* m_editor = nullptr;
    CUGSortArrowType m_sortArrow;
    int m_sortArrowIndex = -1;
    int m_sortCol = 0;
    int m_sortAscending = 1;
    TextFormat m_format;
};
