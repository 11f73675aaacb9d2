// Splitting ASCII DXF into tags: a group code line, a value line, each checked against its type.
#include <bit>
#include <cstring>

#include "host/dxf/dxfgroupcode.h"
#include "host/dxf/dxfmessage.h"
#include "host/dxf/dxfnumber.h"
#include "host/dxf/dxftagfile.h"

namespace {

// Eight bytes at a time: most lines are short, and this runs over every byte of the file.
const char* findNewline(const char* p, const char* end) {
    constexpr std::uint64_t kOnes = 0x0101010101010101ull;
    constexpr std::uint64_t kHighs = 0x8080808080808080ull;
    while (end - p >= 8) {
        std::uint64_t word;
        std::memcpy(&word, p, sizeof word);
        const std::uint64_t x = word ^ (kOnes * '\n');
        const std::uint64_t zeros = (x - kOnes) & ~x & kHighs;
        if (zeros != 0) return p + (std::countr_zero(zeros) >> 3);
        p += 8;
    }
    while (p < end && *p != '\n') ++p;
    return p;
}

bool isBlank(char c) { return c == ' ' || c == '\t'; }

std::string_view lineAt(const char* p, const char* end) {
    const char* e = findNewline(p, end);
    if (e > p && e[-1] == '\r') --e;
    return {p, static_cast<std::size_t>(e - p)};
}

// Reads "  70\r\n"-like lines; on success `p` is left on the line's '\n'.
bool readCode(const char*& p, const char* end, int& code) {
    const char* q = p;
    while (q < end && isBlank(*q)) ++q;
    const bool negative = q < end && *q == '-';
    if (negative) ++q;
    int value = 0;
    int digits = 0;
    while (q < end && static_cast<unsigned char>(*q - '0') <= 9 && digits <= 5) {
        value = value * 10 + (*q - '0');
        ++q;
        ++digits;
    }
    while (q < end && isBlank(*q)) ++q;
    if (q < end && *q == '\r') ++q;
    if (digits == 0 || digits > 5 || value > 32767) return false;
    if (q < end && *q != '\n') return false;
    code = negative ? -value : value;
    p = q;
    return true;
}

const char* typeWanted(DxfValueType type) {
    switch (type) {
        case DxfValueType::Double:
            return "a number";
        case DxfValueType::Int16:
        case DxfValueType::Int32:
        case DxfValueType::Int64:
        case DxfValueType::Bool:
            return "an integer";
        case DxfValueType::Chunk:
            return "hexadecimal data";
        case DxfValueType::String:
        case DxfValueType::Handle:
            break;
    }
    return nullptr;
}

bool isNumeric(DxfValueType type) {
    switch (type) {
        case DxfValueType::Double:
        case DxfValueType::Int16:
        case DxfValueType::Int32:
        case DxfValueType::Int64:
        case DxfValueType::Bool:
            return true;
        case DxfValueType::String:
        case DxfValueType::Handle:
        case DxfValueType::Chunk:
            break;
    }
    return false;
}

bool isDigit(char c) { return static_cast<unsigned char>(c - '0') <= 9; }

// Coordinates run to sixteen digits; eight are checked at once (each byte's high half 3 and its
// low half at most 9, which adding 6 does not carry into the high half).
const char* skipDigits(const char* p, const char* end) {
    constexpr std::uint64_t kHighHalves = 0xF0F0F0F0F0F0F0F0ull;
    while (end - p >= 8) {
        std::uint64_t word;
        std::memcpy(&word, p, sizeof word);
        const std::uint64_t highs =
            (word & kHighHalves) | (((word + 0x0606060606060606ull) & kHighHalves) >> 4);
        if (highs != 0x3333333333333333ull) break;
        p += 8;
    }
    while (p < end && isDigit(*p)) ++p;
    return p;
}

// Checks a number line while looking for its end, so that numbers (half of all values) are read
// once: the '\n' (or the end of the file) after the number, or nullptr when the line is no number.
const char* numberLineEnd(const char* p, const char* end, bool real) {
    while (p < end && isBlank(*p)) ++p;
    if (p < end && (*p == '+' || *p == '-')) ++p;
    const char* digitsStart = p;
    p = skipDigits(p, end);
    std::ptrdiff_t digits = p - digitsStart;
    if (real) {
        if (p < end && *p == '.') {
            const char* fraction = ++p;
            p = skipDigits(p, end);
            digits += p - fraction;
        }
        if (digits > 0 && p < end && (*p == 'e' || *p == 'E')) {
            ++p;
            if (p < end && (*p == '+' || *p == '-')) ++p;
            const char* exponent = p;
            while (p < end && isDigit(*p)) ++p;
            if (p == exponent) return nullptr;
        }
    }
    if (digits == 0) return nullptr;
    while (p < end && isBlank(*p)) ++p;
    if (p < end && *p == '\r') ++p;
    if (p < end && *p != '\n') return nullptr;
    return p;
}

}  // namespace

