// Noting records while scanning, and joining the notes of two parts.
#include "host/dxf/dxfrecordindex.h"

#include <algorithm>
#include <cstring>

#include "host/dxf/dxfnumber.h"

std::int64_t DxfRecordIndex::integerOf(std::string_view value) const {
    if (!m_binary) return parseDxfInteger(value).value_or(0);
    std::int16_t number = 0;
    if (value.size() != sizeof number) return 0;
    std::memcpy(&number, value.data(), sizeof number);
    return number;
}

bool DxfRecordIndex::isPaperSpaceFlag(std::string_view value) const {
    return integerOf(value) == 1;
}

void DxfRecordIndex::noteArray(int code, std::string_view value) {
    if (m_kinds.empty() || m_kinds.back() != DxfRecordKind::Insert || m_inExtendedData) return;
    const std::int64_t count = integerOf(value);
    if (count <= 1) return;
    const auto record = static_cast<std::uint32_t>(m_starts.size() - 1);
    if (m_arrays.empty() || m_arrays.back().record != record) m_arrays.push_back({record, 1, 1});
    const auto clamped = static_cast<std::int32_t>(std::min<std::int64_t>(count, INT32_MAX));
    (code == 70 ? m_arrays.back().columns : m_arrays.back().rows) = clamped;
}

bool DxfRecordIndex::note(std::uint32_t index, int code, std::size_t start, std::size_t valueStart,
                          std::string_view value) {
    if (code == 0 || index == 0) {
        m_starts.push_back(index);
        m_offsets.push_back(static_cast<std::uint32_t>(start));
        m_kinds.push_back(code == 0 ? dxfRecordKind(value) : DxfRecordKind::Other);
        m_names.emplace_back();
        m_inExtendedData = false;
        m_named = false;
        m_spaceSeen = false;
    }
    switch (code) {
        case 0:
            m_beforeSubclass = true;
            m_ownHandleCode = value == "DIMSTYLE" ? 105 : 5;
            m_reachedEof = m_kinds.back() == DxfRecordKind::Eof;
            return true;
        case 100:
            m_beforeSubclass = false;
            return true;
        case 1001:
            m_inExtendedData = true;
            return true;
        case 2:
            if (!m_named && !m_inExtendedData) {
                m_named = true;
                m_names.back() = NameSpan{static_cast<std::uint32_t>(valueStart),
                                          static_cast<std::uint32_t>(value.size())};
            }
            return true;
        case 70:
        case 71:
            noteArray(code, value);
            return true;
        case 67:
            if (!m_spaceSeen && !m_inExtendedData) {
                m_spaceSeen = true;
                if (isPaperSpaceFlag(value))
                    m_paperSpace.push_back(static_cast<std::uint32_t>(m_starts.size() - 1));
            }
            return true;
        default:
            break;
    }
    if (!m_beforeSubclass || code != m_ownHandleCode) return true;
    m_beforeSubclass = false;
    // A section head is no object: the header's $HANDSEED is not a handle of its own.
    if (m_kinds.back() != DxfRecordKind::Section) {
        if (const auto handle = parseDxfHex(value))
            m_highestHandle = std::max(m_highestHandle, *handle);
    }
    return isDxfHex(value);
}

void DxfRecordIndex::append(DxfRecordIndex&& later) {
    const auto tagShift = m_tagCount;
    const auto recordShift = static_cast<std::uint32_t>(m_starts.size());
    for (const std::uint32_t start : later.m_starts) m_starts.push_back(start + tagShift);
    m_offsets.insert(m_offsets.end(), later.m_offsets.begin(), later.m_offsets.end());
    m_kinds.insert(m_kinds.end(), later.m_kinds.begin(), later.m_kinds.end());
    m_names.insert(m_names.end(), later.m_names.begin(), later.m_names.end());
    for (const std::uint32_t record : later.m_paperSpace)
        m_paperSpace.push_back(record + recordShift);
    for (Array array : later.m_arrays) {
        array.record += recordShift;
        m_arrays.push_back(array);
    }
    m_highestHandle = std::max(m_highestHandle, later.m_highestHandle);
    m_tagCount += later.m_tagCount;
    m_reachedEof = later.m_reachedEof;
}

void DxfRecordIndex::finish(std::size_t end) {
    m_offsets.push_back(static_cast<std::uint32_t>(end));
    m_starts.shrink_to_fit();
    m_offsets.shrink_to_fit();
    m_kinds.shrink_to_fit();
    m_names.shrink_to_fit();
}
