// Colour conversion and the system colours of the widget palette.
#include "grid/UGPalette.h"

#include <QPalette>

#include "grid/UGSysColor.h"

QColor UGToQColor(COLORREF color) {
    return QColor(static_cast<int>(GetRValue(color)), static_cast<int>(GetGValue(color)),
                  static_cast<int>(GetBValue(color)));
}

COLORREF UGFromQColor(const QColor& color) {
    return RGB(static_cast<unsigned>(color.red()), static_cast<unsigned>(color.green()),
               static_cast<unsigned>(color.blue()));
}

void UGLoadSysColors(const QPalette& palette) {
    const struct {
        int index;
        QPalette::ColorGroup group;
        QPalette::ColorRole role;
    } map[] = {
        {COLOR_WINDOW, QPalette::Active, QPalette::Base},
        {COLOR_WINDOWTEXT, QPalette::Active, QPalette::Text},
        {COLOR_HIGHLIGHT, QPalette::Active, QPalette::Highlight},
        {COLOR_HIGHLIGHTTEXT, QPalette::Active, QPalette::HighlightedText},
        {COLOR_BTNFACE, QPalette::Active, QPalette::Button},
        {COLOR_BTNSHADOW, QPalette::Active, QPalette::Mid},
        {COLOR_GRAYTEXT, QPalette::Disabled, QPalette::Text},
        {COLOR_BTNTEXT, QPalette::Active, QPalette::ButtonText},
        {COLOR_BTNHIGHLIGHT, QPalette::Active, QPalette::Light},
        {COLOR_3DDKSHADOW, QPalette::Active, QPalette::Dark},
        {COLOR_3DLIGHT, QPalette::Active, QPalette::Midlight},
        {COLOR_INFOBK, QPalette::Active, QPalette::ToolTipBase},
    };
    for (const auto& m : map) SetSysColor(m.index, UGFromQColor(palette.color(m.group, m.role)));
}

QColor UGBlend(const QColor& bottom, const QColor& top, double opacity) {
    auto mix = [opacity](int b, int t) { return static_cast<int>(b + (t - b) * opacity + 0.5); };
    return QColor(mix(bottom.red(), top.red()), mix(bottom.green(), top.green()),
                  mix(bottom.blue(), top.blue()));
}
