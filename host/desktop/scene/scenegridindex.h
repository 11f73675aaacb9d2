// A loose grid of several levels over the boxes of a space's entities: each box sits in one cell
// of the finest level whose cells are at least its size, so a query looks at few cells and meets
// every box once. Built in one counting pass; boxes added later wait in a short list. The index
// keeps item numbers only: the boxes stay with their owner, which hands them over on each call.
#pragma once

#include <algorithm>
#include <cstdint>
#include <span>
#include <vector>

#include "host/desktop/scene/scenegeometry.h"

// Boxes numbered across lists laid end to end, as a scene keeps them (a list a part).
class SceneBoxLists {
public:
    void add(std::span<const SceneRect> list) {
        m_lists.push_back(list);
        m_starts.push_back(m_size);
        m_size += static_cast<std::uint32_t>(list.size());
    }
    std::uint32_t size() const { return m_size; }
    const SceneRect& operator[](std::uint32_t i) const {
        std::size_t l = m_lists.size() - 1;
        while (l > 0 && m_starts[l] > i) --l;
        return m_lists[l][i - m_starts[l]];
    }
    // Visits the boxes begin..end-1 in order.
    template <typename Visit>
    void forEach(std::uint32_t begin, std::uint32_t end, Visit visit) const {
        for (std::size_t l = 0; l < m_lists.size(); ++l) {
            const std::uint32_t first = std::max(begin, m_starts[l]);
            const std::uint32_t last =
                std::min(end, m_starts[l] + static_cast<std::uint32_t>(m_lists[l].size()));
            for (std::uint32_t i = first; i < last; ++i) visit(i, m_lists[l][i - m_starts[l]]);
        }
    }

private:
    std::vector<std::span<const SceneRect>> m_lists;
    std::vector<std::uint32_t> m_starts;
    std::uint32_t m_size = 0;
};

class SceneGridIndex {
public:
    using Boxes = SceneBoxLists;

    // Items 0..boxes.size()-1, all within `all`; empty boxes are left out. The cells of the
    // items are found by up to `threads` threads.
    void build(const Boxes& boxes, const SceneRect& all, unsigned threads = 1);
    void insert(std::uint32_t item, const SceneRect& box);
    // Appends the items whose box meets `rect`, each once, in no particular order.
    void query(const SceneRect& rect, const Boxes& boxes, std::vector<std::uint32_t>& out) const;

    std::size_t size() const { return m_items.size() + m_added.size(); }
    int levels() const { return m_levels; }

private:
    // The cell (numbered over all levels) that holds a box.
    std::uint32_t cellOf(const SceneRect& box) const;

    double m_originX = 0.0;
    double m_originY = 0.0;
    double m_size = 1.0;  // the side of the one cell of level 0
    int m_levels = 0;
    std::vector<std::uint32_t> m_levelStart;  // first cell of each level
    std::vector<std::uint32_t> m_cellStart;   // first item of each cell, then the item count
    std::vector<std::uint32_t> m_items;       // ordered by cell
    // Boxes of the items in the coarse levels, in the order of m_items: a query walks all of
    // them often, and close together they are quicker to test than the owner's scattered ones.
    // Kept exact, so that the owner's are never looked at for these.
    std::vector<SceneRect> m_coarse;
    std::uint32_t m_coarseItems = 0;  // items in the coarse levels, the first of m_items
    std::vector<std::uint32_t> m_added;
};
