// Building the grid with a counting sort, and walking the cells a rectangle covers.
#include "host/desktop/scene/scenegridindex.h"

#include <bit>
#include <cmath>
#include <thread>

namespace {

// 256 x 256 cells at the finest level: some twenty items a cell for a million, and a cell table
// small enough to stay in the cache while it is filled.
constexpr int kMaxLevels = 9;
// Levels whose cells are an eighth of the grid or larger keep their items' boxes at hand.
constexpr int kCoarseLevels = 4;

std::uint32_t clampedCell(double offset, double cellsPerUnit, std::uint32_t cells) {
    const double index = offset * cellsPerUnit;
    if (!(index > 0)) return 0;
    if (index >= cells) return cells - 1;
    return static_cast<std::uint32_t>(index);  // truncation is the floor of what is positive
}

// floor(log2(x)) for a positive, finite x, read from the double's exponent bits.
int binaryExponent(double x) {
    const auto bits = std::bit_cast<std::uint64_t>(x);
    const auto exponent = static_cast<int>((bits >> 52) & 0x7FF);
    return exponent == 0 ? -1023 : exponent - 1023;
}

}  // namespace

std::uint32_t SceneGridIndex::cellOf(const SceneRect& box) const {
    const double extent = std::max(box.maxX - box.minX, box.maxY - box.minY);
    int level = m_levels - 1;
    if (extent > 0) {
        // The finest level whose cells are no smaller than the box: 2^level <= size / extent.
        const double ratio = m_size / extent;
        const int fits = std::isfinite(ratio) ? binaryExponent(ratio) : m_levels;
        level = fits < 0 ? 0 : std::min(m_levels - 1, fits);
    }
    const std::uint32_t cells = 1u << level;
    const double perUnit = cells / m_size;
    const std::uint32_t x = clampedCell((box.minX + box.maxX) / 2 - m_originX, perUnit, cells);
    const std::uint32_t y = clampedCell((box.minY + box.maxY) / 2 - m_originY, perUnit, cells);
    return m_levelStart[static_cast<std::size_t>(level)] + y * cells + x;
}

void SceneGridIndex::build(const Boxes& boxes, const SceneRect& all, unsigned threads) {
    m_items.clear();
    m_added.clear();
    m_originX = all.isEmpty() ? 0.0 : all.minX;
    m_originY = all.isEmpty() ? 0.0 : all.minY;
    m_size = std::max(all.width(), all.height());
    if (!(m_size > 0) || !std::isfinite(m_size)) m_size = 1.0;
    // About sixteen items a cell at the finest level when they spread evenly.
    const std::uint32_t count = boxes.size();
    m_levels = 1;
    while (m_levels < kMaxLevels && (std::size_t{1} << (2 * (m_levels - 1))) * 16 < count)
        ++m_levels;
    m_levelStart.assign(static_cast<std::size_t>(m_levels) + 1, 0);
    for (int level = 0; level < m_levels; ++level)
        m_levelStart[static_cast<std::size_t>(level) + 1] =
            m_levelStart[static_cast<std::size_t>(level)] + (1u << (2 * level));
    const std::uint32_t cellCount = m_levelStart.back();

    // The cell of each item, in shares side by side; then a counting sort by cell.
    constexpr std::uint32_t kNoCell = ~0u;
    std::vector<std::uint32_t> cellOfItem(count, kNoCell);
    auto findCells = [&](std::uint32_t begin, std::uint32_t end) {
        boxes.forEach(begin, end, [&](std::uint32_t i, const SceneRect& box) {
            if (!box.isEmpty()) cellOfItem[i] = cellOf(box);
        });
    };
    const unsigned shares = std::max(1u, std::min(threads, count / 2048 + 1));
    {
        std::vector<std::jthread> workers;
        for (unsigned t = 1; t < shares; ++t)
            workers.emplace_back(findCells, count / shares * t,
                                 t + 1 == shares ? count : count / shares * (t + 1));
        findCells(0, shares == 1 ? count : count / shares);
    }
    m_cellStart.assign(static_cast<std::size_t>(cellCount) + 1, 0);
    std::uint32_t filled = 0;
    for (const std::uint32_t cell : cellOfItem) {
        if (cell == kNoCell) continue;
        ++m_cellStart[cell + 1];
        ++filled;
    }
    for (std::uint32_t c = 0; c < cellCount; ++c) m_cellStart[c + 1] += m_cellStart[c];
    m_items.resize(filled);
    std::vector<std::uint32_t> next(m_cellStart.begin(), m_cellStart.end() - 1);
    for (std::uint32_t i = 0; i < count; ++i) {
        if (cellOfItem[i] != kNoCell) m_items[next[cellOfItem[i]]++] = i;
    }
    const int coarse = std::min(kCoarseLevels, m_levels);
    m_coarseItems = m_cellStart[m_levelStart[static_cast<std::size_t>(coarse)]];
    m_coarse.resize(m_coarseItems);
    for (std::uint32_t i = 0; i < m_coarseItems; ++i) m_coarse[i] = boxes[m_items[i]];
}

void SceneGridIndex::insert(std::uint32_t item, const SceneRect& box) {
    if (!box.isEmpty()) m_added.push_back(item);
}

void SceneGridIndex::query(const SceneRect& rect, const Boxes& boxes,
                           std::vector<std::uint32_t>& out) const {
    if (rect.isEmpty()) return;
    for (int level = 0; level < m_levels && !m_items.empty(); ++level) {
        const std::uint32_t cells = 1u << level;
        const double perUnit = cells / m_size;
        const double half = m_size / cells / 2;
        // A box lies within its cell grown by half a cell on every side.
        const std::uint32_t x0 = clampedCell(rect.minX - half - m_originX, perUnit, cells);
        const std::uint32_t x1 = clampedCell(rect.maxX + half - m_originX, perUnit, cells);
        const std::uint32_t y0 = clampedCell(rect.minY - half - m_originY, perUnit, cells);
        const std::uint32_t y1 = clampedCell(rect.maxY + half - m_originY, perUnit, cells);
        const std::uint32_t base = m_levelStart[static_cast<std::size_t>(level)];
        for (std::uint32_t y = y0; y <= y1; ++y) {
            const std::uint32_t row = base + y * cells;
            const std::uint32_t end = m_cellStart[row + x1 + 1];
            for (std::uint32_t i = m_cellStart[row + x0]; i < end; ++i) {
                const SceneRect& box = i < m_coarseItems ? m_coarse[i] : boxes[m_items[i]];
                if (box.intersects(rect)) out.push_back(m_items[i]);
            }
        }
    }
    for (const std::uint32_t item : m_added) {
        if (boxes[item].intersects(rect)) out.push_back(item);
    }
}
