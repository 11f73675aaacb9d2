// Colours between the grid's 32-bit values and Qt, and the system colours from a widget palette.
#pragma once

#include <QColor>

#include "grid/UGDefs.h"

class QPalette;

QColor UGToQColor(COLORREF color);
COLORREF UGFromQColor(const QColor& color);
// Fills the grid's system colours (window, text, highlight, button face ...) from the palette.
void UGLoadSysColors(const QPalette& palette);
// `top` laid over `bottom` with the given opacity (0..1).
QColor UGBlend(const QColor& bottom, const QColor& top, double opacity);
