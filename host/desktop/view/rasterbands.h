// One-pixel lines and dots for an image, gathered first and written afterwards band by band: a
// band of rows stays in the cache while every line crossing it is written, and bands written by
// different threads never share a pixel, so a frame comes out the same on any number of threads.
#pragma once

#include <QRgb>
#include <array>
#include <cstdint>
#include <memory>
#include <span>
#include <vector>

// A line from pixel to pixel (a dot when both ends are one pixel), in the image's coordinates.
struct RasterLine {
    std::int16_t x0 = 0;
    std::int16_t y0 = 0;
    std::int16_t x1 = 0;
    std::int16_t y1 = 0;
    QRgb color = 0;
};

// Writes the pixels of the Bresenham line from (x0, y0) to (x1, y1) that lie in rows
// [top, bottom): the same pixels, row for row, that walking the whole line writes.
void plotLine(QRgb* bits, std::ptrdiff_t stride, const RasterLine& line, int top, int bottom);

// The lines of one share of a frame, each listed in the bands of rows it crosses. The lists grow
// in chunks that are kept from frame to frame: nothing is copied as they grow, and a frame like
// the last one takes no fresh memory.
class RasterBands {
public:
    static constexpr int kBandShift = 8;  // 256 rows: a 1600-pixel-wide band is 1.6 MB

    // Empties the lists for an image of `height` rows, keeping their memory.
    void reset(int height);
    void add(const RasterLine& line) {
        const int top = line.y0 < line.y1 ? line.y0 : line.y1;
        const int bottom = line.y0 < line.y1 ? line.y1 : line.y0;
        for (int band = top >> kBandShift; band <= bottom >> kBandShift; ++band) {
            Band& list = m_bands[static_cast<std::size_t>(band)];
            if (list.next == list.end) grow(list);
            *list.next++ = line;
        }
    }
    int bandCount() const { return static_cast<int>(m_bands.size()); }
    // Visits the lines of a band in the order they were added.
    template <typename Visit>
    void forEach(int band, Visit visit) const {
        const Band& list = m_bands[static_cast<std::size_t>(band)];
        for (std::size_t c = 0; c < list.chunks.size(); ++c) {
            const RasterLine* begin = list.chunks[c]->data();
            const RasterLine* end = c + 1 < list.chunks.size() ? begin + kChunkLines : list.next;
            for (const RasterLine* line = begin; line != end; ++line) visit(*line);
        }
    }
    std::size_t lineCount() const;

private:
    static constexpr std::size_t kChunkLines = 4096;
    using Chunk = std::array<RasterLine, kChunkLines>;
    struct Band {
        std::vector<Chunk*> chunks;
        RasterLine* next = nullptr;
        RasterLine* end = nullptr;
    };
    void grow(Band& band);

    std::vector<Band> m_bands;
    std::vector<std::unique_ptr<Chunk>> m_chunks;  // every chunk made, the first m_used in use
    std::size_t m_used = 0;
};

// Writes the bands of the shares in order (share 0's lines, then share 1's, ...), the bands
// spread over up to `threads` threads.
void writeBands(QRgb* bits, std::ptrdiff_t stride, int height, std::span<const RasterBands> shares,
                unsigned threads);
