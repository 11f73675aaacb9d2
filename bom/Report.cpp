// Writing the text report.
#include "bom/Report.h"

#include "host/api/acededitor.h"
#include "pricelist/PriceListFile.h"

namespace {

// "%*s": right-aligned in at least `width` characters.
void AppendField(std::wstring& line, const std::wstring& text, std::size_t width) {
    if (!line.empty()) line += L' ';
    if (text.size() < width) line.append(width - text.size(), L' ');
    line += text;
}

std::wstring ReportLine(const BomRow& cells, bool showPrices) {
    std::wstring line;
    AppendField(line, cells[kNameColumn], 10);
    if (showPrices) AppendField(line, cells[kPriceColumn], 10);
    AppendField(line, cells[kQuantityColumn], 10);
    AppendField(line, cells[kDescriptionColumn], 20);
    if (showPrices) AppendField(line, cells[kTotalColumn], 10);
    return line;
}

std::wstring DropLast4(const std::wstring& text) {
    return text.size() > 4 ? text.substr(0, text.size() - 4) : std::wstring();
}

}  // namespace

std::vector<std::wstring> ReportLines(const std::vector<BomRow>& rows, bool showPrices) {
    BomRow header;
    for (int k = 0; k < kBomColumnCount; ++k) header[static_cast<std::size_t>(k)] = BomColumnTitles[static_cast<std::size_t>(k)];
    std::vector<std::wstring> lines{ReportLine(header, showPrices)};
    for (const auto& row : rows) {
        if (row[kNameColumn] == kSummaryName && !showPrices) continue;
        lines.push_back(ReportLine(row, showPrices));
    }
    return lines;
}

std::wstring ReportText(const std::vector<BomRow>& rows, bool showPrices) {
    std::wstring text;
    for (const auto& line : ReportLines(rows, showPrices)) text += line + L'\n';
    return text;
}

int WriteReport(const std::vector<BomRow>& rows, bool showPrices, const std::wstring& path,
                const TextFormat& format) {
    if (!WriteTextFile(path, ReportText(rows, showPrices), format).isOk()) {
        acedAlert(FileNotOpenedMessage(path).c_str());
        return 0;
    }
    return 1;
}

std::wstring ProposeReportName(const std::wstring& lastCalcFileName, const std::wstring& drawingName) {
    const std::wstring base =
        lastCalcFileName.empty() ? drawingName : DropLast4(lastCalcFileName) + L"-" + drawingName;
    return DropLast4(base) + L".txt";
}
