// Writing the spreadsheet.
#include "host/console/xlsxexport.h"

#include <xlsxwriter.h>

#include "files/atomicfile.h"
#include "text/Numbers.h"
#include "text/TextFile.h"

namespace {

// Excel's built-in currency format with two decimals: shown with the reader's own currency sign.
constexpr std::uint8_t kCurrencyFormat = 7;

struct Formats {
    lxw_format* heading;
    lxw_format* money;
    lxw_format* summary;
    lxw_format* summaryMoney;
};

Formats makeFormats(lxw_workbook* workbook) {
    Formats formats{workbook_add_format(workbook), workbook_add_format(workbook),
                    workbook_add_format(workbook), workbook_add_format(workbook)};
    format_set_bold(formats.heading);
    format_set_num_format_index(formats.money, kCurrencyFormat);
    format_set_bold(formats.summary);
    format_set_bold(formats.summaryMoney);
    format_set_num_format_index(formats.summaryMoney, kCurrencyFormat);
    return formats;
}

// "A".."Z", "AA"...: the name of a column (0 for "A").
std::string columnName(std::size_t column) {
    std::string name;
    for (std::size_t n = column + 1; n > 0; n = (n - 1) / 26)
        name.insert(name.begin(), static_cast<char>('A' + (n - 1) % 26));
    return name;
}

lxw_error writeCell(lxw_worksheet* sheet, lxw_row_t row, lxw_col_t column, ExportKind kind,
                    const std::wstring& text, lxw_format* money) {
    if (text.empty()) return LXW_NO_ERROR;
    switch (kind) {
        case ExportKind::Text:
            return worksheet_write_string(sheet, row, column, EncodeUtf8(text).c_str(), nullptr);
        case ExportKind::Money:
            return worksheet_write_number(sheet, row, column, WToF(text), money);
        case ExportKind::Count:
            return worksheet_write_number(sheet, row, column, WToF(text), nullptr);
    }
    return LXW_NO_ERROR;
}

lxw_error writeSheet(lxw_workbook* workbook, const ExportTable& table) {
    lxw_worksheet* sheet = workbook_add_worksheet(workbook, kXlsxSheetName);
    if (sheet == nullptr) return LXW_ERROR_MEMORY_MALLOC_FAILED;
    const Formats formats = makeFormats(workbook);
    lxw_error error = LXW_NO_ERROR;
    for (lxw_col_t c = 0; c < table.columns.size() && error == LXW_NO_ERROR; ++c) {
        const ExportColumn& column = table.columns[c];
        error = worksheet_set_column(sheet, c, c, static_cast<double>(column.width + 1), nullptr);
        if (error == LXW_NO_ERROR)
            error = worksheet_write_string(sheet, 0, c, EncodeUtf8(column.title).c_str(),
                                           formats.heading);
    }
    worksheet_freeze_panes(sheet, 1, 0);
    for (std::size_t r = 0; r < table.rows.size() && error == LXW_NO_ERROR; ++r) {
        for (lxw_col_t c = 0; c < table.columns.size() && error == LXW_NO_ERROR; ++c)
            error = writeCell(sheet, static_cast<lxw_row_t>(r + 1), c, table.columns[c].kind,
                              table.rows[r][c], formats.money);
    }
    if (error != LXW_NO_ERROR || !table.summary) return error;
    const auto row = static_cast<lxw_row_t>(table.rows.size() + 1);
    const auto last = static_cast<lxw_col_t>(table.columns.size() - 1);
    error = worksheet_write_string(sheet, row, 0, EncodeUtf8(table.summary->front()).c_str(),
                                   formats.summary);
    // The sum of the cells above, with the sum of the shown totals as its value until recomputed.
    const std::string sum =
        "=SUM(" + columnName(last) + "2:" + columnName(last) + std::to_string(row) + ")";
    if (error == LXW_NO_ERROR)
        error = worksheet_write_formula_num(sheet, row, last, sum.c_str(), formats.summaryMoney,
                                            WToF(table.summary->back()));
    return error;
}

}  // namespace

DxfStatus writeXlsx(const std::string& path, const ExportTable& table) {
    // The workbook is written under the new file's own name, so that it appears whole or not at
    // all.
    AtomicFile file(path);
    if (const FileStatus opened = file.open(); !opened.isOk())
        return DxfError(opened.errorString());
    lxw_workbook* workbook = workbook_new(file.writablePath().c_str());
    if (workbook == nullptr) return DxfError(path + ": cannot start the workbook");
    const lxw_error written = writeSheet(workbook, table);
    const lxw_error closed = workbook_close(workbook);
    if (written != LXW_NO_ERROR || closed != LXW_NO_ERROR)
        return DxfError(path + ": cannot write the workbook: " +
                        lxw_strerror(written != LXW_NO_ERROR ? written : closed));
    if (const FileStatus committed = file.commit(); !committed.isOk())
        return DxfError(committed.errorString());
    return {};
}
