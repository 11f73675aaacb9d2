// The bill of materials as a spreadsheet (Office Open XML, through libxlsxwriter): one sheet with
// the exports' columns, numbers as numbers, money in a currency format, the summary row as a sum
// of the totals, and the report's column widths.
#pragma once

#include <string>

#include "host/console/bomexport.h"
#include "host/dxf/dxfresult.h"

inline constexpr const char* kXlsxSheetName = "Bill of materials";

// Written to a temporary file, then put beside the target and renamed over it.
DxfStatus writeXlsx(const std::string& path, const ExportTable& table);
