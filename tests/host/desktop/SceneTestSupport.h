// Small drawings for the desktop tests, written inline as DXF tags.
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "host/dxf/dxfdocument.h"

// ASCII DXF for tags given as "code value" pairs separated by "|" (the value is what follows the
// first space).
std::string dxfTags(std::string_view tags);

struct TestLayer {
    std::string name;
    int color = 7;  // negative: off
    int flags = 0;  // 1: frozen
};

// An R12 drawing: the layers, then the blocks and the entities given as tag texts (each block
// "0 BLOCK|2 NAME|10 x|20 y|...|0 ENDBLK" in full).
std::string testDrawing(const std::vector<TestLayer>& layers, std::string_view blocks,
                        std::string_view entities);

// Blocks B0, B1, ... nested DEPTH deep: each shows the next, the last a line from (0,0) to (10,6)
// and the block that shows it (a cycle, cut where the scene is built).
std::string deepNesting(int depth);

// Reads the drawing; a failure is reported and gives null.
std::unique_ptr<DxfDocument> readTestDrawing(const std::string& bytes);
