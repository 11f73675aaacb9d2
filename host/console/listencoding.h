// The encoding of a price list: the code page --list-encoding names, and a note on a list that is
// not UTF-8 and was read one byte per character, which names in other scripts do not survive.
#pragma once

#include <optional>
#include <string>

#include "text/TextFile.h"

struct ListEncodingNote {
    std::size_t line;  // of the first byte that is not UTF-8
    std::string message;
};

std::optional<ListEncodingNote> listEncodingNote(const TextFileContent& list);

// Makes the named code page the one price lists are read and written in. An exit status when it
// cannot: 2 for a name iconv does not know, 1 naming the line of a byte the code page lacks.
std::optional<int> useListEncoding(const std::optional<std::string>& codePage,
                                   const std::string& prices);
