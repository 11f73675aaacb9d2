// Exclusive-or vectors cancel in pairs.
#include "host/desktop/view/overlayvectors.h"

#include <algorithm>

void OverlayVectors::draw(const OverlayVector& vector) {
    if (vector.color == -1) {
        const auto same = std::find_if(m_vectors.begin(), m_vectors.end(), [&](const auto& v) {
            return v.color == -1 && ((v.from == vector.from && v.to == vector.to) ||
                                     (v.from == vector.to && v.to == vector.from));
        });
        if (same != m_vectors.end()) {
            m_vectors.erase(same);
            return;
        }
    }
    m_vectors.push_back(vector);
}
