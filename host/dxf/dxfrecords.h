// The records of a drawing in writing order: the file's own, each a run of tags from one code-0 tag
// to the next, plus what edits replaced or added. Unchanged stretches are written as the file's
// bytes.
#pragma once

#include <cstdint>
#include <optional>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "host/dxf/dxfsink.h"
#include "host/dxf/dxftagfile.h"

// The tags of one record: a stretch of the file's tags, or a list an edit made.
class DxfTagRange {
public:
    DxfTagRange(std::uint32_t first, std::uint32_t count) : m_first(first), m_count(count) {}
    explicit DxfTagRange(const std::vector<std::uint32_t>& list)
        : m_list(list.data()), m_count(static_cast<std::uint32_t>(list.size())) {}

    std::uint32_t size() const { return m_count; }
    std::uint32_t operator[](std::uint32_t i) const { return m_list ? m_list[i] : m_first + i; }

    class Iterator {
    public:
        Iterator(const DxfTagRange* range, std::uint32_t i) : m_range(range), m_i(i) {}
        std::uint32_t operator*() const { return (*m_range)[m_i]; }
        Iterator& operator++() {
            ++m_i;
            return *this;
        }
        bool operator!=(const Iterator& other) const { return m_i != other.m_i; }

    private:
        const DxfTagRange* m_range;
        std::uint32_t m_i;
    };
    Iterator begin() const { return {this, 0}; }
    Iterator end() const { return {this, m_count}; }

private:
    const std::uint32_t* m_list = nullptr;
    std::uint32_t m_first = 0;
    std::uint32_t m_count = 0;
};

class DxfRecords {
public:
    explicit DxfRecords(const DxfTagFile& tags);

    // Records 0..originalCount()-1 are the file's; added records follow.
    std::uint32_t count() const {
        return originalCount() + static_cast<std::uint32_t>(m_added.size());
    }
    std::uint32_t originalCount() const { return static_cast<std::uint32_t>(m_starts.size() - 1); }
    DxfTagRange tags(std::uint32_t record) const;
    // The record's first tag: its code-0 tag, which names what the record is.
    std::uint32_t head(std::uint32_t record) const { return tags(record)[0]; }
    DxfRecordKind kind(std::uint32_t record) const { return m_kinds[record]; }
    // A record of the file that no edit replaced: its tags are the file's bytes.
    bool isOriginal(std::uint32_t record) const {
        return record < originalCount() && !m_replaced.contains(record);
    }

    // A new record, written just before `anchor` (after what was inserted there before).
    std::uint32_t insertBefore(const DxfTagFile& file, std::uint32_t anchor,
                               std::vector<std::uint32_t> tags);
    // Gives a record new tags; it keeps its place and its number.
    void replace(std::uint32_t record, std::vector<std::uint32_t> tags);
    // The tags of a record, as a list to edit and hand back to replace().
    std::vector<std::uint32_t> tagList(std::uint32_t record) const;
    // Takes a record out of the writing order; it keeps its number and its tags, and its kind
    // becomes Other. Records inserted before it are still written. False for one already
    // withdrawn.
    bool withdraw(std::uint32_t record);
    bool isWithdrawn(std::uint32_t record) const { return m_withdrawn.contains(record); }
    // The record an added one is written before; none for the file's own records.
    std::optional<std::uint32_t> anchorOf(std::uint32_t record) const {
        const auto it = m_anchors.find(record);
        if (it == m_anchors.end()) return std::nullopt;
        return it->second;
    }
    // The record written next after this one, withdrawn ones passed over; none after the last.
    std::optional<std::uint32_t> next(std::uint32_t record) const;

    // Every insertion, replacement and withdrawal counts one.
    std::uint64_t editCount() const { return m_editCount; }
    // Records put back as an earlier copy had them still count on from here, so that no count
    // stands for two different drawings.
    void continueEditCountFrom(std::uint64_t count) { m_editCount = count + 1; }

    // The records inserted before this one, in writing order; each may have its own. Null when
    // there are none.
    const std::vector<std::uint32_t>* insertedBefore(std::uint32_t record) const {
        if (m_insertedBefore.empty()) return nullptr;
        const auto it = m_insertedBefore.find(record);
        return it == m_insertedBefore.end() ? nullptr : &it->second;
    }

    // The whole drawing in order: the file's prefix, every record, the bytes after "0 EOF".
    void write(const DxfTagFile& tags, const DxfSink& sink) const;

private:
    void writeRecord(const DxfTagFile& tags, std::uint32_t record, const DxfSink& sink) const;

    std::vector<std::uint32_t> m_starts;  // first tag of each original record, then the tag count
    std::vector<DxfRecordKind> m_kinds;   // of every record, the file's and the added ones
    std::vector<std::vector<std::uint32_t>> m_added;
    std::unordered_map<std::uint32_t, std::vector<std::uint32_t>> m_replaced;
    std::unordered_map<std::uint32_t, std::vector<std::uint32_t>> m_insertedBefore;
    std::unordered_map<std::uint32_t, std::uint32_t> m_anchors;  // added record -> its anchor
    std::unordered_set<std::uint32_t> m_withdrawn;
    std::uint64_t m_editCount = 0;
};
