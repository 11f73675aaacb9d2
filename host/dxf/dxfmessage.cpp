// Quoting found text for messages.
#include "host/dxf/dxfmessage.h"

std::string dxfQuoted(std::string_view text) {
    constexpr std::size_t kLimit = 40;
    std::string out = "\"";
    for (const char c : text.substr(0, kLimit)) {
        const auto byte = static_cast<unsigned char>(c);
        out += (byte < 0x20 || byte == 0x7f) ? '?' : c;
    }
    if (text.size() > kLimit) out += "...";
    out += '"';
    return out;
}
