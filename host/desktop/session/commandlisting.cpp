// The command table's text.
#include "host/desktop/session/commandlisting.h"

#include <algorithm>
#include <array>
#include <vector>

#include "text/TextFile.h"

namespace {

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
        rows.push_back({EncodeUtf8(command.group), EncodeUtf8(command.globalName),
                        EncodeUtf8(command.localName), std::to_string(command.flags)});
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
