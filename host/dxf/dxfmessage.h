// Pieces of the messages the DXF layer reports: what was found, quoted so that a reader sees it.
#pragma once

#include <string>
#include <string_view>

// At most 40 bytes between double quotes, control characters and bytes that are not UTF-8 shown as
// "?", "..." when cut.
std::string dxfQuoted(std::string_view text);