template <typename Visit>
DxfStatus DxfTagFile::walkAscii(std::size_t from, std::uint32_t index, std::size_t& reached,
                                Visit&& visit) const {
    const char* const data = m_bytes.data();
    const char* const end = data + m_bytes.size();
    const char* p = data + from;
    while (p < end) {
        const char* const tagStart = p;
        int code = 0;
        if (!readCode(p, end, code))
            return DxfError(lineLocation(2ull * index + 1) + ": expected a group code, found " +
                            dxfQuoted(lineAt(tagStart, end)));
        if (p == end || p + 1 == end)
            return DxfError(lineLocation(2ull * index + 2) + ": expected the value of group code " +
                            std::to_string(code) + ", found the end of the file");
        const char* const valueStart = p + 1;
        const DxfValueType type = dxfValueType(code);
        const char* const newline =
            isNumeric(type) ? numberLineEnd(valueStart, end, type == DxfValueType::Double)
                            : findNewline(valueStart, end);
        if (newline == nullptr)
            return DxfError(lineLocation(2ull * index + 2) + ": expected " + typeWanted(type) +
                            " for group code " + std::to_string(code) + ", found " +
                            dxfQuoted(lineAt(valueStart, end)));
        const char* valueEnd = newline;
        std::uint8_t trailer = newline < end ? 1 : 0;
        if (trailer == 1 && valueEnd > valueStart && valueEnd[-1] == '\r') {
            --valueEnd;
            trailer = 2;
        }
        if (valueStart - tagStart > 255)
            return DxfError(lineLocation(2ull * index + 1) + ": expected a group code, found " +
                            dxfQuoted(lineAt(tagStart, end)));
        const std::string_view value(valueStart, static_cast<std::size_t>(valueEnd - valueStart));
        if (type == DxfValueType::Chunk && !isDxfHex(value))
            return DxfError(lineLocation(2ull * index + 2) + ": expected " + typeWanted(type) +
                            " for group code " + std::to_string(code) + ", found " +
                            dxfQuoted(value));
        p = newline < end ? newline + 1 : end;
        const ScannedTag tag{index++,
                             code,
                             static_cast<std::size_t>(tagStart - data),
                             static_cast<std::size_t>(valueStart - data),
                             value.size(),
                             trailer};
        if (!visit(tag)) break;
    }
    reached = static_cast<std::size_t>(p - data);
    return {};
}

DxfStatus DxfTagFile::scanAscii() {
    const char* const data = m_bytes.data();
    const char* const end = data + m_bytes.size();
    const char* const firstNewline = findNewline(data + m_prefixLength, end);
    if (firstNewline < end && firstNewline > data + m_prefixLength && firstNewline[-1] == '\r')
        m_lineEnd = "\r\n";
    std::size_t reached = 0;
    DxfStatus fault;
    DxfStatus status = walkAscii(m_prefixLength, 0, reached,
                                 [&](const ScannedTag& tag) { return scanned(tag, fault); });
    return finishScan(std::move(status), std::move(fault), reached);
}

void DxfTagFile::splitAscii(std::size_t from, std::uint32_t index, std::uint32_t count,
                            std::vector<DxfTag>& into) const {
    std::size_t reached = 0;
    // The scan checked every tag already, so the walk finds no fault here.
    (void)walkAscii(from, index, reached, [&](const ScannedTag& tag) {
        into.push_back(DxfTag{static_cast<std::uint32_t>(tag.valueStart),
                              static_cast<std::int16_t>(tag.code),
                              static_cast<std::uint8_t>(tag.valueStart - tag.start), tag.trailer});
        return into.size() < count;
    });
}

bool DxfTagFile::mayBeDxf(std::string_view head) {
    if (kDxfBinarySentinel.starts_with(head.substr(0, kDxfBinarySentinel.size()))) return true;
    if (head.starts_with(kDxfByteOrderMark)) head.remove_prefix(kDxfByteOrderMark.size());
    const char* p = head.data();
    int code = 0;
    return readCode(p, head.data() + head.size(), code);
}
