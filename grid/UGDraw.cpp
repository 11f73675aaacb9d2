// Shared pictures of the cell types.
#include "grid/UGDraw.h"

#include <QPainter>
#include <QPainterPath>
#include <QPolygonF>
#include <algorithm>

void UGDrawFrame(QPainter* dc, const QRect& rect, const QColor& color, int width) {
    dc->fillRect(QRect(rect.left(), rect.top(), rect.width(), width), color);
    dc->fillRect(QRect(rect.left(), rect.bottom() - width + 1, rect.width(), width), color);
    dc->fillRect(QRect(rect.left(), rect.top(), width, rect.height()), color);
    dc->fillRect(QRect(rect.right() - width + 1, rect.top(), width, rect.height()), color);
}

void UGDrawTriangle(QPainter* dc, const QRectF& area, UGArrow direction, const QColor& color) {
    const double size = std::min(area.width(), area.height()) * 0.5;
    const QPointF c = area.center();
    const double h = size / 2;
    QPolygonF points;
    switch (direction) {
        case UGArrow::Up:
            points << QPointF(c.x() - h, c.y() + h / 2) << QPointF(c.x() + h, c.y() + h / 2)
                   << QPointF(c.x(), c.y() - h / 2 - 1);
            break;
        case UGArrow::Down:
            points << QPointF(c.x() - h, c.y() - h / 2) << QPointF(c.x() + h, c.y() - h / 2)
                   << QPointF(c.x(), c.y() + h / 2 + 1);
            break;
        case UGArrow::Left:
            points << QPointF(c.x() + h / 2, c.y() - h) << QPointF(c.x() + h / 2, c.y() + h)
                   << QPointF(c.x() - h / 2 - 1, c.y());
            break;
        case UGArrow::Right:
            points << QPointF(c.x() - h / 2, c.y() - h) << QPointF(c.x() - h / 2, c.y() + h)
                   << QPointF(c.x() + h / 2 + 1, c.y());
            break;
    }
    dc->save();
    dc->setRenderHint(QPainter::Antialiasing);
    dc->setPen(Qt::NoPen);
    dc->setBrush(color);
    dc->drawPolygon(points);
    dc->restore();
}

void UGDrawChevron(QPainter* dc, const QRectF& area, const QColor& color) {
    const QPointF c = area.center();
    const double h = std::min(area.width(), area.height()) * 0.18;
    QPainterPath path;
    path.moveTo(c.x() - 1.6 * h, c.y() - 0.7 * h);
    path.lineTo(c.x(), c.y() + 0.9 * h);
    path.lineTo(c.x() + 1.6 * h, c.y() - 0.7 * h);
    dc->save();
    dc->setRenderHint(QPainter::Antialiasing);
    dc->setPen(QPen(color, 1.6, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    dc->setBrush(Qt::NoBrush);
    dc->drawPath(path);
    dc->restore();
}
