// Bresenham's walk started at any step: after i steps along the major axis the minor one has moved
// m(i) = ceil((i * across - along / 2) / along) pixels, which finds where a line enters and leaves
// a band without walking to it.
#include "host/desktop/view/rasterbands.h"

#include <algorithm>
#include <atomic>
#include <cstdlib>
#include <thread>

namespace {

// Lines run between pixels of an image less than 32768 pixels a side, so every product below
// fits 32 bits, and unsigned divisions of that width are the quick ones.
struct Walk {
    std::int64_t along = 0;   // pixels along the major axis
    std::int64_t across = 0;  // along the minor one
    std::int64_t half = 0;    // the error's start

    std::int64_t minorAfter(std::int64_t step) const {
        return static_cast<std::uint32_t>(step * across - half + along - 1) /
               static_cast<std::uint32_t>(along);
    }
    // The first step after which the minor axis has moved k >= 1 pixels (across > 0).
    std::int64_t firstStepWith(std::int64_t k) const {
        return static_cast<std::uint32_t>((k - 1) * along + half) /
                   static_cast<std::uint32_t>(across) +
               1;
    }
};

// Long runs are walked in fixed point rather than with Bresenham's error, whose branch goes
// either way at random on a slanting line.
constexpr int kFixedPointRun = 64;

// Writes the pixels of steps first..last of a walk from `origin` (step 0). The minor axis's
// offset after step i is floor((i * across + c) / along), c = along - 1 - along / 2: Bresenham's.
// Kept in 32.32 fixed point with the step and the start rounded up, it is over by less than
// i + 1 units, under 1 / along of a pixel for lines under 32768 pixels: every floor is exact.
void walkFixedPoint(QRgb* origin, std::ptrdiff_t majorStep, std::ptrdiff_t minorStep, int along,
                    int across, int first, int last, QRgb color) {
    const auto a = static_cast<std::uint64_t>(along);
    const std::uint64_t c = a - 1 - a / 2;
    const std::uint64_t step = ((static_cast<std::uint64_t>(across) << 32) + a - 1) / a;
    std::uint64_t offset = ((c << 32) + a - 1) / a + step * static_cast<std::uint64_t>(first);
    QRgb* at = origin + majorStep * first;
    for (int n = last - first + 1; n > 0; --n) {
        at[minorStep * static_cast<std::ptrdiff_t>(offset >> 32)] = color;
        at += majorStep;
        offset += step;
    }
}

// Bresenham's walk from one end to the other, every pixel written.
inline void plotWhole(QRgb* bits, std::ptrdiff_t stride, const RasterLine& line) {
    const int dx = std::abs(line.x1 - line.x0);
    const int dy = std::abs(line.y1 - line.y0);
    QRgb* at = bits + line.y0 * stride + line.x0;
    const QRgb color = line.color;
    *at = color;
    const std::ptrdiff_t sx = line.x0 < line.x1 ? 1 : -1;
    const std::ptrdiff_t sy = line.y0 < line.y1 ? stride : -stride;
    const bool xMajor = dx >= dy;
    const std::ptrdiff_t majorStep = xMajor ? sx : sy;
    const std::ptrdiff_t minorStep = xMajor ? sy : sx;
    const int along = xMajor ? dx : dy;
    const int across = xMajor ? dy : dx;
    if (along >= kFixedPointRun) {
        walkFixedPoint(at, majorStep, minorStep, along, across, 0, along, color);
        return;
    }
    int error = along / 2;
    for (int steps = along; steps > 0; --steps) {
        at += majorStep;
        error -= across;
        if (error < 0) {
            error += along;
            at += minorStep;
        }
        *at = color;
    }
}

// The part of a line crossing rows [top, bottom) that it does not lie within.
void plotPart(QRgb* bits, std::ptrdiff_t stride, const RasterLine& line, int top, int bottom) {
    const int x0 = line.x0;
    const int y0 = line.y0;
    const int dx = std::abs(line.x1 - x0);
    const int dy = std::abs(line.y1 - y0);
    const int sx = x0 < line.x1 ? 1 : -1;
    const int sy = y0 < line.y1 ? 1 : -1;
    const bool xMajor = dx >= dy;
    const Walk walk{xMajor ? dx : dy, xMajor ? dy : dx, (xMajor ? dx : dy) / 2};
    // The rows wanted, as steps of the axis that moves along them.
    const std::int64_t low = sy > 0 ? top - y0 : y0 - (bottom - 1);
    const std::int64_t high = sy > 0 ? bottom - 1 - y0 : y0 - top;
    std::int64_t first = 0;
    std::int64_t last = walk.along;
    if (xMajor) {
        if (high < 0 || low > walk.across) return;
        if (low > 0) first = walk.firstStepWith(low);
        if (high < walk.across) last = walk.firstStepWith(high + 1) - 1;
    } else {
        first = std::max<std::int64_t>(first, low);
        last = std::min(last, high);
    }
    if (first > last) return;
    const std::ptrdiff_t majorStep = xMajor ? sx : sy * stride;
    const std::ptrdiff_t minorStep = xMajor ? sy * stride : sx;
    if (last - first >= kFixedPointRun) {
        walkFixedPoint(bits + y0 * stride + x0, majorStep, minorStep, static_cast<int>(walk.along),
                       static_cast<int>(walk.across), static_cast<int>(first),
                       static_cast<int>(last), line.color);
        return;
    }
    const std::int64_t minor = first == 0 ? 0 : walk.minorAfter(first);
    const std::int64_t x = x0 + sx * (xMajor ? first : minor);
    const std::int64_t y = y0 + sy * (xMajor ? minor : first);
    auto error = static_cast<int>(walk.half - first * walk.across + minor * walk.along);
    const auto along = static_cast<int>(walk.along);
    const auto across = static_cast<int>(walk.across);
    const QRgb color = line.color;
    QRgb* at = bits + y * stride + x;
    *at = color;
    for (auto steps = static_cast<int>(last - first); steps > 0; --steps) {
        at += majorStep;
        error -= across;
        if (error < 0) {
            error += along;
            at += minorStep;
        }
        *at = color;
    }
}

// Most lines lie within the band: walked whole, with no divisions to find where they enter.
inline void plotInBand(QRgb* bits, std::ptrdiff_t stride, const RasterLine& line, int top,
                       int bottom) {
    const bool down = line.y0 <= line.y1;
    const int upper = down ? line.y0 : line.y1;
    const int lower = down ? line.y1 : line.y0;
    if (upper >= top && lower < bottom) {
        if (line.x0 == line.x1 && line.y0 == line.y1) {
            bits[line.y0 * stride + line.x0] = line.color;
        } else {
            plotWhole(bits, stride, line);
        }
        return;
    }
    if (lower < top || upper >= bottom) return;
    plotPart(bits, stride, line, top, bottom);
}

}  // namespace

