// The tags of a DXF file: its bytes in one buffer and, for every tag, where its group code and
// value lie in them. Tags that edits add are kept one by one, written in the file's own form; views
// of any tag stay valid while the file lives.
#pragma once

#include <cstdint>
#include <deque>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "host/dxf/dxfprogress.h"
#include "host/dxf/dxfrecordkind.h"
#include "host/dxf/dxfresult.h"

enum class DxfFormat : std::uint8_t { Ascii, Binary };

// What the two forms start with: the binary form's sentinel; a byte-order mark an ASCII file may have.
inline constexpr std::string_view kDxfBinarySentinel("AutoCAD Binary DXF\r\n\x1a\0", 22);
inline constexpr std::string_view kDxfByteOrderMark("\xEF\xBB\xBF", 3);

// 8 bytes a tag: a 200 MB drawing holds some 13 million of them. A value ends where the next tag's
// head begins, less its line end (or zero byte), so its length need not be kept.
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
    static DxfResult<DxfTagFile> parse(std::string name, std::unique_ptr<char[]> bytes,
                                       std::size_t size, const DxfProgress& progress = {});
    static DxfResult<DxfTagFile> parse(std::string name, std::string_view bytes);
    // Whether a file that begins with `head` can be a drawing at all: the binary sentinel (or the
    // start of it), or a group code on the first line. For refusing other files before reading them.
    static bool mayBeDxf(std::string_view head);

    const std::string& name() const { return m_name; }
    DxfFormat format() const { return m_format; }

    std::uint32_t tagCount() const { return static_cast<std::uint32_t>(m_tags.size()); }
    std::uint32_t originalTagCount() const { return m_originalTagCount; }
    std::int16_t code(std::uint32_t tag) const { return m_tags[tag].code; }
    // The value's bytes: its text in ASCII files, its encoding in binary ones (strings alike).
    std::string_view value(std::uint32_t tag) const {
        const DxfTag& t = m_tags[tag];
        const std::size_t trailer = t.flags & kTrailerMask;
        if ((t.flags & kAdded) != 0) {
            const std::string& text = m_added[t.valueOffset];
            return std::string_view(text).substr(t.headLength,
                                                 text.size() - t.headLength - trailer);
        }
        return {m_data.get() + t.valueOffset, endOf(tag) - t.valueOffset - trailer};
    }
    // The whole tag as it stands in the file.
    std::string_view raw(std::uint32_t tag) const;
    bool valueIs(std::uint32_t tag, std::string_view text) const { return value(tag) == text; }
    std::optional<double> real(std::uint32_t tag) const;
    std::optional<std::int64_t> integer(std::uint32_t tag) const;
    std::optional<std::uint64_t> handle(std::uint32_t tag) const;

    // The first tag of every record. A record runs from a code-0 tag to the next; the first one
    // may instead be a prelude of comments.
    const std::vector<std::uint32_t>& recordStarts() const { return m_recordStarts; }
    // The kind of each record, beside its start; a prelude of comments is Other.
    const std::vector<DxfRecordKind>& recordKinds() const { return m_recordKinds; }
    bool reachedEof() const { return m_reachedEof; }
    // Bytes around the tags: the binary sentinel or a byte-order mark, and what follows "0 EOF".
    std::string_view prefix() const { return {m_data.get(), m_prefixLength}; }
    std::string_view trailer() const { return {m_data.get() + m_endOfTags, m_size - m_endOfTags}; }
    // The bytes of the original tags first..last, which lie one after the other in the file.
    std::string_view span(std::uint32_t first, std::uint32_t last) const;

    // "plan.dxf:1042" (the group code's line) or "plan.dxf:byte 4711" for binary files.
    std::string location(std::uint32_t tag) const;
    std::string valueLocation(std::uint32_t tag) const;
    std::string endLocation() const;

    // New tags in the file's form: line ends, width of group codes, binary encodings.
    std::uint32_t appendString(int code, std::string_view bytes);
    std::uint32_t appendReal(int code, double value);
    std::uint32_t appendInteger(int code, std::int64_t value);
    std::uint32_t appendHandle(int code, std::uint64_t value);

private:
    static constexpr std::uint8_t kTrailerMask = 3;
    static constexpr std::uint8_t kAdded = 4;

    DxfTagFile(std::string name, std::unique_ptr<char[]> bytes, std::size_t size);
    DxfStatus scanAscii();
    DxfStatus scanBinary();
    // Notes where records start and "0 EOF", and checks each object's own handle. Most tags need
    // no note; the scanners ask first.
    bool needsNote(int code, std::uint32_t index) const {
        return code == 0 || code == 100 || index == 0 ||
               (m_beforeSubclass && code == m_ownHandleCode);
    }
    DxfStatus noteTag(std::uint32_t index, std::string_view value);
    void pushTag(std::size_t valueOffset, int code, std::size_t headLength, std::uint8_t trailer) {
        m_tags.push_back(DxfTag{static_cast<std::uint32_t>(valueOffset),
                                static_cast<std::int16_t>(code),
                                static_cast<std::uint8_t>(headLength), trailer});
    }
    // Where the original tag's bytes end: where the next one begins, or where the tags end.
    std::size_t endOf(std::uint32_t tag) const {
        if (tag + 1 >= m_originalTagCount) return m_endOfTags;
        const DxfTag& next = m_tags[tag + 1];
        return next.valueOffset - next.headLength;
    }
    std::uint32_t appendRaw(int code, std::string_view head, std::string_view value,
                            std::string_view tail);
    std::string binaryCode(int code) const;
    std::string lineLocation(std::uint64_t line) const;
    std::string byteLocation(std::size_t offset) const;

    std::string m_name;
    std::unique_ptr<char[]> m_data;
    std::size_t m_size = 0;
    std::size_t m_prefixLength = 0;
    std::size_t m_endOfTags = 0;
    DxfFormat m_format = DxfFormat::Ascii;
    bool m_byteCodes = false;  // binary files of R12 write group codes in one byte
    bool m_reachedEof = false;
    // An object's own handle (code 5, in DIMSTYLE entries 105) comes before its first subclass
    // marker; later codes 5 are data of that object, such as a dimension style's arrow block.
    bool m_beforeSubclass = false;
    int m_ownHandleCode = 5;
    std::string m_lineEnd = "\n";
    std::vector<DxfTag> m_tags;
    std::uint32_t m_originalTagCount = 0;
    std::vector<std::uint32_t> m_recordStarts;
    std::vector<DxfRecordKind> m_recordKinds;
    std::deque<std::string> m_added;  // a deque never moves what it holds
    const DxfProgress* m_progress = nullptr;  // while scanning
};
