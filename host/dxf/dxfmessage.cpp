// Quoting found text for messages.
#include "host/dxf/dxfmessage.h"

namespace {

// The length of the well-formed UTF-8 sequence that starts the text, or 0.
std::size_t utf8SequenceLength(std::string_view text) {
    const auto lead = static_cast<unsigned char>(text[0]);
    const std::size_t length = lead < 0x80                   ? 1
                               : lead >= 0xc2 && lead < 0xe0 ? 2
                               : lead >= 0xe0 && lead < 0xf0 ? 3
                               : lead >= 0xf0 && lead < 0xf5 ? 4
                                                             : 0;
    if (length == 0 || length > text.size()) return 0;
    for (std::size_t i = 1; i < length; ++i) {
        if ((static_cast<unsigned char>(text[i]) & 0xc0) != 0x80) return 0;
    }
    return length;
}

}  // namespace

std::string dxfQuoted(std::string_view text) {
    constexpr std::size_t kLimit = 40;
    const std::string_view shown = text.substr(0, kLimit);
    std::string out = "\"";
    // Control characters and bytes that are no UTF-8 would garble the terminal that shows them.
    for (std::size_t at = 0; at < shown.size();) {
        const std::size_t length = utf8SequenceLength(shown.substr(at));
        const auto byte = static_cast<unsigned char>(shown[at]);
        if (length == 0 || (length == 1 && (byte < 0x20 || byte == 0x7f))) {
            out += '?';
            ++at;
        } else {
            out += shown.substr(at, length);
            at += length;
        }
    }
    if (text.size() > kLimit) out += "...";
    out += '"';
    return out;
}
