// HATCH boundaries: polyline paths (with bulges) and edge paths of lines, circular and elliptic
// arcs and splines, in the hatch's OCS at its elevation. The pattern is not drawn.
#include <numbers>

#include "host/desktop/scene/entityreader.h"
#include "host/desktop/scene/scenecurves.h"
#include "host/dxf/dxfdocument.h"

namespace {

constexpr double kDegree = std::numbers::pi / 180.0;
constexpr std::int64_t kPolylinePath = 2;

enum class EdgeType { Line = 1, Arc = 2, Ellipse = 3, Spline = 4 };

// The hatch's tags in order. Boundary data has a fixed order, so a code out of place ends the
// reading there and what was read so far is drawn.
class Cursor {
public:
    Cursor(const DxfTagFile& file, DxfTagRange tags, std::uint32_t at)
        : m_file(file), m_tags(tags), m_at(at) {}

    bool at(int code) const { return m_at < m_tags.size() && m_file.code(m_tags[m_at]) == code; }
    std::optional<double> real(int code) {
        if (!at(code)) return std::nullopt;
        return sceneReal(m_file, m_tags[m_at++], 0);
    }
    std::optional<std::int64_t> integer(int code) {
        if (!at(code)) return std::nullopt;
        return m_file.integer(m_tags[m_at++]);
    }
    std::optional<ScenePoint> point(int code) {
        const auto x = real(code);
        if (!x) return std::nullopt;
        const auto y = real(code + 10);
        if (!y) return std::nullopt;
        return ScenePoint{*x, *y};
    }
    void skip() { ++m_at; }

private:
    const DxfTagFile& m_file;
    DxfTagRange m_tags;
    std::uint32_t m_at;
};

// The angles of an arc edge as a counter-clockwise range: clockwise edges store them mirrored.
std::pair<double, double> ccwRange(double start, double end, bool counterClockwise) {
    if (!counterClockwise) {
        const double s = -end;
        end = -start;
        start = s;
    }
    while (end <= start) end += 2 * std::numbers::pi;
    return {start, end};
}

}  // namespace

void SceneEntityReader::readHatch(Entity& entity) {
    const DxfTagRange tags = tagsAt(entity, 0);
    std::uint32_t first = 1;
    while (first < tags.size() && m_file.code(tags[first]) != 91) ++first;
    Cursor cursor(m_file, tags, first);
    const std::int64_t pathCount = cursor.integer(91).value_or(0);
    const SceneTransform toWorld = ocsTransform(entity, 30);
    SceneShape& shape = *entity.shape;
    const SceneColor color = entity.style.color;
    const bool inherits = entity.style.inherits;

    std::vector<ScenePoint> run;
    auto flush = [&] {
        if (run.size() > 1) shape.addPath(run, false, color, inherits);
        run.clear();
    };
    auto lineTo = [&](ScenePoint from, ScenePoint to) {
        if (run.empty() || !(run.back() == toWorld.map(from))) {
            flush();
            run.push_back(toWorld.map(from));
        }
        run.push_back(toWorld.map(to));
    };

    // Reading stops at the first tag out of place; what was read until then is drawn.
    auto readPaths = [&] {
        for (std::int64_t path = 0; path < pathCount; ++path) {
            const auto flags = cursor.integer(92);
            if (!flags) break;
            if ((*flags & kPolylinePath) != 0) {
                const bool bulges = cursor.integer(72).value_or(0) != 0;
                const bool closed = cursor.integer(73).value_or(1) != 0;
                const std::int64_t count = cursor.integer(93).value_or(0);
                std::vector<SceneBulgeVertex> vertices;
                for (std::int64_t v = 0; v < count; ++v) {
                    const auto p = cursor.point(10);
                    if (!p) return;
                    const double bulge = cursor.real(42).value_or(0.0);
                    vertices.push_back({*p, bulges ? bulge : 0.0});
                }
                addBulgedPolyline(shape, vertices, closed, toWorld, color, inherits);
            } else {
                const std::int64_t edges = cursor.integer(93).value_or(0);
                for (std::int64_t e = 0; e < edges; ++e) {
                    const auto type = cursor.integer(72);
                    if (!type) return;
                    switch (static_cast<EdgeType>(*type)) {
                        case EdgeType::Line: {
                            const auto from = cursor.point(10);
                            const auto to = cursor.point(11);
                            if (!from || !to) return;
                            lineTo(*from, *to);
                            break;
                        }
                        case EdgeType::Arc: {
                            const auto center = cursor.point(10);
                            const double r = cursor.real(40).value_or(0);
                            const double start = cursor.real(50).value_or(0) * kDegree;
                            const double end = cursor.real(51).value_or(360) * kDegree;
                            const bool ccw = cursor.integer(73).value_or(1) != 0;
                            if (!center) return;
                            flush();
                            const auto [s, t] = ccwRange(start, end, ccw);
                            shape.addArc(mapArc(toWorld, {*center, {r, 0}, {0, r}, s, t}), color,
                                         inherits);
                            break;
                        }
                        case EdgeType::Ellipse: {
                            const auto center = cursor.point(10);
                            const auto major = cursor.point(11);
                            const double ratio = cursor.real(40).value_or(1);
                            const double start = cursor.real(50).value_or(0) * kDegree;
                            const double end = cursor.real(51).value_or(360) * kDegree;
                            const bool ccw = cursor.integer(73).value_or(1) != 0;
                            if (!center || !major) return;
                            flush();
                            const auto [s, t] = ccwRange(start, end, ccw);
                            const ScenePoint minor{-major->y * ratio, major->x * ratio};
                            shape.addArc(mapArc(toWorld, {*center, *major, minor, s, t}), color,
                                         inherits);
                            break;
                        }
                        case EdgeType::Spline: {
                            const int degree = static_cast<int>(cursor.integer(94).value_or(3));
                            const bool rational = cursor.integer(73).value_or(0) != 0;
                            cursor.integer(74);
                            const std::int64_t knotCount = cursor.integer(95).value_or(0);
                            const std::int64_t controlCount = cursor.integer(96).value_or(0);
                            std::vector<double> knots;
                            for (std::int64_t k = 0; k < knotCount; ++k)
                                knots.push_back(cursor.real(40).value_or(0));
                            std::vector<ScenePoint> control;
                            std::vector<double> weights;
                            for (std::int64_t c = 0; c < controlCount; ++c) {
                                const auto p = cursor.point(10);
                                if (!p) return;
                                control.push_back(*p);
                                if (const auto w = cursor.real(42)) weights.push_back(*w);
                            }
                            if (const auto fit = cursor.integer(97)) {
                                for (std::int64_t f = 0; f < *fit; ++f) cursor.point(11);
                            }
                            cursor.point(12);
                            cursor.point(13);
                            std::vector<ScenePoint> points =
                                bsplinePoints(degree, knots, control,
                                              rational && weights.size() == control.size()
                                                  ? weights
                                                  : std::vector<double>{},
                                              static_cast<int>(std::clamp<std::size_t>(
                                                  control.size() * 8, 8, 512)));
                            if (points.empty()) points = control;
                            flush();
                            for (ScenePoint& p : points) p = toWorld.map(p);
                            shape.addPath(points, false, color, inherits);
                            break;
                        }
                        default:
                            return;
                    }
                }
                flush();
            }
            // The boundary's source objects.
            const std::int64_t sources = cursor.integer(97).value_or(0);
            for (std::int64_t s = 0; s < sources && cursor.at(330); ++s) cursor.skip();
        }
    };
    readPaths();
    flush();
}
