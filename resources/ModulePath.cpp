// The module-wide path of the module's file.
#include "resources/ModulePath.h"

// Made before any code runs: the library entry sets it while the module's other static objects
// are still being constructed, in an order nobody chooses.
constinit std::wstring modulePath;
