// The AutoCAD Color Index. Colours 10 to 249 step round the hue circle in 15-degree steps, ten to a
// hue: five brightness levels, each at full and at half saturation; 250 to 255 are greys.
#include "host/desktop/scene/acipalette.h"

#include <array>

namespace {

constexpr SceneRgb rgb(int r, int g, int b) {
    return static_cast<SceneRgb>((r << 16) | (g << 8) | b);
}

// A colour of the hue circle: hue in steps of 15 degrees, value 0..255, saturation full or half.
constexpr SceneRgb hueColor(int hueStep, double value, bool pastel) {
    const double low = pastel ? value / 2 : 0.0;
    const double sector = hueStep / 4.0;  // 60 degrees a sector
    const int i = static_cast<int>(sector);
    const double f = sector - i;
    const double rising = low + (value - low) * f;
    const double falling = value - (value - low) * f;
    double r = 0, g = 0, b = 0;
    switch (i % 6) {
        case 0:
            r = value, g = rising, b = low;
            break;
        case 1:
            r = falling, g = value, b = low;
            break;
        case 2:
            r = low, g = value, b = rising;
            break;
        case 3:
            r = low, g = falling, b = value;
            break;
        case 4:
            r = rising, g = low, b = value;
            break;
        default:
            r = value, g = low, b = falling;
            break;
    }
    return rgb(static_cast<int>(r), static_cast<int>(g), static_cast<int>(b));
}

constexpr std::array<SceneRgb, 256> makePalette() {
    std::array<SceneRgb, 256> palette{};
    palette[0] = kSceneForeground;
    const SceneRgb basics[] = {rgb(255, 0, 0),   rgb(255, 255, 0),   rgb(0, 255, 0),
                               rgb(0, 255, 255), rgb(0, 0, 255),     rgb(255, 0, 255),
                               kSceneForeground, rgb(128, 128, 128), rgb(192, 192, 192)};
    for (int i = 0; i < 9; ++i) palette[static_cast<std::size_t>(i + 1)] = basics[i];
    constexpr double kValues[] = {255, 204, 153, 127, 76};
    for (int index = 10; index < 250; ++index) {
        const int step = (index - 10) / 10;
        const int shade = (index - 10) % 10;
        palette[static_cast<std::size_t>(index)] =
            hueColor(step, kValues[shade / 2], shade % 2 == 1);
    }
    const int greys[] = {51, 80, 105, 130, 190, 255};
    for (int i = 0; i < 6; ++i)
        palette[static_cast<std::size_t>(250 + i)] = rgb(greys[i], greys[i], greys[i]);
    return palette;
}

constexpr std::array<SceneRgb, 256> kPalette = makePalette();

}  // namespace

SceneRgb aciColor(int index) {
    if (index < 1 || index > 255) return kSceneForeground;
    return kPalette[static_cast<std::size_t>(index)];
}
