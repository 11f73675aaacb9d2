// Bulge arcs and B-spline evaluation (de Boor's algorithm on homogeneous points).
#include "host/desktop/scene/scenecurves.h"

#include <algorithm>
#include <cmath>

SceneArc bulgeArc(ScenePoint p0, ScenePoint p1, double bulge) {
    const double angle = 4.0 * std::atan(bulge);
    const ScenePoint d = p1 - p0;
    const double chord = std::hypot(d.x, d.y);
    const ScenePoint middle = (p0 + p1) * 0.5;
    const ScenePoint left{-d.y / chord, d.x / chord};
    const double offset = (chord / 2) / std::tan(angle / 2);
    const ScenePoint center = middle + left * offset;
    const double radius = sceneDistance(center, p0);
    const double start = std::atan2(p0.y - center.y, p0.x - center.x);
    SceneArc arc{center, {radius, 0}, {0, radius}, start, start + angle};
    if (angle < 0) std::swap(arc.start, arc.end);
    return arc;
}

std::vector<ScenePoint> bsplinePoints(int degree, std::span<const double> knots,
                                      std::span<const ScenePoint> control,
                                      std::span<const double> weights, int segments) {
    std::vector<ScenePoint> out;
    const auto n = static_cast<int>(control.size());
    if (degree < 1 || n <= degree || static_cast<int>(knots.size()) != n + degree + 1 ||
        segments < 1)
        return out;
    if (!weights.empty() && static_cast<int>(weights.size()) != n) return out;
    for (std::size_t i = 1; i < knots.size(); ++i) {
        if (knots[i] < knots[i - 1]) return out;
    }
    const double t0 = knots[static_cast<std::size_t>(degree)];
    const double t1 = knots[static_cast<std::size_t>(n)];
    if (!(t1 > t0)) return out;
    struct Homogeneous {
        double x, y, w;
    };
    std::vector<Homogeneous> d(static_cast<std::size_t>(degree + 1));
    out.reserve(static_cast<std::size_t>(segments + 1));
    for (int s = 0; s <= segments; ++s) {
        const double t = s == segments ? t1 : t0 + (t1 - t0) * s / segments;
        // The knot span holding t: knots[k] <= t < knots[k + 1], the last span closed.
        int k = degree;
        while (k < n - 1 && knots[static_cast<std::size_t>(k + 1)] <= t) ++k;
        for (int j = 0; j <= degree; ++j) {
            const auto i = static_cast<std::size_t>(j + k - degree);
            const double w = weights.empty() ? 1.0 : weights[i];
            d[static_cast<std::size_t>(j)] = {control[i].x * w, control[i].y * w, w};
        }
        for (int r = 1; r <= degree; ++r) {
            for (int j = degree; j >= r; --j) {
                const auto i = static_cast<std::size_t>(j + k - degree);
                const double left = knots[i];
                const double right = knots[i + static_cast<std::size_t>(degree - r + 1)];
                const double alpha = right > left ? (t - left) / (right - left) : 0.0;
                Homogeneous& a = d[static_cast<std::size_t>(j)];
                const Homogeneous& b = d[static_cast<std::size_t>(j - 1)];
                a = {(1 - alpha) * b.x + alpha * a.x, (1 - alpha) * b.y + alpha * a.y,
                     (1 - alpha) * b.w + alpha * a.w};
            }
        }
        const Homogeneous& p = d[static_cast<std::size_t>(degree)];
        if (p.w == 0.0) return {};
        out.push_back({p.x / p.w, p.y / p.w});
    }
    return out;
}
