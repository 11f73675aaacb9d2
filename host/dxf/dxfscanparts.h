// Scanning a large drawing on two cores: the second half is scanned from where a record seems to
// begin while the first half is scanned from the start. The guess holds only if the first scan
// ends exactly there; otherwise the first scan goes on alone, and nothing of the second is used.
// For the two scanners' files only.
#pragma once

#include <limits>
#include <thread>

#include "host/dxf/dxftagfile.h"

template <typename Walk>
DxfStatus DxfTagFile::scanInParts(std::optional<std::size_t> secondPart, Walk&& walk) {
    constexpr std::size_t kToTheEnd = std::numeric_limits<std::size_t>::max();
    std::size_t reached = 0;
    DxfStatus status;
    if (!secondPart) {
        status = walk(m_index, m_prefixLength, kToTheEnd, reached, true);
    } else {
        DxfRecordIndex second(m_format == DxfFormat::Binary);
        std::size_t secondReached = 0;
        DxfStatus secondStatus;
        bool secondDone = false;
        {
            std::jthread worker([&] {
                try {
                    secondStatus = walk(second, *secondPart, kToTheEnd, secondReached, false);
                    secondDone = true;
                } catch (...) {
                    // Out of memory on the side: the first scan goes on alone and meets it too.
                }
            });
            status = walk(m_index, m_prefixLength, *secondPart, reached, true);
        }
        if (status.isOk() && !m_index.reachedEof()) {
            if (reached == *secondPart && secondDone && secondStatus.isOk()) {
                m_index.append(std::move(second));
                reached = secondReached;
            } else {
                // A wrong guess, or a fault in the second half, whose line is counted from the
                // start of the file: scanned again from here.
                status = walk(m_index, reached, kToTheEnd, reached, true);
            }
        }
    }
    if (!status.isOk()) return status;
    m_originalTagCount = m_index.tagCount();
    m_endOfTags = reached;
    m_index.finish(reached);
    return {};
}

// Files smaller than this are scanned on one core: a thread costs more than it saves.
inline constexpr std::size_t kSmallestScanInParts = std::size_t{8} << 20;
