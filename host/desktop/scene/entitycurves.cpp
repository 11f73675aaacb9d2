// Lines and curves: LINE, CIRCLE, ARC, ELLIPSE, LWPOLYLINE, POLYLINE (2D, 3D, meshes), SOLID and
// TRACE, 3DFACE, SPLINE, LEADER, and the frames of IMAGE and WIPEOUT.
#include <algorithm>
#include <numbers>

#include "host/desktop/scene/entityreader.h"
#include "host/desktop/scene/scenecurves.h"
#include "host/dxf/dxfdocument.h"

namespace {

constexpr double kDegree = std::numbers::pi / 180.0;
constexpr double kTurn = 2 * std::numbers::pi;

// POLYLINE flags (code 70 of the POLYLINE record).
constexpr std::int64_t kClosed = 1;
constexpr std::int64_t kPolyline3d = 8;
constexpr std::int64_t kPolygonMesh = 16;
constexpr std::int64_t kMeshClosedN = 32;
constexpr std::int64_t kPolyfaceMesh = 64;
// VERTEX flags.
constexpr std::int64_t kSplineFrame = 16;
constexpr std::int64_t kFaceRecord = 128;
constexpr std::int64_t kHasPosition = 64;

// The end angle after the start: arcs run counter-clockwise from start to end.
double endAfter(double start, double end) {
    while (end <= start) end += kTurn;
    return end;
}

}  // namespace

void SceneEntityReader::readLine(Entity& entity) {
    const ScenePoint points[] = {{m_fields.real(10, 0), m_fields.real(20, 0)},
                                 {m_fields.real(11, 0), m_fields.real(21, 0)}};
    entity.shape->addPath(points, false, entity.style.color, entity.style.inherits);
}

void SceneEntityReader::readCircle(Entity& entity) {
    const double r = m_fields.real(40, 0);
    const SceneArc arc{{m_fields.real(10, 0), m_fields.real(20, 0)}, {r, 0}, {0, r}, 0, kTurn};
    entity.shape->addArc(mapArc(ocsTransform(entity, 30), arc),
                         entity.style.color, entity.style.inherits);
}

void SceneEntityReader::readArc(Entity& entity) {
    const double r = m_fields.real(40, 0);
    const double start = m_fields.real(50, 0) * kDegree;
    const double end = endAfter(start, m_fields.real(51, 360) * kDegree);
    const SceneArc arc{{m_fields.real(10, 0), m_fields.real(20, 0)}, {r, 0}, {0, r}, start, end};
    entity.shape->addArc(mapArc(ocsTransform(entity, 30), arc),
                         entity.style.color, entity.style.inherits);
}

void SceneEntityReader::readEllipse(Entity& entity) {
    // Centre and major axis are in world coordinates; the minor axis is the normal crossed with
    // the major one, times the ratio.
    const double mx = m_fields.real(11, 1);
    const double my = m_fields.real(21, 0);
    const double mz = m_fields.real(31, 0);
    const double nx = m_fields.real(210, 0);
    const double ny = m_fields.real(220, 0);
    const double nz = m_fields.real(230, 1);
    const double length = std::sqrt(nx * nx + ny * ny + nz * nz);
    const double ratio = m_fields.real(40, 1);
    const double k = length > 0 ? ratio / length : ratio;
    const ScenePoint minor{(ny * mz - nz * my) * k, (nz * mx - nx * mz) * k};
    const double start = m_fields.real(41, 0);
    const double end = endAfter(start, m_fields.real(42, kTurn));
    const SceneArc arc{{m_fields.real(10, 0), m_fields.real(20, 0)},
                       {mx, my},
                       minor,
                       start,
                       std::min(end, start + kTurn)};
    entity.shape->addArc(arc, entity.style.color, entity.style.inherits);
}

