// GoogleTest names for parameterised cases, made from their descriptions or file names.
#pragma once

#include <cctype>
#include <string>
#include <string_view>

// The text up to its first ".", with every character but letters and digits made "_".
inline std::string testName(std::string_view text) {
    std::string name(text.substr(0, text.find('.')));
    for (char& c : name) c = std::isalnum(static_cast<unsigned char>(c)) ? c : '_';
    return name;
}
