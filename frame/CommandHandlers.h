// The two commands' handlers and the state they keep between runs.
#pragma once

#include <string>

// "RZBOMT": the price-list editor.
void BlockPriceCmd();
// "RZBOMC": the calculation, its dialog and the placement of the table.
void CalcPriceCmd();

// The price list the calculation last opened; the default of its next file prompt.
extern std::wstring lastCalcFileName;
