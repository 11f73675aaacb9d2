// One walk over a record, noting where each code first stands.
#include "host/desktop/scene/entityfields.h"

#include <bit>
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

constexpr std::uint64_t kIntegerPowers[] = {1ull,
                                            10ull,
                                            100ull,
                                            1000ull,
                                            10000ull,
                                            100000ull,
                                            1000000ull,
                                            10000000ull,
                                            100000000ull,
                                            1000000000ull,
                                            10000000000ull,
                                            100000000000ull,
                                            1000000000000ull,
                                            10000000000000ull,
                                            100000000000000ull,
                                            1000000000000000ull,
                                            10000000000000000ull};

// Where a byte of eight is `byte`: its place, or 8.
int placeOf(std::uint64_t word, char byte) {
    constexpr std::uint64_t kOnes = 0x0101010101010101ull;
    const std::uint64_t x = word ^ (kOnes * static_cast<unsigned char>(byte));
    const std::uint64_t zeros = (x - kOnes) & ~x & 0x8080808080808080ull;
    return zeros == 0 ? 8 : std::countr_zero(zeros) >> 3;
}

// The value of the `count` (0 to 8) digits ending at `end`, the bytes before the first taken as
// zeros. Reads the eight bytes before `end`; what is no digit sets bits of `bad`.
inline std::uint64_t digitsBefore(const char* end, int count, std::uint64_t& bad) {
    std::uint64_t word = 0;
    std::memcpy(&word, end - 8, sizeof word);
    const std::uint64_t keep = count == 0 ? 0 : ~0ull << ((64 - 8 * count) & 63);
    word = (word & keep) | (0x3030303030303030ull & ~keep);
    const std::uint64_t d = word - 0x3030303030303030ull;
    bad |= (d | (word + 0x4646464646464646ull)) & 0x8080808080808080ull;
    const std::uint64_t pairs = (d * 10) + (d >> 8);
    return (((pairs & 0x000000FF000000FFull) * (100 + (1000000ull << 32))) +
            (((pairs >> 16) & 0x000000FF000000FFull) * (1 + (10000ull << 32)))) >>
           32;
}

// The value of the `count` (0 to 16) digits ending at `end`; reads the sixteen bytes before it.
// Both halves are always read: lengths vary from number to number, and a branch on them would
// be mispredicted half the time.
inline std::uint64_t digitRun(const char* end, int count, std::uint64_t& bad) {
    const std::uint64_t low = digitsBefore(end, std::min(count, 8), bad);
    const std::uint64_t high = digitsBefore(end - 8, std::max(count - 8, 0), bad);
    return high * 100000000ull + low;
}

// The common shape of a coordinate ("-1234.5678", no blanks or exponent), read without a loop
// over its digits; what it does not take goes to plainDecimal, which gives the same value for
// what it does. `lowest` and `highest` bound the bytes around the text that may be read.
std::optional<double> shortDecimal(std::string_view text, const char* lowest,
                                   const char* highest) {
    const char* p = text.data();
    auto n = static_cast<int>(text.size());
    const auto at = reinterpret_cast<std::uintptr_t>(p);
    if (n == 0 || n > 20 || at < reinterpret_cast<std::uintptr_t>(lowest) + 16 ||
        at + 24 > reinterpret_cast<std::uintptr_t>(highest))
        return std::nullopt;
    const bool negative = *p == '-';
    p += negative ? 1 : 0;
    n -= negative ? 1 : 0;
    std::uint64_t first = 0;
    std::uint64_t second = 0;
    std::memcpy(&first, p, sizeof first);
    std::memcpy(&second, p + 8, sizeof second);
    const int inFirst = placeOf(first, '.');
    const int dot = std::min(n, inFirst < 8 ? inFirst : 8 + placeOf(second, '.'));
    const int fraction = std::max(n - dot - 1, 0);
    if (dot + fraction == 0 || dot + fraction > 19 || dot > 16 || fraction > 16 ||
        (dot == 16 && n > 16))
        return std::nullopt;
    std::uint64_t bad = 0;
    const std::uint64_t whole = digitRun(p + dot, dot, bad);
    const std::uint64_t part = digitRun(p + dot + 1 + fraction, fraction, bad);
    if (bad != 0) return std::nullopt;
    const std::uint64_t mantissa = whole * kIntegerPowers[fraction] + part;
    const double value = static_cast<double>(mantissa) / kPowersOfTen[fraction];
    return negative ? -value : value;
}

}  // namespace

double sceneReal(const DxfTagFile& file, std::uint32_t tag, double fallback) {
    if (file.format() == DxfFormat::Ascii) {
        const std::string_view text = file.value(tag);
        const std::string_view after = file.trailer();
        if (const auto value =
                shortDecimal(text, file.prefix().data(), after.data() + after.size()))
            return *value;
        if (const auto value = plainDecimal(text)) return *value;
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
