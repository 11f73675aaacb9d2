// The module's own file, as the loader reports it at attach: the dialogs keep their settings files
// beside it. Empty until a host (or a tool running the dialogs) sets it.
#pragma once

#include <string>

// At most 259 characters, as the buffer the system fills holds.
inline constexpr std::size_t kModulePathLength = 259;
extern std::wstring modulePath;
