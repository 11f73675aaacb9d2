// One walk over a record, noting where each code first stands.
#include "host/desktop/scene/entityfields.h"

#include <cstring>

namespace {

constexpr double kPowersOfTen[] = {1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                   1e8,  1e9,  1e10, 1e11, 1e12, 1e13, 1e14, 1e15,
                                   1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};

// Eight digits at once (SWAR): whether the eight bytes are all digits, and their value.
bool eightDigits(const char* p, std::uint64_t& value) {
    std::uint64_t v = 0;
    std::memcpy(&v, p, sizeof v);
    const std::uint64_t low = v - 0x3030303030303030ull;
    const std::uint64_t high = v + 0x4646464646464646ull;  // '9' + 0x46 = 0x7F
    if (((low | high) & 0x8080808080808080ull) != 0) return false;
    std::uint64_t d = low;
    d = (d * 10) + (d >> 8);
    d = (((d & 0x000000FF000000FFull) * (100 + (1000000ull << 32))) +
         (((d >> 16) & 0x000000FF000000FFull) * (1 + (10000ull << 32)))) >>
        32;
    value = d;
    return true;
}

// Digits from p on: adds them to the mantissa, counts them, returns where they end. The sums
// are kept in locals: written through the references, every byte read could alias them.
const char* digitsOf(const char* p, const char* end, std::uint64_t& mantissaOut, int& digitsOut) {
    std::uint64_t mantissa = mantissaOut;
    int digits = digitsOut;
    std::uint64_t eight = 0;
    while (end - p >= 8 && digits <= 11 && eightDigits(p, eight)) {
        mantissa = mantissa * 100000000ull + eight;
        digits += 8;
        p += 8;
    }
    for (; p < end && *p >= '0' && *p <= '9'; ++p) {
        if (++digits > 19) break;
        mantissa = mantissa * 10 + static_cast<std::uint64_t>(*p - '0');
    }
    mantissaOut = mantissa;
    digitsOut = digits;
    return p;
}

// The plain decimal's value, or none when the text needs the full reader.
std::optional<double> plainDecimal(std::string_view text) {
    const char* p = text.data();
    const char* end = p + text.size();
    while (p < end && (*p == ' ' || *p == '\t')) ++p;
    bool negative = false;
    if (p < end && (*p == '-' || *p == '+')) negative = *p++ == '-';
    std::uint64_t mantissa = 0;
    int digits = 0;
    p = digitsOf(p, end, mantissa, digits);
    int fraction = 0;
    if (p < end && *p == '.') {
        const int before = digits;
        p = digitsOf(p + 1, end, mantissa, digits);
        fraction = digits - before;
    }
    while (p < end && (*p == ' ' || *p == '\t')) ++p;
    if (p != end || digits == 0 || digits > 19) return std::nullopt;
    const double value = static_cast<double>(mantissa) / kPowersOfTen[fraction];
    return negative ? -value : value;
}

}  // namespace

double sceneReal(const DxfTagFile& file, std::uint32_t tag, double fallback) {
    if (file.format() == DxfFormat::Ascii) {
        if (const auto value = plainDecimal(file.value(tag))) return *value;
    }
    return file.real(tag).value_or(fallback);
}

SceneFields::SceneFields() : m_slots(kCodes) {}

void SceneFields::read(const DxfTagFile& file, DxfTagRange record) {
    m_file = &file;
    if (++m_generation == 0) {
        m_slots.assign(kCodes, Slot{});
        m_generation = 1;
    }
    for (std::uint32_t i = 1; i < record.size(); ++i) {
        const std::uint32_t tag = record[i];
        const int code = file.code(tag);
        if (code >= kCodes) break;
        if (code < 0) continue;
        Slot& slot = m_slots[static_cast<std::size_t>(code)];
        if (slot.generation == m_generation) continue;
        slot = {m_generation, tag};
    }
}

double SceneFields::real(int code, double fallback) const {
    const auto tag = tagOf(code);
    if (!tag) return fallback;
    return sceneReal(*m_file, *tag, fallback);
}

std::int64_t SceneFields::integer(int code, std::int64_t fallback) const {
    const auto tag = tagOf(code);
    if (!tag) return fallback;
    return m_file->integer(*tag).value_or(fallback);
}

std::string_view SceneFields::text(int code) const {
    const auto tag = tagOf(code);
    return tag ? m_file->value(*tag) : std::string_view();
}
