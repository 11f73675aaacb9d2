// Reporting a drawing's price tables.
#include "host/console/pricetables.h"

#include "host/api/acdbdatabase.h"
#include "text/TextFile.h"

namespace {

// The drawing is the working database while its tables are read.
class WorkingDatabase {
public:
    explicit WorkingDatabase(AcDbDatabase& database)
        : m_previous(acdbHostApplicationServices()->workingDatabase()) {
        acdbHostApplicationServices()->setWorkingDatabase(&database);
    }
    ~WorkingDatabase() { acdbHostApplicationServices()->setWorkingDatabase(m_previous); }
    WorkingDatabase(const WorkingDatabase&) = delete;
    WorkingDatabase& operator=(const WorkingDatabase&) = delete;

private:
    AcDbDatabase* m_previous;
};

std::optional<bool> isCurrent(const PriceTableCheck& check) {
    switch (check.state) {
        case TableState::Current:
            return true;
        case TableState::OutOfDate:
            return false;
        case TableState::ListMissing:
        case TableState::NotCounted:
        case TableState::SourceUnknown:
            break;
    }
    return std::nullopt;
}

void optionalFlag(JsonWriter& json, std::optional<bool> flag) {
    if (flag) {
        json.value(*flag);
    } else {
        json.null();
    }
}

// Whether the table holds the bill's rows, leaving out the rows of itself and of later tables,
// which it could not count.
std::optional<bool> matches(const PriceTableCheck& check, const std::vector<BomRow>& bill) {
    if (check.state == TableState::SourceUnknown) return std::nullopt;
    std::vector<BomRow> rows;
    for (const BomRow& row : bill) {
        if (IsCountedForTable(row[kNameColumn], check.name)) rows.push_back(row);
    }
    return DigestOfRows(rows, check.source.showPrices) == check.source.rowsDigest;
}

}  // namespace

DrawingTables checkDrawingTables(const std::string& drawing, AcDbDatabase& database,
                                 const std::wstring& priceList) {
    const WorkingDatabase working(database);
    return DrawingTables{drawing, CheckPriceTables(priceList)};
}

void writeTablesJson(JsonWriter& json, const std::vector<DrawingTables>& drawings,
                     const std::vector<BomRow>* bill) {
    json.key("tables");
    json.beginArray();
    for (const DrawingTables& drawing : drawings) {
        for (const PriceTableCheck& check : drawing.checks) {
            json.beginObject();
            json.key("drawing");
            json.value(std::wstring_view(WidePath(drawing.drawing)));
            json.key("name");
            json.value(std::wstring_view(check.name));
            json.key("current");
            optionalFlag(json, isCurrent(check));
            if (bill != nullptr) {
                json.key("matches");
                optionalFlag(json, matches(check, *bill));
            }
            json.endObject();
        }
    }
    json.endArray();
}

std::string sourceUnknownLine(const DrawingTables& tables) {
    std::wstring names;
    for (const PriceTableCheck& check : tables.checks) {
        if (check.state != TableState::SourceUnknown) continue;
        names += (names.empty() ? L"" : L", ") + check.name;
    }
    if (names.empty()) return {};
    return tables.drawing + ": " + consoleText(names) +
           ": source unknown (drawn before tables recorded it)";
}

std::string consoleText(const std::wstring& text) { return NativePath(text); }
