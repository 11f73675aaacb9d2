// Plane geometry of the scene: world points, axis-parallel rectangles and affine transforms. The
// view looks down on the drawing's XY plane, so everything here is two-dimensional.
#pragma once

#include <algorithm>
#include <cmath>
#include <limits>
#include <optional>

struct ScenePoint {
    double x = 0.0;
    double y = 0.0;
    friend bool operator==(const ScenePoint&, const ScenePoint&) = default;
};

inline ScenePoint operator+(ScenePoint a, ScenePoint b) { return {a.x + b.x, a.y + b.y}; }
inline ScenePoint operator-(ScenePoint a, ScenePoint b) { return {a.x - b.x, a.y - b.y}; }
inline ScenePoint operator*(ScenePoint a, double k) { return {a.x * k, a.y * k}; }
inline double sceneDistance(ScenePoint a, ScenePoint b) { return std::hypot(a.x - b.x, a.y - b.y); }

// Empty until a point is added; an empty rectangle meets nothing.
struct SceneRect {
    double minX = std::numeric_limits<double>::infinity();
    double minY = std::numeric_limits<double>::infinity();
    double maxX = -std::numeric_limits<double>::infinity();
    double maxY = -std::numeric_limits<double>::infinity();

    static SceneRect fromCorners(ScenePoint a, ScenePoint b) {
        return {std::min(a.x, b.x), std::min(a.y, b.y), std::max(a.x, b.x), std::max(a.y, b.y)};
    }
    bool isEmpty() const { return !(minX <= maxX && minY <= maxY); }
    double width() const { return isEmpty() ? 0.0 : maxX - minX; }
    double height() const { return isEmpty() ? 0.0 : maxY - minY; }
    ScenePoint center() const { return {(minX + maxX) / 2, (minY + maxY) / 2}; }

    void add(ScenePoint p) {
        minX = std::min(minX, p.x);
        minY = std::min(minY, p.y);
        maxX = std::max(maxX, p.x);
        maxY = std::max(maxY, p.y);
    }
    void unite(const SceneRect& r) {
        if (r.isEmpty()) return;
        minX = std::min(minX, r.minX);
        minY = std::min(minY, r.minY);
        maxX = std::max(maxX, r.maxX);
        maxY = std::max(maxY, r.maxY);
    }
    bool intersects(const SceneRect& r) const {
        return minX <= r.maxX && r.minX <= maxX && minY <= r.maxY && r.minY <= maxY;
    }
    bool contains(const SceneRect& r) const {
        return !r.isEmpty() && minX <= r.minX && r.maxX <= maxX && minY <= r.minY && r.maxY <= maxY;
    }
    bool contains(ScenePoint p) const {
        return minX <= p.x && p.x <= maxX && minY <= p.y && p.y <= maxY;
    }
    SceneRect adjusted(double margin) const {
        if (isEmpty()) return *this;
        return {minX - margin, minY - margin, maxX + margin, maxY + margin};
    }
    friend bool operator==(const SceneRect&, const SceneRect&) = default;
};

// x' = m11 x + m21 y + dx, y' = m12 x + m22 y + dy: QTransform's order, so the view can hand the
// numbers over as they are.
struct SceneTransform {
    double m11 = 1.0;
    double m12 = 0.0;
    double m21 = 0.0;
    double m22 = 1.0;
    double dx = 0.0;
    double dy = 0.0;

    static SceneTransform translation(double x, double y) { return {1, 0, 0, 1, x, y}; }
    static SceneTransform scaling(double sx, double sy) { return {sx, 0, 0, sy, 0, 0}; }
    static SceneTransform rotation(double radians) {
        const double c = std::cos(radians);
        const double s = std::sin(radians);
        return {c, s, -s, c, 0, 0};
    }

    ScenePoint map(ScenePoint p) const {
        return {m11 * p.x + m21 * p.y + dx, m12 * p.x + m22 * p.y + dy};
    }
    ScenePoint mapVector(ScenePoint v) const {
        return {m11 * v.x + m21 * v.y, m12 * v.x + m22 * v.y};
    }
    // This transform first, then `outer`.
    SceneTransform then(const SceneTransform& outer) const {
        return {
            m11 * outer.m11 + m12 * outer.m21,          m11 * outer.m12 + m12 * outer.m22,
            m21 * outer.m11 + m22 * outer.m21,          m21 * outer.m12 + m22 * outer.m22,
            dx * outer.m11 + dy * outer.m21 + outer.dx, dx * outer.m12 + dy * outer.m22 + outer.dy};
    }
    double determinant() const { return m11 * m22 - m12 * m21; }
    // The factor by which lengths grow, on average over directions.
    double scale() const { return std::sqrt(std::abs(determinant())); }
    // The larger factor by which a length can grow (the norm of the linear part).
    double maxScale() const {
        const double a = m11 * m11 + m12 * m12;
        const double b = m21 * m21 + m22 * m22;
        const double c = m11 * m21 + m12 * m22;
        return std::sqrt((a + b) / 2 + std::sqrt((a - b) * (a - b) / 4 + c * c));
    }
    std::optional<SceneTransform> inverted() const {
        const double det = determinant();
        if (det == 0.0 || !std::isfinite(det)) return std::nullopt;
        const SceneTransform t{m22 / det, -m12 / det, -m21 / det, m11 / det, 0, 0};
        const ScenePoint offset = t.mapVector({dx, dy});
        return SceneTransform{t.m11, t.m12, t.m21, t.m22, -offset.x, -offset.y};
    }
    // The bounding box of the mapped rectangle.
    SceneRect mapRect(const SceneRect& r) const {
        SceneRect out;
        if (r.isEmpty()) return out;
        out.add(map({r.minX, r.minY}));
        out.add(map({r.maxX, r.minY}));
        out.add(map({r.minX, r.maxY}));
        out.add(map({r.maxX, r.maxY}));
        return out;
    }
    bool isIdentity() const {
        return m11 == 1 && m12 == 0 && m21 == 0 && m22 == 1 && dx == 0 && dy == 0;
    }
};

// The part of the segment from a to b inside the rectangle, as parameters along it (0 at a, 1 at
// b); nothing when the segment misses it. Liang-Barsky.
struct SegmentSpan {
    double t0 = 0.0;
    double t1 = 1.0;
};
inline std::optional<SegmentSpan> clipSegment(ScenePoint a, ScenePoint b, const SceneRect& r) {
    SegmentSpan span;
    const double dx = b.x - a.x;
    const double dy = b.y - a.y;
    const double p[4] = {-dx, dx, -dy, dy};
    const double q[4] = {a.x - r.minX, r.maxX - a.x, a.y - r.minY, r.maxY - a.y};
    for (int i = 0; i < 4; ++i) {
        if (p[i] == 0) {
            if (q[i] < 0) return std::nullopt;
            continue;
        }
        const double t = q[i] / p[i];
        if (p[i] < 0) {
            span.t0 = std::max(span.t0, t);
        } else {
            span.t1 = std::min(span.t1, t);
        }
        if (span.t0 > span.t1) return std::nullopt;
    }
    return span;
}
