// The price-list editor's current file: one name for the whole module. It starts empty, outlives
// every dialog while the module is loaded, and reaches the next run only through "filename.set".
#pragma once

#include <string>

extern std::wstring priceListFileName;
