// The object coordinate system of planar entities (circles, arcs, polylines, text, references):
// the arbitrary axis algorithm of DXF, seen from above (plan view, Z dropped).
#pragma once

#include "host/desktop/scene/scenegeometry.h"

class SceneOcs {
public:
    SceneOcs() = default;  // the world's own axes
    SceneOcs(double nx, double ny, double nz);

    bool isWorld() const { return m_world; }
    ScenePoint toWorld(double x, double y, double z = 0.0) const {
        if (m_world) return {x, y};
        return {m_ax[0] * x + m_ay[0] * y + m_n[0] * z, m_ax[1] * x + m_ay[1] * y + m_n[1] * z};
    }
    // OCS x, y (at height z) to plan-view world.
    SceneTransform transform(double z = 0.0) const;

private:
    bool m_world = true;
    double m_ax[3] = {1, 0, 0};
    double m_ay[3] = {0, 1, 0};
    double m_n[3] = {0, 0, 1};
};
