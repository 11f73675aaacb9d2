// The module-wide name of the current price-list file.
#include "pricelist/CurrentPriceList.h"

std::wstring priceListFileName;
