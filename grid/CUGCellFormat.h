// A formatting object that a cell may reference: it turns the stored value into what is shown.
#pragma once

class CUGCell;

class CUGCellFormat {
public:
    virtual ~CUGCellFormat() = default;
    // Adjusts the display copy of a cell (text, colours, alignment) just before it is drawn; the
    // stored cell is never touched.
    virtual void ApplyDisplayFormat(CUGCell* cell) = 0;
};
