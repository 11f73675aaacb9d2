// The price tables of a drawing as the console reports them: checked against what their sources
// count to now, named in JSON with whether each is current and whether it holds a given bill, and
// the tables from before they recorded their source named once.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "bom/TableRefresh.h"
#include "host/console/jsonwriter.h"

class AcDbDatabase;

struct DrawingTables {
    std::string drawing;
    std::vector<PriceTableCheck> checks;
};

// Checks the drawing's tables with the drawing as the working database for the while; a list
// given is counted against instead of the recorded ones.
DrawingTables checkDrawingTables(const std::string& drawing, AcDbDatabase& database,
                                 const std::wstring& priceList = {});

// "tables": one object a table with "drawing", "name", "current" (null when its source is
// unknown or cannot be counted) and, with a bill, "matches": whether the table holds its rows.
void writeTablesJson(JsonWriter& json, const std::vector<DrawingTables>& drawings,
                     const std::vector<BomRow>* bill = nullptr);

// "plan.dxf: QTB0001, QTB0003: source unknown (drawn before tables recorded it)"; empty when
// every table has a source.
std::string sourceUnknownLine(const DrawingTables& tables);

// The console's text of a wide message: UTF-8, bytes of file names that are none kept as they are.
std::string consoleText(const std::wstring& text);
