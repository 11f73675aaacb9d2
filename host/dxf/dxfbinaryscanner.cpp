// Splitting binary DXF into tags: a group code field, then a value whose size its type fixes.
#include <cstring>

#include "host/dxf/dxfgroupcode.h"
#include "host/dxf/dxfscanparts.h"
#include "host/dxf/dxftagfile.h"

namespace {

std::size_t fixedSize(DxfValueType type) {
    switch (type) {
        case DxfValueType::Double:
        case DxfValueType::Int64:
            return 8;
        case DxfValueType::Int32:
            return 4;
        case DxfValueType::Int16:
            return 2;
        case DxfValueType::Bool:
            return 1;
        case DxfValueType::String:
        case DxfValueType::Handle:
        case DxfValueType::Chunk:
            break;
    }
    return 0;
}

}  // namespace

template <typename Visit>
DxfStatus DxfTagFile::walkBinary(std::size_t from, std::uint32_t index, std::size_t& reached,
                                 Visit&& visit) const {
    const char* const data = m_bytes.data();
    const std::size_t size = m_bytes.size();
    std::size_t p = from;
    while (p < size) {
        const std::size_t tagStart = p;
        auto cutOff = [&](const std::string& what) {
            return DxfError(byteLocation(tagStart) + ": expected " + what +
                            ", found the end of the file");
        };
        int code = 0;
        if (m_byteCodes && static_cast<unsigned char>(data[p]) != 255) {
            code = static_cast<unsigned char>(data[p]);
            p += 1;
        } else {
            if (m_byteCodes) ++p;
            if (size - p < 2) return cutOff("a two-byte group code");
            std::int16_t wide = 0;
            std::memcpy(&wide, data + p, sizeof wide);
            code = wide;
            p += 2;
        }
        const DxfValueType type = dxfValueType(code);
        auto ofCode = [code] { return " of group code " + std::to_string(code); };
        std::size_t valueLength = 0;
        std::uint8_t trailer = 0;
        if (type == DxfValueType::Chunk) {
            if (p == size) return cutOff("the length byte" + ofCode());
            valueLength = static_cast<unsigned char>(data[p]);
            ++p;
            if (size - p < valueLength)
                return cutOff(std::to_string(valueLength) + " bytes of data" + ofCode());
        } else if (const std::size_t n = fixedSize(type); n != 0) {
            valueLength = n;
            if (size - p < n) return cutOff("the " + std::to_string(n) + "-byte value" + ofCode());
        } else {
            const void* zero = std::memchr(data + p, 0, size - p);
            if (zero == nullptr) return cutOff("the zero byte that ends the value" + ofCode());
            valueLength = static_cast<std::size_t>(static_cast<const char*>(zero) - (data + p));
            trailer = 1;
        }
        const ScannedTag tag{index++, code, tagStart, p, valueLength, trailer};
        p += valueLength + trailer;
        if (!visit(tag)) break;
    }
    reached = p;
    return {};
}

namespace {

// Where a record seems to begin after the middle of a binary file with two-byte group codes: a
// code 0 followed by a capital letter. Only a guess; the scan checks it.
std::optional<std::size_t> guessRecordStart(std::string_view bytes) {
    if (bytes.size() < kSmallestScanInParts || std::thread::hardware_concurrency() < 2)
        return std::nullopt;
    constexpr std::string_view kCodeZero("\0\0", 2);
    for (std::size_t at = bytes.find(kCodeZero, bytes.size() / 2);
         at != std::string_view::npos && at + 2 < bytes.size();
         at = bytes.find(kCodeZero, at + 1)) {
        if (bytes[at + 2] >= 'A' && bytes[at + 2] <= 'Z') return at;
    }
    return std::nullopt;
}

}  // namespace

DxfStatus DxfTagFile::scanBinary() {
    const char* const data = m_bytes.data();
    const std::size_t size = m_bytes.size();
    const std::size_t p = m_prefixLength;
    // R12 writes the first code, 0, in one byte, so "SECTION" follows at once; later versions in
    // two.
    m_byteCodes = p + 1 < size && data[p] == 0 && data[p + 1] != 0;
    if (p < size && static_cast<unsigned char>(data[p]) == 255) m_byteCodes = true;
    // With one-byte codes a zero byte is as often a value's end as a code: no guess is made.
    return scanInParts(m_byteCodes ? std::nullopt : guessRecordStart(m_bytes.view()),
                       [this](DxfRecordIndex& index, std::size_t from, std::size_t until,
                              std::size_t& reached, bool tellsProgress) {
                           DxfStatus fault;
                           DxfStatus walked = walkBinary(
                               from, index.tagCount(), reached, [&](const ScannedTag& tag) {
                                   if (!scanned(index, tag, fault, tellsProgress)) return false;
                                   return tag.valueStart + tag.valueLength + tag.trailer < until;
                               });
                           return walked.isOk() ? fault : walked;
                       });
}

void DxfTagFile::splitBinary(std::size_t from, std::uint32_t count,
                             std::vector<DxfTag>& into) const {
    std::size_t reached = 0;
    // The scan checked every tag already, so the walk finds no fault here.
    (void)walkBinary(from, 0, reached, [&](const ScannedTag& tag) {
        into.push_back(DxfTag{static_cast<std::uint32_t>(tag.valueStart),
                              static_cast<std::int16_t>(tag.code),
                              static_cast<std::uint8_t>(tag.valueStart - tag.start), tag.trailer});
        return into.size() < count;
    });
}
