// The temporary vectors editor code draws over the view (grDraw), kept as a CAD program keeps
// them: in exclusive-or ink (colour -1) drawing a vector again takes it away; other colours stay
// until the view is redrawn.
#pragma once

#include <vector>

#include "host/desktop/scene/scenegeometry.h"

struct OverlayVector {
    ScenePoint from;
    ScenePoint to;
    int color = -1;            // an ACI colour, or -1 for exclusive-or ink
    bool highlighted = false;  // drawn dashed
    friend bool operator==(const OverlayVector&, const OverlayVector&) = default;
};

class OverlayVectors {
public:
    // An exclusive-or vector that is already there (either way round, any highlight) goes, as
    // its pixels would flip back; anything else is added.
    void draw(const OverlayVector& vector);
    void clear() { m_vectors.clear(); }
    const std::vector<OverlayVector>& vectors() const { return m_vectors; }
    bool isEmpty() const { return m_vectors.empty(); }

private:
    std::vector<OverlayVector> m_vectors;
};
