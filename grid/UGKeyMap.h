// Qt's keys and buttons in the codes the grid's notifications carry.
#pragma once

#include <Qt>

class QKeyEvent;

// The virtual-key code of a key press, 0 for a key without one.
int UGVirtualKey(const QKeyEvent* event);
// The character a key press types, as the platform the grid came from delivers it: backspace 8,
// tab 9, Enter 13, Escape 27, Ctrl+letter 1..26; 0 when the key types nothing (arrows, Delete).
int UGCharacter(const QKeyEvent* event);
// Alt with a key (and without Ctrl, which with Alt is AltGr on some systems) is a key of the
// dialog: its mnemonics. The platform the grid came from never delivers it to a control as a key or
// a character, so the grid and its editors leave it to the dialog.
bool UGIsDialogKey(const QKeyEvent* event);
unsigned UGMouseKeyFlags(Qt::MouseButtons buttons, Qt::KeyboardModifiers modifiers);