void SceneEntityReader::readLwPolyline(Entity& entity) {
    const DxfTagRange tags = tagsAt(entity, 0);
    std::vector<SceneBulgeVertex> vertices;
    for (std::uint32_t i = 1; i < tags.size(); ++i) {
        const std::uint32_t tag = tags[i];
        switch (m_file.code(tag)) {
            case 10:
                vertices.push_back({{sceneReal(m_file, tag, 0), 0}, 0});
                break;
            case 20:
                if (!vertices.empty()) vertices.back().point.y = sceneReal(m_file, tag, 0);
                break;
            case 42:
                if (!vertices.empty()) vertices.back().bulge = sceneReal(m_file, tag, 0);
                break;
            default:
                break;
        }
        if (m_file.code(tag) >= 1000) break;
    }
    const bool closed = (m_fields.integer(70, 0) & kClosed) != 0;
    addBulgedPolyline(*entity.shape, vertices, closed, ocsTransform(entity, 38),
                      entity.style.color, entity.style.inherits);
}

void SceneEntityReader::readPolyline(Entity& entity) {
    const std::int64_t flags = m_fields.integer(70, 0);
    const double elevation = m_fields.real(30, 0);
    const std::int64_t meshM = m_fields.integer(71, 0);
    const std::int64_t meshN = m_fields.integer(72, 0);
    const SceneOcs ocs = entity.ocs;
    const bool planar = (flags & (kPolyline3d | kPolygonMesh | kPolyfaceMesh)) == 0;
    std::vector<SceneBulgeVertex> vertices;
    struct Face {
        std::int64_t corners[4];
    };
    std::vector<Face> faces;
    std::size_t offset = 1;
    SceneFields& vertex = m_partFields;
    for (; entity.at + offset < entity.ids.size(); ++offset) {
        const std::string_view type = typeAt(entity, offset);
        if (type == "SEQEND") {
            ++offset;
            break;
        }
        if (type != "VERTEX") break;
        vertex.read(m_file, tagsAt(entity, offset));
        const std::int64_t vertexFlags = vertex.integer(70, 0);
        if ((vertexFlags & kSplineFrame) != 0) continue;
        if ((flags & kPolyfaceMesh) != 0 && (vertexFlags & kFaceRecord) != 0 &&
            (vertexFlags & kHasPosition) == 0) {
            faces.push_back({{vertex.integer(71, 0), vertex.integer(72, 0), vertex.integer(73, 0),
                              vertex.integer(74, 0)}});
            continue;
        }
        vertices.push_back(
            {{vertex.real(10, 0), vertex.real(20, 0)}, planar ? vertex.real(42, 0) : 0.0});
    }
    entity.records = offset;
    const Style& style = entity.style;
    SceneShape& shape = *entity.shape;
    if (planar) {
        addBulgedPolyline(shape, vertices, (flags & kClosed) != 0, ocs.transform(elevation),
                          style.color, style.inherits);
        return;
    }
    if ((flags & kPolyfaceMesh) != 0) {
        // Each face joins up to four vertices (1-based; negative marks a hidden edge).
        for (const Face& face : faces) {
            std::vector<ScenePoint> corners;
            for (const std::int64_t corner : face.corners) {
                const std::int64_t index = std::abs(corner) - 1;
                if (index >= 0 && index < static_cast<std::int64_t>(vertices.size()))
                    corners.push_back(vertices[static_cast<std::size_t>(index)].point);
            }
            if (corners.size() > 1)
                shape.addPath(corners, corners.size() > 2, style.color, style.inherits);
        }
        return;
    }
    if ((flags & kPolygonMesh) != 0 && meshM > 1 && meshN > 1 &&
        static_cast<std::int64_t>(vertices.size()) >= meshM * meshN) {
        auto at = [&](std::int64_t m, std::int64_t n) {
            return vertices[static_cast<std::size_t>(m * meshN + n)].point;
        };
        std::vector<ScenePoint> line;
        for (std::int64_t m = 0; m < meshM; ++m) {
            line.clear();
            for (std::int64_t n = 0; n < meshN; ++n) line.push_back(at(m, n));
            shape.addPath(line, (flags & kMeshClosedN) != 0, style.color, style.inherits);
        }
        for (std::int64_t n = 0; n < meshN; ++n) {
            line.clear();
            for (std::int64_t m = 0; m < meshM; ++m) line.push_back(at(m, n));
            shape.addPath(line, (flags & kClosed) != 0, style.color, style.inherits);
        }
        return;
    }
    // A 3D polyline (world coordinates), seen from above.
    addBulgedPolyline(shape, vertices, (flags & kClosed) != 0, SceneTransform(), style.color,
                      style.inherits);
}

