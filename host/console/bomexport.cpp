// Laying out the exports and writing the CSV file.
#include "host/console/bomexport.h"

#include <algorithm>
#include <filesystem>

#include "files/atomicfile.h"
#include "text/TextFile.h"

namespace {

constexpr std::size_t kFieldWidth = 10;
constexpr std::size_t kDescriptionWidth = 20;

// A drawing's column is headed by its file name, or by its path as given where two drawings
// share a file name.
std::vector<std::wstring> drawingTitles(const std::vector<std::string>& paths) {
    std::vector<std::wstring> titles;
    for (const auto& path : paths)
        titles.push_back(WidePath(std::filesystem::path(path).filename().string()));
    for (std::size_t i = 0; i < titles.size(); ++i) {
        if (std::count(titles.begin(), titles.end(), titles[i]) > 1) {
            titles.clear();
            for (const auto& path : paths) titles.push_back(WidePath(path));
            break;
        }
    }
    return titles;
}

void fitWidths(ExportTable& table) {
    auto fit = [&](const std::vector<std::wstring>& cells) {
        for (std::size_t c = 0; c < cells.size(); ++c)
            table.columns[c].width = std::max(table.columns[c].width, cells[c].size());
    };
    std::vector<std::wstring> titles;
    for (const auto& column : table.columns) titles.push_back(column.title);
    fit(titles);
    for (const auto& row : table.rows) fit(row);
    if (table.summary) fit(*table.summary);
}

std::string csvField(const std::wstring& text) {
    const std::string bytes = EncodeUtf8(text);
    if (bytes.find_first_of(",\"\r\n") == std::string::npos) return bytes;
    std::string quoted = "\"";
    for (const char c : bytes) {
        if (c == '"') quoted += '"';
        quoted += c;
    }
    return quoted + "\"";
}

// The quantity columns before the total: one a space when layouts were counted ("Layout1", or
// "plan.dxf Layout1" among several drawings), else one a drawing when there are several.
std::vector<std::wstring> quantityTitles(const BillOfMaterials& bill) {
    std::vector<std::wstring> drawings = drawingTitles(bill.drawings);
    if (bill.spaces.empty()) return drawings.size() > 1 ? drawings : std::vector<std::wstring>{};
    std::vector<std::wstring> titles;
    for (const BillSpace& space : bill.spaces) {
        titles.push_back(drawings.size() > 1 ? drawings[space.drawing] + L" " + space.name
                                             : space.name);
    }
    return titles;
}

}  // namespace

ExportTable exportTable(const BillOfMaterials& bill, bool showPrices) {
    ExportTable table;
    const std::vector<std::wstring> quantities = quantityTitles(bill);
    table.columns.push_back({BomColumnTitles[kNameColumn], ExportKind::Text, kFieldWidth});
    if (showPrices)
        table.columns.push_back({BomColumnTitles[kPriceColumn], ExportKind::Money, kFieldWidth});
    for (const std::wstring& title : quantities)
        table.columns.push_back({title, ExportKind::Count, kFieldWidth});
    table.columns.push_back({BomColumnTitles[kQuantityColumn], ExportKind::Count, kFieldWidth});
    table.columns.push_back(
        {BomColumnTitles[kDescriptionColumn], ExportKind::Text, kDescriptionWidth});
    if (showPrices)
        table.columns.push_back({BomColumnTitles[kTotalColumn], ExportKind::Money, kFieldWidth});

    for (const auto& line : bill.lines) {
        std::vector<std::wstring> row{line.cells[kNameColumn]};
        if (showPrices) row.push_back(line.cells[kPriceColumn]);
        if (!quantities.empty()) {
            for (const auto quantity : bill.spaces.empty() ? line.quantities : line.spaceQuantities)
                row.push_back(std::to_wstring(quantity));
        }
        row.push_back(line.cells[kQuantityColumn]);
        row.push_back(line.cells[kDescriptionColumn]);
        if (showPrices) row.push_back(line.cells[kTotalColumn]);
        table.rows.push_back(std::move(row));
    }
    if (showPrices && !bill.lines.empty()) {
        std::vector<std::wstring> summary(table.columns.size());
        summary.front() = kSummaryName;
        summary.back() = bill.total;
        table.summary = std::move(summary);
    }
    fitWidths(table);
    return table;
}

std::string csvBytes(const ExportTable& table) {
    std::string bytes = "\xEF\xBB\xBF";
    auto line = [&](const std::vector<std::wstring>& cells) {
        for (std::size_t c = 0; c < cells.size(); ++c) {
            if (c > 0) bytes += ',';
            bytes += csvField(cells[c]);
        }
        bytes += "\r\n";
    };
    std::vector<std::wstring> titles;
    for (const auto& column : table.columns) titles.push_back(column.title);
    line(titles);
    for (const auto& row : table.rows) line(row);
    if (table.summary) line(*table.summary);
    return bytes;
}

DxfStatus writeCsv(const std::string& path, const ExportTable& table) {
    const std::string bytes = csvBytes(table);
    const FileStatus status = replaceFile(path, bytes);
    if (!status.isOk()) return DxfError(status.errorString());
    return {};
}
