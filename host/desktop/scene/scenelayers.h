// The drawing's layers as the view needs them: colour, and whether entities on them are shown.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "host/desktop/scene/scenecolor.h"

class DxfDocument;

struct SceneLayer {
    std::wstring name;
    SceneRgb color = kSceneForeground;
    bool frozen = false;  // flag 1 of code 70: nothing on it is drawn, not even inside blocks
    bool off = false;     // a negative colour: its own entities are hidden
    bool isShown() const { return !frozen && !off; }
};

class SceneLayers {
public:
    SceneLayers();  // layer 0 alone
    explicit SceneLayers(const DxfDocument& document);

    std::size_t size() const { return m_layers.size(); }
    const SceneLayer& layer(std::size_t index) const { return m_layers[index]; }
    std::size_t layerZero() const { return m_zero; }
    // The layer an entity names with the bytes of its code 8, found without regard to ASCII case.
    // An empty name is layer 0; a name the table lacks gets a shown layer in the foreground
    // colour, as CAD programs make one for such entities.
    std::size_t find(std::string_view nameBytes) const;

private:
    void add(std::string_view nameBytes, SceneLayer layer);
    static std::string folded(std::string_view bytes);

    std::vector<SceneLayer> m_layers;
    std::unordered_map<std::string, std::size_t> m_byName;  // folded name bytes
    std::size_t m_zero = 0;
    std::size_t m_unknown = 0;
};
