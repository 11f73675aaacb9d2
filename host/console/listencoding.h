// A price list that is not UTF-8: read one byte per character, which names in other scripts
// do not survive; the note says where the first such byte is.
#pragma once

#include <optional>
#include <string>

#include "text/TextFile.h"

struct ListEncodingNote {
    std::size_t line;  // of the first byte that is not UTF-8
    std::string message;
};

std::optional<ListEncodingNote> listEncodingNote(const TextFileContent& list);
