// Number texts of ASCII DXF: checking their form, reading them and writing new ones.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

// The text without the blanks (spaces, tabs) that writers put around values.
std::string_view dxfTrimmed(std::string_view text);

// Blanks (spaces, tabs) may surround every number; writers pad integers to a width.
bool isDxfInteger(std::string_view text);
bool isDxfReal(std::string_view text);
// Hexadecimal digits only; the empty text is accepted (a handle left blank).
bool isDxfHex(std::string_view text);

std::optional<double> parseDxfReal(std::string_view text);
std::optional<std::int64_t> parseDxfInteger(std::string_view text);
std::optional<std::uint64_t> parseDxfHex(std::string_view text);

// The shortest text that reads back as the same double, always with a decimal point or exponent.
std::string formatDxfReal(double value);
// Right-aligned in `width` columns, as CAD programs write flags and counts.
std::string formatDxfInteger(std::int64_t value, int width);
std::string formatDxfHex(std::uint64_t value);
