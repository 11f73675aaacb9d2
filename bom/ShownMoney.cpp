// Adding figures as shown, digit by digit, so that no binary fraction creeps in.
#include "bom/ShownMoney.h"

#include <algorithm>
#include <cstdint>

#include "bom/BomRows.h"
#include "text/Numbers.h"

namespace {

constexpr std::uint32_t kLimbBase = 1000000000;  // nine decimal digits a limb
constexpr std::size_t kLimbDigits = 9;

// A whole number of cents: its sign and its magnitude in limbs, least significant first.
struct Cents {
    bool negative = false;
    std::vector<std::uint32_t> limbs;
};

void Trim(std::vector<std::uint32_t>& limbs) {
    while (!limbs.empty() && limbs.back() == 0) limbs.pop_back();
}

Cents Parse(const std::wstring& figure) {
    Cents cents;
    std::wstring digits;
    for (const wchar_t c : figure) {
        if (c == L'-') cents.negative = true;
        if (c >= L'0' && c <= L'9') digits += c;
    }
    for (std::size_t end = digits.size(); end > 0;) {
        const std::size_t begin = end > kLimbDigits ? end - kLimbDigits : 0;
        std::uint32_t limb = 0;
        for (std::size_t i = begin; i < end; ++i) limb = limb * 10 + static_cast<std::uint32_t>(digits[i] - L'0');
        cents.limbs.push_back(limb);
        end = begin;
    }
    Trim(cents.limbs);
    return cents;
}

int CompareMagnitudes(const std::vector<std::uint32_t>& a, const std::vector<std::uint32_t>& b) {
    if (a.size() != b.size()) return a.size() < b.size() ? -1 : 1;
    for (std::size_t i = a.size(); i-- > 0;) {
        if (a[i] != b[i]) return a[i] < b[i] ? -1 : 1;
    }
    return 0;
}

std::vector<std::uint32_t> AddMagnitudes(const std::vector<std::uint32_t>& a,
                                         const std::vector<std::uint32_t>& b) {
    std::vector<std::uint32_t> sum;
    std::uint32_t carry = 0;
    for (std::size_t i = 0; i < std::max(a.size(), b.size()) || carry != 0; ++i) {
        std::uint32_t limb = carry + (i < a.size() ? a[i] : 0) + (i < b.size() ? b[i] : 0);
        carry = limb >= kLimbBase ? 1 : 0;
        sum.push_back(limb - carry * kLimbBase);
    }
    return sum;
}

// a - b for a >= b.
std::vector<std::uint32_t> SubtractMagnitudes(const std::vector<std::uint32_t>& a,
                                              const std::vector<std::uint32_t>& b) {
    std::vector<std::uint32_t> difference;
    std::uint32_t borrow = 0;
    for (std::size_t i = 0; i < a.size(); ++i) {
        const std::uint64_t take = std::uint64_t{i < b.size() ? b[i] : 0} + borrow;
        borrow = a[i] < take ? 1 : 0;
        difference.push_back(static_cast<std::uint32_t>(a[i] + borrow * std::uint64_t{kLimbBase} - take));
    }
    Trim(difference);
    return difference;
}

void Add(Cents& sum, const Cents& figure) {
    if (sum.negative == figure.negative) {
        sum.limbs = AddMagnitudes(sum.limbs, figure.limbs);
        return;
    }
    if (CompareMagnitudes(sum.limbs, figure.limbs) >= 0) {
        sum.limbs = SubtractMagnitudes(sum.limbs, figure.limbs);
        return;
    }
    sum.limbs = SubtractMagnitudes(figure.limbs, sum.limbs);
    sum.negative = figure.negative;
}

std::wstring Format(const Cents& cents) {
    std::wstring digits;
    for (std::size_t i = cents.limbs.size(); i-- > 0;) {
        std::wstring limb = std::to_wstring(cents.limbs[i]);
        if (i + 1 != cents.limbs.size()) limb.insert(0, kLimbDigits - limb.size(), L'0');
        digits += limb;
    }
    if (digits.size() < 3) digits.insert(0, 3 - digits.size(), L'0');
    digits.insert(digits.size() - 2, 1, L'.');
    return (cents.negative && !cents.limbs.empty() ? L"-" : L"") + digits;
}

}  // namespace

bool IsShownMoney(const std::wstring& text) {
    const std::size_t start = text.starts_with(L'-') ? 1 : 0;
    if (text.size() < start + 4 || text[text.size() - 3] != L'.') return false;
    for (std::size_t i = start; i < text.size(); ++i) {
        if (i != text.size() - 3 && (text[i] < L'0' || text[i] > L'9')) return false;
    }
    return true;
}

std::wstring SumShownMoney(const std::vector<std::wstring>& figures) {
    if (!std::all_of(figures.begin(), figures.end(), IsShownMoney)) {
        double sum = 0.0;
        for (const auto& figure : figures) sum += WToF(figure);
        return FormatMoney(sum);
    }
    Cents sum;
    for (const auto& figure : figures) Add(sum, Parse(figure));
    return Format(sum);
}
