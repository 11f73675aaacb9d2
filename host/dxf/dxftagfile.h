// The tags of a DXF file: its bytes as read and, for every record, where it begins, what it is and
// the name it carries. A record's tags are split from its bytes when something asks for them, and
// kept for the next question on each thread; a 200 MB drawing holds some 16 million tags but only
// a million records. Tags that edits add are kept one by one, written in the file's own form; views
// of any tag stay valid while the file lives.
#pragma once

#include <cstdint>
#include <deque>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "host/dxf/dxfbytes.h"
#include "host/dxf/dxfprogress.h"
#include "host/dxf/dxfrecordindex.h"
#include "host/dxf/dxfrecordkind.h"
#include "host/dxf/dxfresult.h"

enum class DxfFormat : std::uint8_t { Ascii, Binary };

// What the two forms start with: the binary form's sentinel; a byte-order mark an ASCII file may
// have.
inline constexpr std::string_view kDxfBinarySentinel("AutoCAD Binary DXF\r\n\x1a\0", 22);
inline constexpr std::string_view kDxfByteOrderMark("\xEF\xBB\xBF", 3);

// Where a tag lies. A value ends where the next tag's head begins, less its line end (or zero
// byte), so its length need not be kept.
struct DxfTag {
    std::uint32_t valueOffset =
        0;  // an added tag's place among the added tags, whose text starts with the head
    std::int16_t code = 0;
    std::uint8_t headLength = 0;  // bytes before the value: the group code line or field
    std::uint8_t flags = 0;  // bits 0-1: bytes after the value (line end, zero byte); bit 2: added
};

class DxfTagFile {
public:
    // Splits the bytes into tags up to and including "0 EOF"; what follows is kept as it is. A file
    // without "0 EOF" is read to its end (reachedEof() tells). `name` leads every message.
    static DxfResult<DxfTagFile> parse(std::string name, DxfBytes bytes,
                                       const DxfProgress& progress = {});
    static DxfResult<DxfTagFile> parse(std::string name, std::string_view bytes);
    // Whether a file that begins with `head` can be a drawing at all: the binary sentinel (or the
    // start of it), or a group code on the first line. For refusing other files before reading
    // them.
    static bool mayBeDxf(std::string_view head);

    const std::string& name() const { return m_name; }
    DxfFormat format() const { return m_format; }

    std::uint32_t tagCount() const {
        return m_originalTagCount + static_cast<std::uint32_t>(m_addedTags.size());
    }
    std::uint32_t originalTagCount() const { return m_originalTagCount; }
    std::int16_t code(std::uint32_t tag) const { return tagAt(tag).code; }
    // The value's bytes: its text in ASCII files, its encoding in binary ones (strings alike).
    std::string_view value(std::uint32_t tag) const;
    // The whole tag as it stands in the file.
    std::string_view raw(std::uint32_t tag) const;
    bool valueIs(std::uint32_t tag, std::string_view text) const { return value(tag) == text; }
    std::optional<double> real(std::uint32_t tag) const;
    std::optional<std::int64_t> integer(std::uint32_t tag) const;
    std::optional<std::uint64_t> handle(std::uint32_t tag) const;

    // The first tag of every record. A record runs from a code-0 tag to the next; the first one
    // may instead be a prelude of comments.
    const std::vector<std::uint32_t>& recordStarts() const { return m_index.starts(); }
    // The kind of each record, beside its start; a prelude of comments is Other.
    const std::vector<DxfRecordKind>& recordKinds() const { return m_index.kinds(); }
    // The value of a record's first code 2 (before any extended data), found while scanning:
    // the name of a block, a table entry, a reference's block. Empty when it has none.
    std::string_view recordName(std::uint32_t record) const;
    // The records whose first code 67 (before any extended data) is 1: entities in paper space.
    const std::vector<std::uint32_t>& paperSpaceRecords() const {
        return m_index.paperSpaceRecords();
    }
    // The references that are arrays, with their columns and rows, in record order.
    const std::vector<DxfRecordIndex::Array>& arrays() const { return m_index.arrays(); }
    // The highest handle an object of the file names as its own; 0 when none does.
    std::uint64_t highestHandle() const { return m_index.highestHandle(); }
    bool reachedEof() const { return m_index.reachedEof(); }
    // Bytes around the tags: the binary sentinel or a byte-order mark, and what follows "0 EOF".
    std::string_view prefix() const { return {m_bytes.data(), m_prefixLength}; }
    std::string_view trailer() const {
        return {m_bytes.data() + m_endOfTags, m_bytes.size() - m_endOfTags};
    }
    // The bytes of the original records first..end-1, which lie one after the other in the file.
    std::string_view recordSpan(std::uint32_t first, std::uint32_t end) const {
        const std::vector<std::uint32_t>& offsets = m_index.offsets();
        return {m_bytes.data() + offsets[first], offsets[end] - offsets[first]};
    }

