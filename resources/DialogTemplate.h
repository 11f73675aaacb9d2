// Dialog templates as data: the controls of a dialog with their ids, kinds, texts and positions in
// dialog units, and the font whose size turns dialog units into pixels.
#pragma once

#include <span>

// The id of controls that nothing refers to ("Current file:", the group boxes).
inline constexpr int IDC_STATIC = -1;

enum class ControlKind {
    PushButton,
    DefPushButton,  // the button Enter presses
    Static,         // a text label, or a placeholder another control takes the place of
    GroupBox,
    CheckBox,       // an automatic check box
    Edit,
};

struct ControlTemplate {
    int id;
    ControlKind kind;
    const wchar_t* text;  // "" for none
    int x, y, cx, cy;     // dialog units
};

struct DialogTemplate {
    int id;
    const wchar_t* caption;
    int cx, cy;  // the client area in dialog units
    const wchar_t* fontFace;
    int fontPointSize;
    std::span<const ControlTemplate> controls;
};

// The module's template of this id, or null.
const DialogTemplate* FindDialogTemplate(int id);
