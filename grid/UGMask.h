// The input rule of the masked editor. Mask characters: "0" and "#" a digit, "A" a letter, "a" a
// letter or digit, "?" any character; every other character stands for itself and is filled in
// as the user types past it.
#pragma once

#include <optional>
#include <string>
#include <string_view>

// What a character typed at `position` inserts: the literals the mask puts before it and the
// character itself; nothing when the mask does not allow it there. An empty mask allows anything.
std::optional<std::wstring> UGMaskInsert(std::wstring_view mask, std::size_t position,
                                         wchar_t character);
