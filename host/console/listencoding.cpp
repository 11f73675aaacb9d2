// Telling the user how a price list that is not UTF-8 was read.
#include "host/console/listencoding.h"

#include <algorithm>

std::optional<ListEncodingNote> listEncodingNote(const TextFileContent& list) {
    if (list.format.encoding != TextEncoding::Bytes) return std::nullopt;
    const std::string bytes = EncodeText(list.text, list.format);
    const std::size_t at = FirstInvalidUtf8(bytes);
    const auto line =
        1 + static_cast<std::size_t>(std::count(bytes.begin(), bytes.begin() + at, '\n'));
    return ListEncodingNote{line,
                            "not UTF-8: read one byte per character, so names in other scripts "
                            "will not match; save the list as UTF-8"};
}
