// Cell type 1, the drop list: the cell's text with a drop button at its right; the button, Enter
// or Ctrl+Down open a list of the options in the cell's label (one per line), and a choice is
// stored as the cell's text after OnCellTypeNotify(UGCT_DROPLISTSELECT) allowed it. With extended
// style 0x200 the button shows only on the current cell.
#pragma once

#include <QRect>
#include <QString>

#include "grid/CUGCellType.h"

inline constexpr int UGCT_DROPLISTHIDEBUTTON = 0x200;

class CUGDropListType final : public CUGCellType {
public:
    CUGDropListType();

    const wchar_t* GetName() override;
    const UGID* GetTypeId() override;
    int AdjustEditArea(QRect* rect) override;
    int OnLClicked(int col, long row, int updn, const QRect& rect, const QPoint& point) override;
    int OnDClicked(int col, long row, const QRect& rect, const QPoint& point) override;
    int OnKeyDown(int col, long row, int* vcKey) override;
    int OnCharDown(int col, long row, int* vcKey) override;
    int OnMouseMove(int col, long row, const QPoint& point, unsigned keyFlags) override;
    void OnDraw(QPainter* dc, const QRect& rect, int col, long row, CUGCell* cell, int selected,
                int current) override;
    void OnPopupClosed(int col, long row, int reason) override;

    // From the list box: the user chose option `index`.
    void OnListChoice(int col, long row, int index, const QString& text);
    int GetButtonWidth() const { return m_btnWidth; }

private:
    void OpenList(int col, long row);

    int m_btnWidth;
    int m_btnCol = -1;  // the cell whose button was pressed or whose list is open
    long m_btnRow = -1;
    bool m_btnDown = false;
    QRect m_btnRect;
};
