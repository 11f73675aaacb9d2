// Reading and appending tags; the scanners for the two forms live in their own files.
#include "host/dxf/dxftagfile.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <bit>
#include <cstring>
#include <limits>

#include "host/dxf/dxfgroupcode.h"
#include "host/dxf/dxfmessage.h"
#include "host/dxf/dxfnumber.h"

static_assert(std::endian::native == std::endian::little,
              "binary DXF values are read by copying their little-endian bytes");

namespace {

template <typename T>
std::string bytesOf(T value) {
    std::string bytes(sizeof value, '\0');
    std::memcpy(bytes.data(), &value, sizeof value);
    return bytes;
}

int asciiWidth(DxfValueType type) {
    switch (type) {
        case DxfValueType::Int16:
        case DxfValueType::Bool:
            return 6;
        case DxfValueType::Int32:
            return 9;
        case DxfValueType::String:
        case DxfValueType::Handle:
        case DxfValueType::Double:
        case DxfValueType::Int64:
        case DxfValueType::Chunk:
            return 0;
    }
    return 0;
}

}  // namespace

namespace {

std::uint64_t newFileId() {
    static std::atomic<std::uint64_t> next{1};
    return next.fetch_add(1, std::memory_order_relaxed);
}

// The records a thread split last, of any file: reading walks records one after the other, and
// now and then looks at a second or third one (a reference's block, its layer) before going on.
class SplitRecords {
public:
    struct Entry {
        std::uint64_t file = 0;
        std::uint32_t first = 0;   // the record's first tag
        std::uint32_t end = 0;     // one past its last
        std::vector<DxfTag> tags;  // and one more: where the record ends
    };

    const DxfTag* find(std::uint64_t file, std::uint32_t tag) {
        const Entry& last = m_entries[m_lastFound];
        if (last.file == file && tag >= last.first && tag < last.end)
            return &last.tags[tag - last.first];
        for (std::size_t i = 0; i < m_entries.size(); ++i) {
            const Entry& entry = m_entries[i];
            if (entry.file == file && tag >= entry.first && tag < entry.end) {
                m_lastFound = i;
                return &entry.tags[tag - entry.first];
            }
        }
        return nullptr;
    }
    Entry& next() {
        Entry& entry = m_entries[m_next];
        m_lastFound = m_next;
        m_next = (m_next + 1) % m_entries.size();
        entry.file = 0;
        entry.tags.clear();
        // A record of a million tags is rare; its memory is not kept for the small ones after it.
        if (entry.tags.capacity() > (std::size_t{1} << 16)) entry.tags.shrink_to_fit();
        return entry;
    }

private:
    std::array<Entry, 4> m_entries;
    std::size_t m_next = 0;
    std::size_t m_lastFound = 0;
};

thread_local SplitRecords t_split;

}  // namespace

DxfTagFile::DxfTagFile(std::string name, DxfBytes bytes)
    : m_name(std::move(name)), m_id(newFileId()), m_bytes(std::move(bytes)) {}

DxfResult<DxfTagFile> DxfTagFile::parse(std::string name, DxfBytes bytes,
                                        const DxfProgress& progress) {
    if (bytes.size() > std::numeric_limits<std::uint32_t>::max())
        return DxfError(name + ": the file is larger than 4 GiB");
    DxfTagFile file(std::move(name), std::move(bytes));
    const std::string_view start = file.m_bytes.view();
    if (progress) file.m_progress = &progress;
    DxfStatus status;
    if (start.starts_with(kDxfBinarySentinel)) {
        file.m_format = DxfFormat::Binary;
        file.m_index = DxfRecordIndex(true);
        file.m_prefixLength = kDxfBinarySentinel.size();
        status = file.scanBinary();
    } else {
        if (start.starts_with(kDxfByteOrderMark)) file.m_prefixLength = kDxfByteOrderMark.size();
        status = file.scanAscii();
    }
    file.m_progress = nullptr;
    if (!status.isOk()) return DxfError(status.errorString());
    return file;
}

DxfResult<DxfTagFile> DxfTagFile::parse(std::string name, std::string_view bytes) {
    return parse(std::move(name), DxfBytes::copyOf(bytes));
}

