// The bill of materials as the exports lay it out: the report's columns (price and total only
// while prices are shown), one quantity column a drawing before the total quantity when there
// are several (one a space when layouts were counted), the rows as shown, and the summary row
// with the sum of the shown totals.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "host/console/billofmaterials.h"
#include "host/dxf/dxfresult.h"

enum class ExportKind { Text, Money, Count };

struct ExportColumn {
    std::wstring title;
    ExportKind kind = ExportKind::Text;
    std::size_t width = 10;  // in characters: the report's field width, or the longest text
};

struct ExportTable {
    std::vector<ExportColumn> columns;
    std::vector<std::vector<std::wstring>> rows;  // the cells' texts as shown
    // The summary row ("Summary:" and the total; other cells empty), while prices are shown.
    std::optional<std::vector<std::wstring>> summary;
};

ExportTable exportTable(const BillOfMaterials& bill, bool showPrices);

// RFC 4180: fields separated by commas, quoted where they hold a comma, a quote or a line break,
// lines ended by CR LF; UTF-8 after a byte-order mark, so that spreadsheets read it so.
std::string csvBytes(const ExportTable& table);

// Each writes a temporary file beside the target and renames it over the target.
DxfStatus writeCsv(const std::string& path, const ExportTable& table);
