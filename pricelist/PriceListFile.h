// The price-list file: lines "name|price|description", read with the line rules of the original
// reader (pieces of at most 999 characters, a last line without line feed is not read).
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "text/TextFile.h"

struct PriceListRow {
    std::wstring name;
    std::wstring price;  // the text as typed; never parsed here
    std::wstring description;
    friend bool operator==(const PriceListRow&, const PriceListRow&) = default;
};

// The longest piece one read returns; a longer line is read as several pieces, each taken as a line.
inline constexpr std::size_t kPriceListReadLength = 999;

// The rows a file's text gives; lines with an empty name or price are dropped.
std::vector<PriceListRow> ParsePriceList(std::wstring_view text);

// What the reader makes of each piece of a file, for tools that explain it line by line.
enum class PriceListLineKind {
    Row,      // a row
    Empty,    // an empty line: skipped
    NoName,   // skipped: the name is empty
    NoPrice,  // skipped: the price is empty (or there is no "|")
    Unread,   // the last line, without its line feed: never read
};

struct PriceListLine {
    std::size_t line = 0;  // the number of the file's line (1 for the first) the piece lies on
    PriceListLineKind kind = PriceListLineKind::Row;
    PriceListRow row;          // the fields as read, also of a skipped line
    bool piece = false;        // one of the pieces of a line longer than kPriceListReadLength
    bool moreFields = false;   // a third "|" was there: what follows it is not read
};

// Every piece in file order, with what became of it; the rows are those ParsePriceList gives.
std::vector<PriceListLine> ScanPriceList(std::wstring_view text);

// "File %s could  not be opened" with the path: the alert of every file that cannot be opened.
std::wstring FileNotOpenedMessage(const std::wstring& path);

// False, after the alert, when the file cannot be opened; `rows` is then unchanged.
bool LoadPriceListFile(const std::wstring& path, std::vector<PriceListRow>& rows,
                       TextFormat& format);
// Rows whose three fields are all empty are not written. False, after the alert, when the file
// cannot be written.
bool SavePriceListFile(const std::wstring& path, const std::vector<PriceListRow>& rows,
                       const TextFormat& format);
