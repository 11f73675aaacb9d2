// The in-place editor that follows the mask property of the cell being edited (grid/UGMask.h):
// characters the mask does not allow at the cursor are swallowed, literals are filled in.
#pragma once

#include <string>

#include "grid/CUGEdit.h"

class CUGMaskedEdit final : public CUGEdit {
    Q_OBJECT

public:
    using CUGEdit::CUGEdit;
    void PrepareFor(CUGCtrl* ctrl, const CUGCell& cell) override;

protected:
    void InsertCharacter(int character) override;

private:
    std::wstring m_mask;
};
