// The command table's text.
#include "host/desktop/session/commandlisting.h"

#include <algorithm>
#include <array>
#include <vector>

namespace {

std::string utf8(const std::wstring& text) {
    std::string out;
    for (const wchar_t wide : text) {
        const auto c = static_cast<std::uint32_t>(wide);
        if (c < 0x80) {
            out += static_cast<char>(c);
        } else if (c < 0x800) {
            out += static_cast<char>(0xC0 | (c >> 6));
            out += static_cast<char>(0x80 | (c & 0x3F));
        } else if (c < 0x10000) {
            out += static_cast<char>(0xE0 | (c >> 12));
            out += static_cast<char>(0x80 | ((c >> 6) & 0x3F));
            out += static_cast<char>(0x80 | (c & 0x3F));
        } else {
            out += static_cast<char>(0xF0 | (c >> 18));
            out += static_cast<char>(0x80 | ((c >> 12) & 0x3F));
            out += static_cast<char>(0x80 | ((c >> 6) & 0x3F));
            out += static_cast<char>(0x80 | (c & 0x3F));
        }
    }
    return out;
}

// Characters, not bytes, for the padding.
std::size_t width(const std::string& text) {
    return static_cast<std::size_t>(std::count_if(text.begin(), text.end(), [](char c) {
        return (static_cast<unsigned char>(c) & 0xC0) != 0x80;
    }));
}

}  // namespace

std::string listCommands(const AcEdCommandStack& stack) {
    using Row = std::array<std::string, 4>;
    std::vector<Row> rows{{"Group", "Global name", "Local name", "Flags"}};
    for (const auto& command : stack.commands()) {
        rows.push_back({utf8(command.group), utf8(command.globalName), utf8(command.localName),
                        std::to_string(command.flags)});
    }
    std::array<std::size_t, 4> widths{};
    for (const Row& row : rows) {
        for (std::size_t i = 0; i < row.size(); ++i) widths[i] = std::max(widths[i], width(row[i]));
    }
    std::string text;
    for (const Row& row : rows) {
        for (std::size_t i = 0; i < row.size(); ++i) {
            text += row[i];
            if (i + 1 < row.size()) text += std::string(widths[i] - width(row[i]) + 2, ' ');
        }
        text += '\n';
    }
    return text;
}
