// Small DXF drawings written for tests: block definitions (nested references and dynamic-block
// links included) and references in model space, in the form of R12, R2000 or R2018, with names
// given as the bytes the file holds (8-bit code pages, "\U+XXXX" escapes).
#pragma once

#include <string>
#include <vector>

enum class FixtureVersion { R12, R2000, R2018 };

struct FixtureReference {
    std::string block;  // the name's bytes
    double x = 0.0;
    double y = 0.0;
    std::string layer = "0";
};

struct FixtureBlock {
    std::string name;  // the name's bytes; names starting with "*" are anonymous
    std::vector<FixtureReference> contents;
    // R2000 on: the block whose record the AcDbBlockRepBTag data names; "#" and hex digits for a
    // handle given as is (one that no record has, say); empty for none.
    std::string linkTo;
};

struct FixtureDrawing {
    FixtureVersion version = FixtureVersion::R2000;
    std::string codePage = "ANSI_1252";  // empty: no $DWGCODEPAGE
    std::vector<FixtureBlock> blocks;
    std::vector<FixtureReference> references;
};

std::string fixtureBytes(const FixtureDrawing& drawing);

// A large R2000 drawing: COUNT references in a grid, one in three to WINDOW, the others to DOOR.
FixtureDrawing fixtureOfManyReferences(int count);
