// What the scan of a drawing notes of its records: where each begins (its first tag and byte), what
// it is, the name it carries, which records lie in paper space, and the highest handle an object
// names as its own. A few bytes a record instead of eight a tag. Two scans of two parts of a file
// each fill an index; the second is appended to the first.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "host/dxf/dxfrecordkind.h"

class DxfRecordIndex {
public:
    // `binary`: values are the binary form's encodings.
    explicit DxfRecordIndex(bool binary = false) : m_binary(binary) {}

    // Whether a tag is one the index notes; most are not, and are only counted.
    static bool wants(int code, std::uint32_t index) {
        if (index == 0) return true;
        switch (code) {
            case 0:
            case 2:
            case 5:
            case 67:
            case 70:
            case 71:
            case 100:
            case 105:
            case 1001:
                return true;
            default:
                return false;
        }
    }
    void countTag() { ++m_tagCount; }
    // Notes the tag just counted, the `index`th of the scan, starting at byte `start`, its value
    // at `valueStart`. False when it is an object's own handle and not hexadecimal.
    bool note(std::uint32_t index, int code, std::size_t start, std::size_t valueStart,
              std::string_view value);

    // The tags that follow another index's, as one file: shifted behind them.
    void append(DxfRecordIndex&& later);
    // The scan ended at byte `end`, where the last record ends.
    void finish(std::size_t end);

    std::uint32_t tagCount() const { return m_tagCount; }
    bool reachedEof() const { return m_reachedEof; }
    const std::vector<std::uint32_t>& starts() const { return m_starts; }
    // Where each record begins, and after finish() where the last one ends.
    const std::vector<std::uint32_t>& offsets() const { return m_offsets; }
    const std::vector<DxfRecordKind>& kinds() const { return m_kinds; }
    // Where the value of the record's first code 2 (before extended data) lies; length 0 if none.
    struct NameSpan {
        std::uint32_t offset = 0;
        std::uint32_t length = 0;
    };
    const NameSpan& name(std::uint32_t record) const { return m_names[record]; }
    const std::vector<std::uint32_t>& paperSpaceRecords() const { return m_paperSpace; }
    // The references that are arrays (an INSERT with more than one column or row), in record
    // order: few drawings have any.
    struct Array {
        std::uint32_t record = 0;
        std::int32_t columns = 1;  // code 70
        std::int32_t rows = 1;     // code 71
    };
    const std::vector<Array>& arrays() const { return m_arrays; }
    std::uint64_t highestHandle() const { return m_highestHandle; }

private:
    bool isPaperSpaceFlag(std::string_view value) const;
    std::int64_t integerOf(std::string_view value) const;
    void noteArray(int code, std::string_view value);

    bool m_binary;
    std::uint32_t m_tagCount = 0;
    bool m_reachedEof = false;
    std::vector<std::uint32_t> m_starts;
    std::vector<std::uint32_t> m_offsets;
    std::vector<DxfRecordKind> m_kinds;
    std::vector<NameSpan> m_names;
    std::vector<std::uint32_t> m_paperSpace;
    std::vector<Array> m_arrays;
    std::uint64_t m_highestHandle = 0;
    // Within the record the scan is in. An object's own handle (code 5, in DIMSTYLE entries 105)
    // comes before its first subclass marker; later codes 5 are data of that object, such as a
    // dimension style's arrow block.
    bool m_beforeSubclass = false;
    bool m_inExtendedData = false;
    bool m_named = false;
    bool m_spaceSeen = false;
    int m_ownHandleCode = 5;
};
