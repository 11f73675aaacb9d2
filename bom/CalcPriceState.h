// The calculation's module-wide state: the price list it last opened and whether prices are shown.
#pragma once

#include <string>

// The default of the calculation's next price-list prompt; empty at start. The frame sets it when
// the command opens a list, the dialog when "&Attach New" does, and the settings keep it.
extern std::wstring lastCalcFileName;

// 1 while the bill shows prices (grid, report and table); kept while the module is loaded, never
// saved.
extern int showPricesFlag;
