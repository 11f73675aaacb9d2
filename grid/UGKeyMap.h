// Qt's keys and buttons in the codes the grid's notifications carry.
#pragma once

#include <Qt>

class QKeyEvent;

// The virtual-key code of a key press, 0 for a key without one.
int UGVirtualKey(const QKeyEvent* event);
// The character a key press types, as the platform the grid came from delivers it: backspace 8,
// tab 9, Enter 13, Escape 27, Ctrl+letter 1..26; 0 when the key types nothing (arrows, Delete).
int UGCharacter(const QKeyEvent* event);
unsigned UGMouseKeyFlags(Qt::MouseButtons buttons, Qt::KeyboardModifiers modifiers);
