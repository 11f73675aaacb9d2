// The arbitrary axis algorithm: the OCS x axis is the world Y or Z axis crossed with the normal,
// whichever is far enough from it; y completes the right-handed system.
#include "host/desktop/scene/sceneocs.h"

#include <cmath>

namespace {

void cross(const double a[3], const double b[3], double out[3]) {
    out[0] = a[1] * b[2] - a[2] * b[1];
    out[1] = a[2] * b[0] - a[0] * b[2];
    out[2] = a[0] * b[1] - a[1] * b[0];
}

void normalize(double v[3]) {
    const double length = std::sqrt(v[0] * v[0] + v[1] * v[1] + v[2] * v[2]);
    if (length == 0.0) return;
    for (int i = 0; i < 3; ++i) v[i] /= length;
}

}  // namespace

SceneOcs::SceneOcs(double nx, double ny, double nz) {
    double n[3] = {nx, ny, nz};
    normalize(n);
    if (!(std::isfinite(n[0]) && std::isfinite(n[1]) && std::isfinite(n[2])) ||
        (n[0] == 0 && n[1] == 0 && n[2] >= 0))
        return;  // the world's axes, or a normal too broken to use
    m_world = false;
    for (int i = 0; i < 3; ++i) m_n[i] = n[i];
    constexpr double kLimit = 1.0 / 64;
    const double worldY[3] = {0, 1, 0};
    const double worldZ[3] = {0, 0, 1};
    if (std::abs(n[0]) < kLimit && std::abs(n[1]) < kLimit) {
        cross(worldY, n, m_ax);
    } else {
        cross(worldZ, n, m_ax);
    }
    normalize(m_ax);
    cross(n, m_ax, m_ay);
    normalize(m_ay);
}

SceneTransform SceneOcs::transform(double z) const {
    if (m_world) return {};
    const ScenePoint origin = toWorld(0, 0, z);
    return {m_ax[0], m_ax[1], m_ay[0], m_ay[1], origin.x, origin.y};
}