DxfStatus DxfTagFile::noteTag(DxfRecordIndex& index, const ScannedTag& tag, bool tellsProgress) {
    const std::string_view value(m_bytes.data() + tag.valueStart, tag.valueLength);
    if (index.note(tag.index, tag.code, tag.start, tag.valueStart, value)) {
        // Every 65,536 records: a 200 MB drawing tells some thirty times.
        if (tellsProgress && m_progress != nullptr && tag.code == 0 &&
            (index.starts().size() & 0xFFFF) == 0) {
            const std::uint64_t size = m_bytes.size() == 0 ? 1 : m_bytes.size();
            (*m_progress)(size + 3 * std::uint64_t{tag.start}, 4 * size);
        }
        return {};
    }
    const std::string where = m_format == DxfFormat::Ascii ? lineLocation(2ull * tag.index + 2)
                                                           : byteLocation(tag.valueStart);
    return DxfError(where + ": expected a hexadecimal handle for group code " +
                    std::to_string(tag.code) + ", found " + dxfQuoted(value));
}

std::string_view DxfTagFile::recordName(std::uint32_t record) const {
    const DxfRecordIndex::NameSpan& name = m_index.name(record);
    return {m_bytes.data() + name.offset, name.length};
}

const DxfTag& DxfTagFile::tagAt(std::uint32_t tag) const {
    if (tag >= m_originalTagCount) return m_addedTags[tag - m_originalTagCount];
    return originalTag(tag);
}

const DxfTag& DxfTagFile::originalTag(std::uint32_t tag) const {
    if (const DxfTag* known = t_split.find(m_id, tag)) return *known;
    const std::vector<std::uint32_t>& starts = m_index.starts();
    const auto after = std::upper_bound(starts.begin(), starts.end(), tag);
    const auto record = static_cast<std::uint32_t>(after - starts.begin() - 1);
    SplitRecords::Entry& entry = t_split.next();
    splitRecord(record, entry.tags);
    entry.file = m_id;
    entry.first = starts[record];
    entry.end = entry.first + static_cast<std::uint32_t>(entry.tags.size() - 1);
    return entry.tags[tag - entry.first];
}

void DxfTagFile::splitRecord(std::uint32_t record, std::vector<DxfTag>& into) const {
    const std::vector<std::uint32_t>& starts = m_index.starts();
    const std::vector<std::uint32_t>& offsets = m_index.offsets();
    const std::uint32_t first = starts[record];
    const std::uint32_t end = record + 1 < starts.size() ? starts[record + 1] : m_originalTagCount;
    into.reserve(end - first + 1);
    if (m_format == DxfFormat::Ascii)
        splitAscii(offsets[record], end - first, into);
    else
        splitBinary(offsets[record], end - first, into);
    // Where the record ends, as the head of a tag of no length, so that every value's end is the
    // next tag's start.
    into.push_back(DxfTag{offsets[record + 1], 0, 0, 0});
}

std::string_view DxfTagFile::value(std::uint32_t tag) const {
    const DxfTag& t = tagAt(tag);
    const std::size_t trailer = t.flags & kTrailerMask;
    if ((t.flags & kAdded) != 0) {
        const std::string& text = m_added[t.valueOffset];
        return std::string_view(text).substr(t.headLength, text.size() - t.headLength - trailer);
    }
    const DxfTag& next = (&t)[1];
    const std::size_t end = next.valueOffset - next.headLength;
    return {m_bytes.data() + t.valueOffset, end - t.valueOffset - trailer};
}

std::string_view DxfTagFile::raw(std::uint32_t tag) const {
    const DxfTag& t = tagAt(tag);
    if ((t.flags & kAdded) != 0) return m_added[t.valueOffset];
    const DxfTag& next = (&t)[1];
    const std::size_t start = t.valueOffset - t.headLength;
    return {m_bytes.data() + start, next.valueOffset - next.headLength - start};
}

std::optional<double> DxfTagFile::real(std::uint32_t tag) const {
    const std::string_view v = value(tag);
    if (m_format == DxfFormat::Ascii) return parseDxfReal(v);
    double result = 0.0;
    if (v.size() != sizeof result) return std::nullopt;
    std::memcpy(&result, v.data(), sizeof result);
    return result;
}

std::optional<std::int64_t> DxfTagFile::integer(std::uint32_t tag) const {
    return integerValue(value(tag));
}

std::optional<std::int64_t> DxfTagFile::integerValue(std::string_view v) const {
    if (m_format == DxfFormat::Ascii) return parseDxfInteger(v);
    switch (v.size()) {
        case 1:
            return static_cast<unsigned char>(v[0]);
        case 2: {
            std::int16_t n = 0;
            std::memcpy(&n, v.data(), sizeof n);
            return n;
        }
        case 4: {
            std::int32_t n = 0;
            std::memcpy(&n, v.data(), sizeof n);
            return n;
        }
        case 8: {
            std::int64_t n = 0;
            std::memcpy(&n, v.data(), sizeof n);
            return n;
        }
        default:
            return std::nullopt;
    }
}

