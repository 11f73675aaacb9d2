// Reading and writing price-list files.
#include "pricelist/PriceListFile.h"

#include "host/api/acededitor.h"
#include "pricelist/FilesInUse.h"

namespace {

// One read of a line reader with a buffer of 1,000 characters: up to 999 characters, ending after a
// line feed. `atEnd` tells that the read ran into the end of the text, which ends the reading loop
// before that piece is used.
std::wstring_view NextPiece(std::wstring_view text, std::size_t& position, bool& atEnd) {
    const std::size_t start = position;
    std::size_t end = start;
    while (end < text.size() && end - start < kPriceListReadLength) {
        if (text[end++] == L'\n') {
            position = end;
            atEnd = false;
            return text.substr(start, end - start);
        }
    }
    position = end;
    atEnd = end - start < kPriceListReadLength;
    return text.substr(start, end - start);
}

// Copies up to the next "|" or the end; tells whether a "|" stopped it and steps over it.
std::wstring NextField(std::wstring_view line, std::size_t& position, bool& stoppedAtBar) {
    const std::size_t start = position;
    while (position < line.size() && line[position] != L'|' && line[position] != L'\n') ++position;
    std::wstring field(line.substr(start, position - start));
    stoppedAtBar = position < line.size() && line[position] == L'|';
    if (stoppedAtBar) ++position;
    return field;
}

PriceListLine ParseLine(std::wstring_view piece) {
    PriceListLine parsed;
    // The line is handled as a C string: it ends at a NUL, and its last character is cut.
    const std::size_t nul = piece.find(L'\0');
    if (nul != std::wstring_view::npos) piece = piece.substr(0, nul);
    const std::wstring_view line = piece.empty() ? piece : piece.substr(0, piece.size() - 1);
    if (line.empty()) {
        parsed.kind = PriceListLineKind::Empty;
        return parsed;
    }
    std::size_t position = 0;
    bool bar = false;
    parsed.row.name = NextField(line, position, bar);
    if (bar) parsed.row.price = NextField(line, position, bar);
    if (bar) parsed.row.description = NextField(line, position, bar);
    parsed.moreFields = bar;
    parsed.kind = parsed.row.name.empty()    ? PriceListLineKind::NoName
                  : parsed.row.price.empty() ? PriceListLineKind::NoPrice
                                             : PriceListLineKind::Row;
    return parsed;
}

}  // namespace

std::vector<PriceListLine> ScanPriceList(std::wstring_view text) {
    std::vector<PriceListLine> lines;
    std::size_t position = 0;
    std::size_t lineNumber = 1;
    bool continuing = false;  // the piece before did not end its line
    while (position < text.size()) {
        bool atEnd = false;
        const std::wstring_view piece = NextPiece(text, position, atEnd);
        const bool endsLine = piece.ends_with(L'\n');
        // The unread last line is parsed as if it had its line feed, to say what it would give.
        PriceListLine parsed = atEnd ? ParseLine(std::wstring(piece) + L'\n') : ParseLine(piece);
        if (atEnd) parsed.kind = PriceListLineKind::Unread;
        parsed.line = lineNumber;
        parsed.piece = continuing || (!endsLine && !atEnd);
        lines.push_back(std::move(parsed));
        if (atEnd) break;
        continuing = !endsLine;
        if (endsLine) ++lineNumber;
    }
    return lines;
}

std::vector<PriceListRow> ParsePriceList(std::wstring_view text) {
    std::vector<PriceListRow> rows;
    for (auto& line : ScanPriceList(text)) {
        if (line.kind == PriceListLineKind::Row) rows.push_back(std::move(line.row));
    }
    return rows;
}

std::wstring FileNotOpenedMessage(const std::wstring& path) {
    return L"File " + path + L" could  not be opened";
}

bool LoadPriceListFile(const std::wstring& path, std::vector<PriceListRow>& rows,
                       TextFormat& format) {
    auto content = ReadTextFile(path);
    if (!content) {
        acedAlert(FileNotOpenedMessage(path).c_str());
        return false;
    }
    rows = ParsePriceList(content->text);
    format = content->format;
    return true;
}

bool SavePriceListFile(const std::wstring& path, const std::vector<PriceListRow>& rows,
                       const TextFormat& format) {
    if (RefuseToWriteOver(path)) return false;
    std::wstring text;
    for (const auto& row : rows) {
        if (row.name.empty() && row.price.empty() && row.description.empty()) continue;
        text += row.name + L'|' + row.price + L'|' + row.description + L'\n';
    }
    if (!WriteTextFile(path, text, format).isOk()) {
        acedAlert(FileNotOpenedMessage(path).c_str());
        return false;
    }
    return true;
}
