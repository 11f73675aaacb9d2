// The one table from Qt keys to virtual-key codes.
#include "grid/UGKeyMap.h"

#include <QKeyEvent>
#include <iterator>

#include "grid/UGKeys.h"

namespace {

struct KeyCode {
    int qtKey;
    int virtualKey;
};

constexpr KeyCode kKeys[] = {
    {Qt::Key_Backspace, VK_BACK},  {Qt::Key_Tab, VK_TAB},       {Qt::Key_Backtab, VK_TAB},
    {Qt::Key_Return, VK_RETURN},   {Qt::Key_Enter, VK_RETURN},  {Qt::Key_Shift, VK_SHIFT},
    {Qt::Key_Control, VK_CONTROL}, {Qt::Key_Alt, VK_MENU},      {Qt::Key_Escape, VK_ESCAPE},
    {Qt::Key_Space, VK_SPACE},     {Qt::Key_PageUp, VK_PRIOR},  {Qt::Key_PageDown, VK_NEXT},
    {Qt::Key_End, VK_END},         {Qt::Key_Home, VK_HOME},     {Qt::Key_Left, VK_LEFT},
    {Qt::Key_Up, VK_UP},           {Qt::Key_Right, VK_RIGHT},   {Qt::Key_Down, VK_DOWN},
    {Qt::Key_Insert, VK_INSERT},   {Qt::Key_Delete, VK_DELETE},
};

}  // namespace

int UGVirtualKey(const QKeyEvent* event) {
    const int key = event->key();
    // Letters and digits have the same codes in both.
    if ((key >= Qt::Key_A && key <= Qt::Key_Z) || (key >= Qt::Key_0 && key <= Qt::Key_9))
        return key;
    if (key >= Qt::Key_F1 && key <= Qt::Key_F24) return VK_F1 + (key - Qt::Key_F1);
    for (const KeyCode& k : kKeys)
        if (k.qtKey == key) return k.virtualKey;
    return 0;
}

int UGCharacter(const QKeyEvent* event) {
    switch (event->key()) {
        case Qt::Key_Backspace:
            return VK_BACK;
        case Qt::Key_Tab:
        case Qt::Key_Backtab:
            return VK_TAB;
        case Qt::Key_Return:
        case Qt::Key_Enter:
            return VK_RETURN;
        case Qt::Key_Escape:
            return VK_ESCAPE;
        default:
            break;
    }
    const int key = event->key();
    if ((event->modifiers() & Qt::ControlModifier) && key >= Qt::Key_A && key <= Qt::Key_Z)
        return key - Qt::Key_A + 1;
    const QString text = event->text();
    if (text.isEmpty()) return 0;
    const char32_t c = text.toUcs4().value(0);
    return (c >= 32 && c != 127) ? static_cast<int>(c) : 0;
}

bool UGIsDialogKey(const QKeyEvent* event) {
    const Qt::KeyboardModifiers modifiers = event->modifiers();
    return (modifiers & Qt::AltModifier) && !(modifiers & Qt::ControlModifier) &&
           event->key() != Qt::Key_Alt;
}

unsigned UGMouseKeyFlags(Qt::MouseButtons buttons, Qt::KeyboardModifiers modifiers) {
    unsigned flags = 0;
    if (buttons & Qt::LeftButton) flags |= MK_LBUTTON;
    if (buttons & Qt::RightButton) flags |= MK_RBUTTON;
    if (buttons & Qt::MiddleButton) flags |= MK_MBUTTON;
    if (modifiers & Qt::ShiftModifier) flags |= MK_SHIFT;
    if (modifiers & Qt::ControlModifier) flags |= MK_CONTROL;
    return flags;
}