void plotLine(QRgb* bits, std::ptrdiff_t stride, const RasterLine& line, int top, int bottom) {
    plotInBand(bits, stride, line, top, bottom);
}

void RasterBands::reset(int height) {
    const auto bands = static_cast<std::size_t>(std::max(0, height - 1) >> kBandShift) + 1;
    m_bands.resize(bands);
    for (Band& band : m_bands) band = Band{std::move(band.chunks), nullptr, nullptr};
    for (Band& band : m_bands) band.chunks.clear();
    m_used = 0;
}

void RasterBands::grow(Band& band) {
    if (m_used == m_chunks.size()) m_chunks.push_back(std::make_unique_for_overwrite<Chunk>());
    Chunk* chunk = m_chunks[m_used++].get();
    band.chunks.push_back(chunk);
    band.next = chunk->data();
    band.end = band.next + kChunkLines;
}

std::size_t RasterBands::lineCount() const {
    std::size_t count = 0;
    for (int band = 0; band < bandCount(); ++band) forEach(band, [&](const RasterLine&) { ++count; });
    return count;
}

void writeBands(QRgb* bits, std::ptrdiff_t stride, int height, std::span<const RasterBands> shares,
                unsigned threads) {
    if (shares.empty()) return;
    const int bands = shares.front().bandCount();
    std::atomic<int> next{0};
    auto work = [&] {
        for (int band = next++; band < bands; band = next++) {
            const int top = band << RasterBands::kBandShift;
            const int bottom = std::min(height, top + (1 << RasterBands::kBandShift));
            for (const RasterBands& share : shares) {
                share.forEach(band, [&](const RasterLine& line) {
                    plotInBand(bits, stride, line, top, bottom);
                });
            }
        }
    };
    const unsigned count = std::clamp(threads, 1u, static_cast<unsigned>(std::max(1, bands)));
    std::vector<std::jthread> workers;
    for (unsigned t = 1; t < count; ++t) workers.emplace_back(work);
    work();
}
