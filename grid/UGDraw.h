// Small pictures the cell types share: frames, arrows and the drop button's chevron.
#pragma once

#include <QColor>
#include <QRect>

class QPainter;

enum class UGArrow { Up, Down, Left, Right };

// A frame of the given width drawn inside the rectangle, pixel-exact.
void UGDrawFrame(QPainter* dc, const QRect& rect, const QColor& color, int width);
// A filled triangle centred in the area, pointing the given way.
void UGDrawTriangle(QPainter* dc, const QRectF& area, UGArrow direction, const QColor& color);
// An open "v" centred in the area.
void UGDrawChevron(QPainter* dc, const QRectF& area, const QColor& color);
