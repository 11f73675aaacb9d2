// The handler of the price-list command "RZBOMT" ("BlockPrice_Global").
#pragma once

// Runs the price-list editor modally over the host's main window.
void BlockPriceCmd();
