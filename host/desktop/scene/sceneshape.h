// What the view draws, in one pool per block definition and per part of a space: open and closed
// point paths, elliptic arcs, text runs, dots, and references to other shapes with a transform.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "host/api/acdbobjectid.h"
#include "host/desktop/scene/scenecolor.h"
#include "host/desktop/scene/scenegeometry.h"

enum class ScenePrimitiveKind : std::uint8_t { Path, Arc, Text, Dot, Reference };

struct ScenePath {
    std::uint32_t first = 0;  // in SceneShape::points
    std::uint32_t count = 0;
    bool closed = false;
};

// center + u cos t + v sin t for t from start to end (start < end). Any affine map keeps this form,
// so circles, arcs and ellipses stay exact under block transforms and are split into segments only
// when drawn, as finely as their size on the screen asks.
struct SceneArc {
    ScenePoint center;
    ScenePoint u;
    ScenePoint v;
    double start = 0.0;
    double end = 0.0;
    ScenePoint at(double t) const;
};

// Where a text run's characters come from: read from its entity when drawn, so the scene keeps no
// copy of every string.
enum class SceneTextContent : std::uint8_t {
    Value,  // code 1 (TEXT, ATTRIB)
    Tag,    // code 2: an attribute definition outside a block shows its tag
    MText,  // codes 3 and 1, with inline formatting
};
enum class SceneHorizontal : std::uint8_t { Left, Center, Right, Aligned, Fit };
enum class SceneVertical : std::uint8_t { Baseline, Bottom, Middle, Top };

struct SceneText {
    // Glyph space to the shape's space: one unit is the text height (a capital's height), the
    // first baseline runs along x from the origin, y points up.
    SceneTransform frame;
    AcDbObjectId source;
    SceneTextContent content = SceneTextContent::Value;
    SceneHorizontal horizontal = SceneHorizontal::Left;
    SceneVertical vertical = SceneVertical::Baseline;
    double fitWidth = 0.0;           // Aligned and Fit: the run's length, in glyph units
    double wrapWidth = 0.0;          // MTEXT: paragraphs wrap at this width; 0 never
    double lineSpacing = 5.0 / 3.0;  // baseline to baseline, in glyph units
    std::uint32_t lineCount = 1;
    std::uint32_t longestLine = 0;  // characters, for the box before the text is laid out
    // The run's box in glyph space before it is laid out with a font: what extents and hit tests
    // use.
    SceneRect estimatedBox() const;
};

struct SceneReference {
    SceneTransform transform;  // block space to the space of the shape holding the reference
    std::uint32_t shape = 0;   // the block's shape
    // The reference's own layer (in SceneLayers), unless it lies on layer 0 inside a block and
    // takes the layer of the reference that shows that block.
    std::uint16_t layer = 0;
};

struct ScenePrimitive {
    std::uint32_t index = 0;  // into the list of its kind (for dots, into points)
    SceneRgb rgb = kSceneForeground;
    SceneColorSource source = SceneColorSource::Fixed;
    ScenePrimitiveKind kind = ScenePrimitiveKind::Path;
    // On layer 0 inside a block: shown or hidden with the layer of the reference that shows it.
    bool inheritsLayer = false;
    SceneColor color() const { return {rgb, source}; }
};

struct SceneShape {
    std::vector<ScenePoint> points;
    std::vector<ScenePath> paths;
    std::vector<SceneArc> arcs;
    std::vector<SceneText> texts;
    std::vector<SceneReference> references;
    std::vector<ScenePrimitive> primitives;
    SceneRect bounds;  // of every primitive, references included

    std::uint32_t primitiveCount() const { return static_cast<std::uint32_t>(primitives.size()); }
    void addPath(std::span<const ScenePoint> path, bool closed, SceneColor color, bool inherits);
    void addArc(const SceneArc& arc, SceneColor color, bool inherits);
    void addText(const SceneText& text, SceneColor color, bool inherits);
    void addDot(ScenePoint point, SceneColor color, bool inherits);
    void addReference(const SceneReference& reference, SceneColor color, bool inherits);
    void clear();
};

// The box of a primitive in its shape's space; references look up their block's bounds.
SceneRect primitiveBounds(const SceneShape& shape, const ScenePrimitive& primitive,
                          std::span<const SceneRect> blockBounds);
SceneRect arcBounds(const SceneArc& arc);
