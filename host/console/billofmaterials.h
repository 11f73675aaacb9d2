// The bill of materials of one or several drawings: the module's rows, counted from each drawing's
// tally through the module's counting, with what the console adds to them: each drawing's
// quantity (and each space's, when layouts are counted), the dynamic-block variants a row was
// counted from, and the grand total as shown.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "bom/BomCalculation.h"
#include "bom/BomRows.h"
#include "host/console/drawingbatch.h"
#include "host/dxf/dxfresult.h"

struct BomLine {
    BomRow cells;                               // as the grid and the report show the row
    std::vector<std::int64_t> quantities;       // one a drawing, in the order given
    std::vector<std::wstring> variants;         // anonymous records counted under this row's name
    bool unlinked = false;                      // the row's name is a "*U" record without a link
    bool fromArrays = false;                    // arrays counted columns x rows make part of it
    std::vector<std::int64_t> spaceQuantities;  // one a space of the bill's spaces
};

// A space whose references were counted apart: model space or a layout of one drawing.
struct BillSpace {
    std::size_t drawing = 0;
    std::wstring name;
};

struct BillOfMaterials {
    std::vector<std::string> drawings;
    std::vector<BillSpace> spaces;  // when layouts were counted: each drawing's spaces in turn
    std::vector<BomLine> lines;     // the rows the grid shows, in its order, without the summary
    DisplayedResults shown;         // the module's grid rows, summary included (the report's rows)
    std::wstring total;             // the sum of the totals as shown: what exports give as total
};

// Counts every drawing's tally into the calculation's rows (its price list loaded). An error when a
// row would pass the module's 32-bit quantity.
DxfResult<BillOfMaterials> countBillOfMaterials(BomCalculation& calculation,
                                                const std::vector<CountedDrawing>& drawings);
