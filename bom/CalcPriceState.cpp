// The calculation's module-wide state.
#include "bom/CalcPriceState.h"

std::wstring lastCalcFileName;
int showPricesFlag = 1;
