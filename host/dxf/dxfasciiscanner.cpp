// Splitting ASCII DXF into tags: a group code line, a value line, each checked against its type.
#include <bit>
#include <cstring>

#include "host/dxf/dxfgroupcode.h"
#include "host/dxf/dxfmessage.h"
#include "host/dxf/dxfnumber.h"
#include "host/dxf/dxfscanparts.h"
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

namespace {

// Where a record seems to begin after the middle of the file: a line "0" followed by a line that
// starts with a capital letter. Only a guess; the scan checks it.
std::optional<std::size_t> guessRecordStart(std::string_view bytes) {
    if (bytes.size() < kSmallestScanInParts || std::thread::hardware_concurrency() < 2)
        return std::nullopt;
    const char* const data = bytes.data();
    const char* const end = data + bytes.size();
    const char* line = findNewline(data + bytes.size() / 2, end);
    for (int tries = 0; tries < 100000 && line < end; ++tries) {
        const char* const start = line + 1;
        const char* const lineEnd = findNewline(start, end);
        std::string_view text(start, static_cast<std::size_t>(lineEnd - start));
        while (!text.empty() && (text.back() == '\r' || isBlank(text.back())))
            text.remove_suffix(1);
        while (!text.empty() && isBlank(text.front())) text.remove_prefix(1);
        if (text == "0" && lineEnd + 1 < end && lineEnd[1] >= 'A' && lineEnd[1] <= 'Z')
            return static_cast<std::size_t>(start - data);
        line = lineEnd;
    }
    return std::nullopt;
}

}  // namespace

DxfStatus DxfTagFile::scanAscii() {
    const char* const data = m_bytes.data();
    const char* const end = data + m_bytes.size();
    const char* const firstNewline = findNewline(data + m_prefixLength, end);
    if (firstNewline < end && firstNewline > data + m_prefixLength && firstNewline[-1] == '\r')
        m_lineEnd = "\r\n";
    return scanInParts(guessRecordStart(m_bytes.view()),
                       [this](DxfRecordIndex& index, std::size_t from, std::size_t until,
                              std::size_t& reached, bool tellsProgress) {
                           DxfStatus fault;
                           DxfStatus walked = walkAscii(
                               from, index.tagCount(), reached, [&](const ScannedTag& tag) {
                                   if (!scanned(index, tag, fault, tellsProgress)) return false;
                                   return tag.valueStart + tag.valueLength + tag.trailer < until;
                               });
                           return walked.isOk() ? fault : walked;
                       });
}

void DxfTagFile::splitAscii(std::size_t from, std::uint32_t count,
                            std::vector<DxfTag>& into) const {
    // The scan checked every tag already: here a tag is its code line and the line after it.
    const char* const data = m_bytes.data();
    const char* const end = data + m_bytes.size();
    const char* p = data + from;
    for (std::uint32_t i = 0; i < count && p < end; ++i) {
        const char* const tagStart = p;
        int code = 0;
        readCode(p, end, code);
        const char* const valueStart = p + 1;
        const char* const newline = findNewline(valueStart, end);
        std::uint8_t trailer = newline < end ? 1 : 0;
        if (trailer == 1 && newline > valueStart && newline[-1] == '\r') trailer = 2;
        into.push_back(DxfTag{static_cast<std::uint32_t>(valueStart - data),
                              static_cast<std::int16_t>(code),
                              static_cast<std::uint8_t>(valueStart - tagStart), trailer});
        p = newline < end ? newline + 1 : end;
    }
}

bool DxfTagFile::mayBeDxf(std::string_view head) {
    if (kDxfBinarySentinel.starts_with(head.substr(0, kDxfBinarySentinel.size()))) return true;
    if (head.starts_with(kDxfByteOrderMark)) head.remove_prefix(kDxfByteOrderMark.size());
    const char* p = head.data();
    int code = 0;
    return readCode(p, head.data() + head.size(), code);
}
