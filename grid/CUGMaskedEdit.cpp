// The masked in-place editor.
#include "grid/CUGMaskedEdit.h"

#include "grid/CUGCell.h"
#include "grid/UGMask.h"

void CUGMaskedEdit::PrepareFor(CUGCtrl* ctrl, const CUGCell& cell) {
    CUGEdit::PrepareFor(ctrl, cell);
    m_mask = cell.GetMask();
}

void CUGMaskedEdit::InsertCharacter(int character) {
    if (m_mask.empty() || character < 32) {
        CUGEdit::InsertCharacter(character);
        return;
    }
    const int position = hasSelectedText() ? selectionStart() : cursorPosition();
    const auto inserted = UGMaskInsert(m_mask, static_cast<std::size_t>(position),
                                       static_cast<wchar_t>(character));
    if (inserted) insert(QString::fromStdWString(*inserted));
}
