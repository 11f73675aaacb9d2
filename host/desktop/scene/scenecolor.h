// Colours of the scene: 0xRRGGBB values, the drawing's foreground colour, and where an entity
// inside a block takes its colour from.
#pragma once

#include <cstdint>

using SceneRgb = std::uint32_t;

// ACI 7 and BYBLOCK at the top level: white on a dark background, black on a light one.
inline constexpr SceneRgb kSceneForeground = 0xFF000000u;

// Fixed: the colour is known when the scene is built. ByBlock: the colour of the reference that
// shows the block. ByLayer: the colour of the reference's layer, for entities on layer 0 inside a
// block (they inherit the reference's layer).
enum class SceneColorSource : std::uint8_t { Fixed, ByBlock, ByLayer };

struct SceneColor {
    SceneRgb rgb = kSceneForeground;
    SceneColorSource source = SceneColorSource::Fixed;
    friend bool operator==(const SceneColor&, const SceneColor&) = default;
};
