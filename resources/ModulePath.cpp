// The module-wide path of the module's file.
#include "resources/ModulePath.h"

std::wstring modulePath;
