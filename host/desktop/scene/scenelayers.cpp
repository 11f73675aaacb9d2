// Reading the LAYER table: colour (62, or true colour 420), off (a negative 62) and frozen (70).
#include "host/desktop/scene/scenelayers.h"

#include <cstdlib>

#include "host/desktop/scene/acipalette.h"
#include "host/dxf/dxfdocument.h"
#include "host/dxf/dxfviews.h"

namespace {

constexpr std::int64_t kFrozen = 1;

}  // namespace

SceneLayers::SceneLayers() {
    add("0", SceneLayer{L"0"});
    m_layers.push_back(SceneLayer{});
    m_unknown = 1;
}

SceneLayers::SceneLayers(const DxfDocument& document) {
    const DxfTagFile& file = document.tagFile();
    for (const AcDbObjectId id : document.tableEntryIds("LAYER")) {
        const DxfTagRange tags = document.tagsOf(id);
        std::string_view name;
        SceneLayer layer;
        std::int64_t aci = 7;
        std::optional<std::int64_t> trueColor;
        for (std::uint32_t i = 1; i < tags.size(); ++i) {
            const std::uint32_t tag = tags[i];
            switch (file.code(tag)) {
                case 2:
                    name = file.value(tag);
                    break;
                case 62:
                    aci = file.integer(tag).value_or(7);
                    break;
                case 70:
                    layer.frozen = (file.integer(tag).value_or(0) & kFrozen) != 0;
                    break;
                case 420:
                    trueColor = file.integer(tag);
                    break;
                default:
                    break;
            }
        }
        layer.off = aci < 0;
        layer.color = trueColor ? static_cast<SceneRgb>(*trueColor & 0xFFFFFF)
                                : aciColor(static_cast<int>(std::abs(aci)));
        layer.name = document.decodeText(name);
        add(name, std::move(layer));
    }
    if (m_byName.find("0") == m_byName.end()) add("0", SceneLayer{L"0"});
    m_zero = m_byName.at("0");
    m_layers.push_back(SceneLayer{});
    m_unknown = m_layers.size() - 1;
}

void SceneLayers::add(std::string_view nameBytes, SceneLayer layer) {
    m_layers.push_back(std::move(layer));
    m_byName.emplace(folded(nameBytes), m_layers.size() - 1);
}

std::string SceneLayers::folded(std::string_view bytes) {
    std::string out(bytes);
    for (char& c : out) {
        if (c >= 'a' && c <= 'z') c = static_cast<char>(c - 'a' + 'A');
    }
    return out;
}

std::size_t SceneLayers::find(std::string_view nameBytes) const {
    if (nameBytes.empty()) return m_zero;
    const auto it = m_byName.find(folded(nameBytes));
    return it == m_byName.end() ? m_unknown : it->second;
}
