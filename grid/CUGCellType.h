// The base cell type, which is also the normal type (number 0): draws a cell as text on its
// background with its borders, and leaves all input to the grid. Other types derive from it and
// override the operations they handle; an input operation returns 1 when it handled the input,
// and the grid then skips its own handling.
#pragma once

#include <QRect>
#include <array>

class CUGCell;
class CUGCtrl;
class QPainter;
class QSize;

// A type's 16-byte identifier.
struct UGID {
    std::array<unsigned char, 16> bytes;
};

class CUGCellType {
public:
    CUGCellType() = default;
    virtual ~CUGCellType() = default;
    CUGCellType(const CUGCellType&) = delete;
    CUGCellType& operator=(const CUGCellType&) = delete;

    virtual const wchar_t* GetName();
    virtual const UGID* GetTypeId();
    // Called when in-place editing starts; may narrow the editor's rectangle.
    virtual int AdjustEditArea(QRect* rect);
    virtual int OnHook8(long value1, long value2);   // -1
    virtual int OnHook9(long value1, long value2);   // -1
    virtual int OnHook10();                          // 0
    // updn: 1 button down, 0 up.
    virtual int OnLClicked(int col, long row, int updn, const QRect& rect, const QPoint& point);
    virtual int OnHook12(long value1, long value2, long value3, long value4, long value5);  // 0
    virtual int OnDClicked(int col, long row, const QRect& rect, const QPoint& point);
    // Called before the grid's own key handling; a type may consume the key by setting it to 0.
    virtual int OnKeyDown(int col, long row, int* vcKey);
    virtual int OnCharDown(int col, long row, int* vcKey);
    virtual int OnMouseMove(int col, long row, const QPoint& point, unsigned keyFlags);
    virtual void OnDraw(QPainter* dc, const QRect& rect, int col, long row, CUGCell* cell,
                        int selected, int current);
    virtual void DrawCellText(QPainter* dc, const QRect& rect, int col, long row, CUGCell* cell,
                              int selected, int current);
    virtual void OnHook19(long value1, long value2, long value3);  // -
    // The list box a type opened for a cell has closed.
    virtual void OnPopupClosed(int col, long row, int reason);  // -
    virtual void GetBestSize(QPainter* dc, QSize* size, CUGCell* cell);

    int GetID() const { return m_ID; }
    CUGCtrl* GetCtrl() const { return m_ctrl; }

protected:
    // Background (highlighted when selected, tinted for the current heading) and borders; returns
    // the area left for the content.
    QRect DrawBackground(QPainter* dc, const QRect& rect, int col, long row, CUGCell* cell,
                         int selected, int current);

    CUGCtrl* m_ctrl = nullptr;
    int m_ID = -1;

private:
    friend class CUGCtrl;
};
