// The characters a text entity shows: TEXT's %% codes, and MTEXT's inline formatting reduced to
// plain text with paragraph breaks as line ends ('\n').
#pragma once

#include <string>
#include <string_view>

// %%d degree, %%p plus-minus, %%c diameter, %%% percent, %%nnn a character by number; the
// underline and overline switches (%%u, %%o) are dropped.
std::wstring plainText(std::wstring_view text);

// \P paragraph breaks become '\n'; font, height, colour, width and other switches go, braces
// group nothing, stacked fractions read "1/2", \~ is a space and \\ \{ \} are the characters.
std::wstring plainMText(std::wstring_view text);
