// The bill of materials as a fixed-width text report.
#pragma once

#include <string>
#include <vector>

#include "bom/BomRows.h"
#include "text/TextFile.h"

// The report's lines without their line breaks: header, then each row ("Summary:" only while prices
// are shown). Fields right-aligned in 10 characters, the description in 20; longer texts push on.
std::vector<std::wstring> ReportLines(const std::vector<BomRow>& rows, bool showPrices);

// The report's lines, each ended by a line break.
std::wstring ReportText(const std::vector<BomRow>& rows, bool showPrices);

// 1 when written; 0, after the alert "File %s could  not be opened", when the file cannot be written.
int WriteReport(const std::vector<BomRow>& rows, bool showPrices, const std::wstring& path,
                const TextFormat& format);

// The price list's path without its last 4 characters, "-", the drawing's name; or the drawing's
// name alone without a price list. Then the last 4 characters are cut and ".txt" appended.
std::wstring ProposeReportName(const std::wstring& lastCalcFileName, const std::wstring& drawingName);