    // "plan.dxf:1042" (the group code's line) or "plan.dxf:byte 4711" for binary files.
    std::string location(std::uint32_t tag) const;
    std::string valueLocation(std::uint32_t tag) const;
    std::string endLocation() const;

    // New tags in the file's form: line ends, width of group codes, binary encodings.
    std::uint32_t appendString(int code, std::string_view bytes);
    // A string tag's bytes in the file's form, for records made outside the file.
    std::string encodedString(int code, std::string_view bytes) const;
    std::uint32_t appendReal(int code, double value);
    std::uint32_t appendInteger(int code, std::int64_t value);
    std::uint32_t appendHandle(int code, std::uint64_t value);

private:
    static constexpr std::uint8_t kTrailerMask = 3;
    static constexpr std::uint8_t kAdded = 4;

    // What a scan reports of each tag: its place, and where its head and value lie in the bytes.
    struct ScannedTag {
        std::uint32_t index;
        int code;
        std::size_t start;
        std::size_t valueStart;
        std::size_t valueLength;
        std::uint8_t trailer;
    };
    // Walks the tags from byte `from` on, the first being tag `index`, calling `visit` with each
    // ScannedTag until it returns false or the bytes end; checks each value against its type.
    // Where it stopped is left in `reached`.
    template <typename Visit>
    DxfStatus walkAscii(std::size_t from, std::uint32_t index, std::size_t& reached,
                        Visit&& visit) const;
    template <typename Visit>
    DxfStatus walkBinary(std::size_t from, std::uint32_t index, std::size_t& reached,
                         Visit&& visit) const;

    DxfTagFile(std::string name, DxfBytes bytes);
    DxfStatus scanAscii();
    DxfStatus scanBinary();
    // Scans the file, in two parts at once when it is large and `secondPart` is where a record
    // seems to begin: a guess, taken only when the first part's scan ends exactly there. `walk`
    // is (index, from, until, reached) -> DxfStatus and stops after the tag that reaches `until`.
    template <typename Walk>
    DxfStatus scanInParts(std::optional<std::size_t> secondPart, Walk&& walk);
    // What a scan does with each tag: false ends it, at "0 EOF" or at a fault.
    bool scanned(DxfRecordIndex& index, const ScannedTag& tag, DxfStatus& fault,
                 bool tellsProgress) {
        index.countTag();
        if (!DxfRecordIndex::wants(tag.code, tag.index)) return true;
        fault = noteTag(index, tag, tellsProgress);
        return fault.isOk() && !index.reachedEof();
    }
    DxfStatus noteTag(DxfRecordIndex& index, const ScannedTag& tag, bool tellsProgress);
    void splitAscii(std::size_t from, std::uint32_t count, std::vector<DxfTag>& into) const;
    void splitBinary(std::size_t from, std::uint32_t count, std::vector<DxfTag>& into) const;
    // The tags of an original record, split from its bytes.
    void splitRecord(std::uint32_t record, std::vector<DxfTag>& into) const;
    const DxfTag& tagAt(std::uint32_t tag) const;
    const DxfTag& originalTag(std::uint32_t tag) const;
    std::optional<std::int64_t> integerValue(std::string_view value) const;
    std::uint32_t appendRaw(int code, std::string_view head, std::string_view value,
                            std::string_view tail);
    std::string binaryCode(int code) const;
    // What stands before and after a string value: its group code and the value's end.
    std::string stringHead(int code) const;
    std::string_view stringTail() const;
    std::string lineLocation(std::uint64_t line) const;
    std::string byteLocation(std::size_t offset) const;

    std::string m_name;
    std::uint64_t m_id = 0;  // tells this file's tags apart in the threads' split records
    DxfBytes m_bytes;
    std::size_t m_prefixLength = 0;
    std::size_t m_endOfTags = 0;
    DxfFormat m_format = DxfFormat::Ascii;
    bool m_byteCodes = false;  // binary files of R12 write group codes in one byte
    std::string m_lineEnd = "\n";
    std::uint32_t m_originalTagCount = 0;
    DxfRecordIndex m_index;
    std::vector<DxfTag> m_addedTags;          // tag originalTagCount() + i
    std::deque<std::string> m_added;          // a deque never moves what it holds
    const DxfProgress* m_progress = nullptr;  // while scanning
};