std::optional<std::uint64_t> DxfTagFile::handle(std::uint32_t tag) const {
    return parseDxfHex(value(tag));
}

std::string DxfTagFile::lineLocation(std::uint64_t line) const {
    return m_name + ":" + std::to_string(line);
}

std::string DxfTagFile::byteLocation(std::size_t offset) const {
    return m_name + ":byte " + std::to_string(offset);
}

std::string DxfTagFile::location(std::uint32_t tag) const {
    if (tag >= m_originalTagCount) return m_name;
    if (m_format == DxfFormat::Ascii) return lineLocation(2ull * tag + 1);
    return byteLocation(static_cast<std::size_t>(raw(tag).data() - m_bytes.data()));
}

std::string DxfTagFile::valueLocation(std::uint32_t tag) const {
    if (tag >= m_originalTagCount) return m_name;
    if (m_format == DxfFormat::Ascii) return lineLocation(2ull * tag + 2);
    return byteLocation(tagAt(tag).valueOffset);
}

std::string DxfTagFile::endLocation() const {
    if (m_format == DxfFormat::Ascii) return lineLocation(2ull * m_originalTagCount + 1);
    return byteLocation(m_bytes.size());
}

std::string DxfTagFile::binaryCode(int code) const {
    if (!m_byteCodes) return bytesOf(static_cast<std::int16_t>(code));
    if (code >= 0 && code < 255) return std::string(1, static_cast<char>(code));
    return '\xff' + bytesOf(static_cast<std::int16_t>(code));
}

std::uint32_t DxfTagFile::appendRaw(int code, std::string_view head, std::string_view value,
                                    std::string_view tail) {
    std::string text;
    text.reserve(head.size() + value.size() + tail.size());
    text.append(head).append(value).append(tail);
    m_added.push_back(std::move(text));
    m_addedTags.push_back(DxfTag{
        static_cast<std::uint32_t>(m_added.size() - 1), static_cast<std::int16_t>(code),
        static_cast<std::uint8_t>(head.size()), static_cast<std::uint8_t>(tail.size() | kAdded)});
    return tagCount() - 1;
}

std::string DxfTagFile::stringHead(int code) const {
    return m_format == DxfFormat::Binary ? binaryCode(code) : formatDxfInteger(code, 3) + m_lineEnd;
}

std::string_view DxfTagFile::stringTail() const {
    return m_format == DxfFormat::Binary ? std::string_view("\0", 1) : std::string_view(m_lineEnd);
}

std::string DxfTagFile::encodedString(int code, std::string_view bytes) const {
    return stringHead(code).append(bytes).append(stringTail());
}

std::uint32_t DxfTagFile::appendString(int code, std::string_view bytes) {
    return appendRaw(code, stringHead(code), bytes, stringTail());
}

std::uint32_t DxfTagFile::appendReal(int code, double value) {
    if (m_format == DxfFormat::Binary) return appendRaw(code, binaryCode(code), bytesOf(value), {});
    return appendString(code, formatDxfReal(value));
}

std::uint32_t DxfTagFile::appendInteger(int code, std::int64_t value) {
    const DxfValueType type = dxfValueType(code);
    if (m_format == DxfFormat::Ascii)
        return appendString(code, formatDxfInteger(value, asciiWidth(type)));
    switch (type) {
        case DxfValueType::Bool:
            return appendRaw(code, binaryCode(code), bytesOf(static_cast<std::uint8_t>(value)), {});
        case DxfValueType::Int32:
            return appendRaw(code, binaryCode(code), bytesOf(static_cast<std::int32_t>(value)), {});
        case DxfValueType::Int64:
            return appendRaw(code, binaryCode(code), bytesOf(value), {});
        case DxfValueType::Int16:
        case DxfValueType::String:
        case DxfValueType::Handle:
        case DxfValueType::Double:
        case DxfValueType::Chunk:
            break;
    }
    return appendRaw(code, binaryCode(code), bytesOf(static_cast<std::int16_t>(value)), {});
}

std::uint32_t DxfTagFile::appendHandle(int code, std::uint64_t value) {
    return appendString(code, formatDxfHex(value));
}
