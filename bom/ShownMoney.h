// Money as the bill of materials shows it: the "%.2f" figures of the grid and the report. Exports
// add these figures, not the unrounded values, so that a grand total is the sum of the totals a
// reader sees above it.
#pragma once

#include <string>
#include <vector>

// Whether the text is a figure as shown: an optional "-", digits, "." and two digits.
bool IsShownMoney(const std::wstring& text);

// The exact sum of figures as shown, in the same form ("1800.00" + "-0.10" = "1799.90"). A figure
// that is none (an infinite price shows as "inf") makes the sum that of the values they read as.
std::wstring SumShownMoney(const std::vector<std::wstring>& figures);
