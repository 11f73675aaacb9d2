// One row of the bill of materials.
#pragma once

#include <cstdint>
#include <string>

struct ResultString {
    std::wstring name;  // lower-cased once counting has run
    double price = 0.0;
    std::int32_t quantity = 0;
    std::wstring description;
    double total = 0.0;  // price summed over every counted reference
    friend bool operator==(const ResultString&, const ResultString&) = default;
};
