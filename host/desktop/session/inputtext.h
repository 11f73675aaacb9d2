// What the user types at a prompt, read as numbers and points, and numbers written back for echo.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "host/api/acgepoint3d.h"

// A decimal number with "." as the point whatever the locale ("2", "-0.5", "1e3"); surrounding
// blanks allowed, nothing else.
std::optional<double> parseReal(std::wstring_view text);

// "x,y" or "x,y,z" (z = 0 when left out); "@dx,dy[,dz]" is relative to `last`, or to the origin
// without one.
std::optional<AcGePoint3d> parsePoint(std::wstring_view text, const AcGePoint3d* last = nullptr);

// The shortest text that reads back to the same number ("0.5", "12", "1e-07").
std::wstring formatReal(double value);
// "x,y,z" in formatReal's numbers.
std::wstring formatPoint(const AcGePoint3d& point);
