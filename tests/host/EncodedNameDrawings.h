// Drawings whose block names come as 8-bit text of their code page (1251, 1252, 1253) and as
// "\U+XXXX" escapes, and a UTF-8 price list that spells the same names in another case: what the
// module's and the console's tests count and compare.
#pragma once

#include <string>
#include <vector>

#include "tests/host/DrawingFixture.h"

struct EncodedNameDrawing {
    std::string file;  // a file name for it
    FixtureDrawing drawing;
    // The rows counting every reference against the list gives: name, quantity, total as shown.
    std::vector<std::tuple<std::wstring, int, std::wstring>> rows;
    std::vector<std::wstring> sortedNames;  // the block names as the inventory sorts them
};

std::vector<EncodedNameDrawing> encodedNameDrawings();

// "СТУЛ|12.50|chair", "ärmel|3.10|sleeve", "ωMEGA|100|omega", each with its line feed, in UTF-8.
extern const char* const kEncodedNamePrices;
