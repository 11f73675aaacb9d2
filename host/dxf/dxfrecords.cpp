// Records, their edits, and writing them back.
#include "host/dxf/dxfrecords.h"

#include <algorithm>

DxfRecords::DxfRecords(const DxfTagFile& tags)
    : m_starts(tags.recordStarts()), m_kinds(tags.recordKinds()) {
    m_starts.push_back(tags.originalTagCount());
}

DxfTagRange DxfRecords::tags(std::uint32_t record) const {
    if (record >= originalCount()) return DxfTagRange(m_added[record - originalCount()]);
    if (!m_replaced.empty()) {
        if (const auto it = m_replaced.find(record); it != m_replaced.end())
            return DxfTagRange(it->second);
    }
    return DxfTagRange(m_starts[record], m_starts[record + 1] - m_starts[record]);
}

std::uint32_t DxfRecords::insertBefore(const DxfTagFile& file, std::uint32_t anchor,
                                       std::vector<std::uint32_t> tags) {
    const std::uint32_t record = count();
    m_kinds.push_back(dxfRecordKind(file.value(tags.front())));
    m_added.push_back(std::move(tags));
    m_insertedBefore[anchor].push_back(record);
    m_anchors.emplace(record, anchor);
    ++m_editCount;
    return record;
}

bool DxfRecords::withdraw(std::uint32_t record) {
    if (record >= count() || m_withdrawn.contains(record)) return false;
    if (record >= originalCount()) {
        const auto anchor = m_anchors.find(record);
        if (anchor == m_anchors.end()) return false;
        const auto list = m_insertedBefore.find(anchor->second);
        if (list != m_insertedBefore.end()) {
            std::erase(list->second, record);
            if (list->second.empty()) m_insertedBefore.erase(list);
        }
        m_anchors.erase(anchor);
    }
    m_kinds[record] = DxfRecordKind::Other;
    m_withdrawn.insert(record);
    ++m_editCount;
    return true;
}

std::optional<std::uint32_t> DxfRecords::next(std::uint32_t record) const {
    // The first record written for `r`: the first of those inserted before it, else itself.
    auto firstOf = [this](std::uint32_t r) {
        for (const std::vector<std::uint32_t>* before = insertedBefore(r); before != nullptr;
             before = insertedBefore(r))
            r = before->front();
        return r;
    };
    auto following = [&](std::uint32_t r) -> std::optional<std::uint32_t> {
        if (r < originalCount()) {
            if (r + 1 >= originalCount()) return std::nullopt;
            return firstOf(r + 1);
        }
        const auto anchor = m_anchors.find(r);
        if (anchor == m_anchors.end()) return std::nullopt;
        const std::vector<std::uint32_t>& list = *insertedBefore(anchor->second);
        const auto at = std::find(list.begin(), list.end(), r);
        if (at + 1 != list.end()) return firstOf(*(at + 1));
        return anchor->second;
    };
    std::optional<std::uint32_t> candidate = following(record);
    while (candidate && m_withdrawn.contains(*candidate)) candidate = following(*candidate);
    return candidate;
}

void DxfRecords::replace(std::uint32_t record, std::vector<std::uint32_t> tags) {
    ++m_editCount;
    if (record >= originalCount()) {
        m_added[record - originalCount()] = std::move(tags);
        return;
    }
    m_replaced[record] = std::move(tags);
}

std::vector<std::uint32_t> DxfRecords::tagList(std::uint32_t record) const {
    std::vector<std::uint32_t> list;
    const DxfTagRange range = tags(record);
    list.reserve(range.size());
    for (const std::uint32_t tag : range) list.push_back(tag);
    return list;
}

void DxfRecords::writeRecord(const DxfTagFile& tags, std::uint32_t record,
                             const DxfSink& sink) const {
    if (const auto it = m_insertedBefore.find(record); it != m_insertedBefore.end()) {
        for (const std::uint32_t inserted : it->second) writeRecord(tags, inserted, sink);
    }
    if (m_withdrawn.contains(record)) return;
    const bool original = record < originalCount() && !m_replaced.contains(record);
    if (original) {
        sink(tags.recordSpan(record, record + 1));
        return;
    }
    for (const std::uint32_t tag : this->tags(record)) sink(tags.raw(tag));
}

void DxfRecords::write(const DxfTagFile& tags, const DxfSink& sink) const {
    sink(tags.prefix());
    std::vector<std::uint32_t> touched;
    for (const auto& [record, list] : m_replaced) touched.push_back(record);
    for (const auto& [record, list] : m_insertedBefore) {
        if (record < originalCount()) touched.push_back(record);
    }
    for (const std::uint32_t record : m_withdrawn) {
        if (record < originalCount()) touched.push_back(record);
    }
    std::sort(touched.begin(), touched.end());
    touched.erase(std::unique(touched.begin(), touched.end()), touched.end());

    std::uint32_t next = 0;  // first original record not yet written
    auto writeUntouched = [&](std::uint32_t end) {
        if (next < end) sink(tags.recordSpan(next, end));
    };
    for (const std::uint32_t record : touched) {
        writeUntouched(record);
        writeRecord(tags, record, sink);
        next = record + 1;
    }
    writeUntouched(originalCount());
    sink(tags.trailer());
}