void SceneEntityReader::readSolid(Entity& entity) {
    // The corners go 1, 2, 4, 3 around; a triangle repeats its third corner as the fourth.
    const SceneTransform toWorld = ocsTransform(entity, 30);
    ScenePoint corner[4];
    for (int i = 0; i < 4; ++i) {
        const int code = 10 + i;
        corner[i] = {m_fields.real(code, 0), m_fields.real(code + 10, 0)};
    }
    if (!m_fields.has(13)) corner[3] = corner[2];
    std::vector<ScenePoint> outline{toWorld.map(corner[0]), toWorld.map(corner[1]),
                                    toWorld.map(corner[3])};
    if (!(corner[3] == corner[2])) outline.push_back(toWorld.map(corner[2]));
    entity.shape->addPath(outline, true, entity.style.color, entity.style.inherits);
}

void SceneEntityReader::readFace(Entity& entity) {
    std::vector<ScenePoint> outline;
    for (int i = 0; i < 4; ++i) {
        const int code = 10 + i;
        const ScenePoint p{m_fields.real(code, 0), m_fields.real(code + 10, 0)};
        if (outline.empty() || !(outline.back() == p)) outline.push_back(p);
    }
    entity.shape->addPath(outline, outline.size() > 2, entity.style.color, entity.style.inherits);
}

void SceneEntityReader::readSpline(Entity& entity) {
    const DxfTagRange tags = tagsAt(entity, 0);
    std::vector<double> knots;
    std::vector<double> weights;
    std::vector<ScenePoint> control;
    std::vector<ScenePoint> fit;
    for (std::uint32_t i = 1; i < tags.size(); ++i) {
        const std::uint32_t tag = tags[i];
        const int code = m_file.code(tag);
        if (code >= 1000) break;
        const double value = code >= 10 && code < 60 ? sceneReal(m_file, tag, 0) : 0.0;
        switch (code) {
            case 40:
                knots.push_back(value);
                break;
            case 41:
                weights.push_back(value);
                break;
            case 10:
                control.push_back({value, 0});
                break;
            case 20:
                if (!control.empty()) control.back().y = value;
                break;
            case 11:
                fit.push_back({value, 0});
                break;
            case 21:
                if (!fit.empty()) fit.back().y = value;
                break;
            default:
                break;
        }
    }
    const int degree = static_cast<int>(m_fields.integer(71, 3));
    const int segments = static_cast<int>(std::clamp<std::size_t>(control.size() * 8, 8, 1024));
    const bool rational = !weights.empty() && weights.size() == control.size();
    std::vector<ScenePoint> points =
        bsplinePoints(degree, knots, control, rational ? weights : std::vector<double>{}, segments);
    if (points.empty()) points = fit.size() > 1 ? fit : control;
    entity.shape->addPath(points, false, entity.style.color, entity.style.inherits);
}

void SceneEntityReader::readLeader(Entity& entity) {
    const DxfTagRange tags = tagsAt(entity, 0);
    std::vector<ScenePoint> points;
    for (std::uint32_t i = 1; i < tags.size(); ++i) {
        const std::uint32_t tag = tags[i];
        const int code = m_file.code(tag);
        if (code >= 1000) break;
        if (code == 10) points.push_back({sceneReal(m_file, tag, 0), 0});
        if (code == 20 && !points.empty()) points.back().y = sceneReal(m_file, tag, 0);
    }
    entity.shape->addPath(points, false, entity.style.color, entity.style.inherits);
}

void SceneEntityReader::readImage(Entity& entity) {
    // The picture's frame: from the insertion point along its pixel vectors, times its size in
    // pixels. The picture itself is not shown.
    const ScenePoint origin{m_fields.real(10, 0), m_fields.real(20, 0)};
    const double width = m_fields.real(13, 1);
    const double height = m_fields.real(23, 1);
    const ScenePoint u = ScenePoint{m_fields.real(11, 1), m_fields.real(21, 0)} * width;
    const ScenePoint v = ScenePoint{m_fields.real(12, 0), m_fields.real(22, 1)} * height;
    const ScenePoint corners[] = {origin, origin + u, origin + u + v, origin + v};
    entity.shape->addPath(corners, true, entity.style.color, entity.style.inherits);
}
