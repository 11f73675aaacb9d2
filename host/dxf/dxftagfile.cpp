// Reading and appending tags; the scanners for the two forms live in their own files.
#include "host/dxf/dxftagfile.h"

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

DxfTagFile::DxfTagFile(std::string name, std::unique_ptr<char[]> bytes, std::size_t size)
    : m_name(std::move(name)), m_data(std::move(bytes)), m_size(size) {}

DxfResult<DxfTagFile> DxfTagFile::parse(std::string name, std::unique_ptr<char[]> bytes,
                                        std::size_t size, const DxfProgress& progress) {
    if (size > std::numeric_limits<std::uint32_t>::max())
        return DxfError(name + ": the file is larger than 4 GiB");
    DxfTagFile file(std::move(name), std::move(bytes), size);
    // While scanning, every tag is an original one, so that messages can name its place.
    file.m_originalTagCount = std::numeric_limits<std::uint32_t>::max();
    const std::string_view start(file.m_data.get(), size);
    if (progress) file.m_progress = &progress;
    DxfStatus status;
    if (start.starts_with(kDxfBinarySentinel)) {
        file.m_format = DxfFormat::Binary;
        file.m_prefixLength = kDxfBinarySentinel.size();
        file.m_tags.reserve(size / 2 + 16);
        status = file.scanBinary();
    } else {
        if (start.starts_with(kDxfByteOrderMark)) file.m_prefixLength = kDxfByteOrderMark.size();
        // Every tag takes at least four bytes; pages of the reserve that stay unused are never
        // touched.
        file.m_tags.reserve(size / 4 + 16);
        status = file.scanAscii();
    }
    file.m_progress = nullptr;
    if (!status.isOk()) return DxfError(status.errorString());
    file.m_originalTagCount = file.tagCount();
    return file;
}

DxfResult<DxfTagFile> DxfTagFile::parse(std::string name, std::string_view bytes) {
    auto copy = std::make_unique_for_overwrite<char[]>(bytes.size() + 1);
    std::memcpy(copy.get(), bytes.data(), bytes.size());
    return parse(std::move(name), std::move(copy), bytes.size());
}

DxfStatus DxfTagFile::noteTag(std::uint32_t index, std::string_view text) {
    const int tagCode = code(index);
    if (tagCode == 0 || index == 0) {
        // Every 65,536 records: a 200 MB drawing tells some thirty times.
        if (m_progress != nullptr && (m_recordStarts.size() & 0xFFFF) == 0) {
            const std::uint64_t size = m_size == 0 ? 1 : m_size;
            (*m_progress)(size + 3 * std::uint64_t{m_tags[index].valueOffset}, 4 * size);
        }
        m_recordStarts.push_back(index);
        m_recordKinds.push_back(tagCode == 0 ? dxfRecordKind(text) : DxfRecordKind::Other);
    }
    if (tagCode == 0) {
        m_beforeSubclass = true;
        m_ownHandleCode = text == "DIMSTYLE" ? 105 : 5;
        m_reachedEof = m_recordKinds.back() == DxfRecordKind::Eof;
    } else if (tagCode == 100) {
        m_beforeSubclass = false;
    } else if (m_beforeSubclass && tagCode == m_ownHandleCode) {
        m_beforeSubclass = false;
        if (!isDxfHex(text))
            return DxfError(valueLocation(index) +
                            ": expected a hexadecimal handle for group code " +
                            std::to_string(tagCode) + ", found " + dxfQuoted(text));
    }
    return {};
}

std::string_view DxfTagFile::raw(std::uint32_t tag) const {
    const DxfTag& t = m_tags[tag];
    if ((t.flags & kAdded) != 0) return m_added[t.valueOffset];
    const std::size_t start = t.valueOffset - t.headLength;
    return {m_data.get() + start, endOf(tag) - start};
}

std::string_view DxfTagFile::span(std::uint32_t first, std::uint32_t last) const {
    const std::size_t start = m_tags[first].valueOffset - m_tags[first].headLength;
    return {m_data.get() + start, endOf(last) - start};
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
    const std::string_view v = value(tag);
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
    return byteLocation(static_cast<std::size_t>(raw(tag).data() - m_data.get()));
}

std::string DxfTagFile::valueLocation(std::uint32_t tag) const {
    if (tag >= m_originalTagCount) return m_name;
    if (m_format == DxfFormat::Ascii) return lineLocation(2ull * tag + 2);
    return byteLocation(m_tags[tag].valueOffset);
}

std::string DxfTagFile::endLocation() const {
    if (m_format == DxfFormat::Ascii) return lineLocation(2ull * m_originalTagCount + 1);
    return byteLocation(m_size);
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
    pushTag(m_added.size() - 1, code, head.size(), static_cast<std::uint8_t>(tail.size() | kAdded));
    return tagCount() - 1;
}

std::uint32_t DxfTagFile::appendString(int code, std::string_view bytes) {
    if (m_format == DxfFormat::Binary)
        return appendRaw(code, binaryCode(code), bytes, std::string_view("\0", 1));
    return appendRaw(code, formatDxfInteger(code, 3) + m_lineEnd, bytes, m_lineEnd);
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
