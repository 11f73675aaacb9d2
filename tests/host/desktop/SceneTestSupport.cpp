// Writing the inline drawings of the desktop tests.
#include "tests/host/desktop/SceneTestSupport.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <algorithm>
#include <cstdio>

std::string dxfTags(std::string_view tags) {
    std::string out;
    while (!tags.empty()) {
        const std::size_t bar = std::min(tags.find('|'), tags.size());
        const std::string_view tag = tags.substr(0, bar);
        const std::size_t space = tag.find(' ');
        char head[16];
        std::snprintf(head, sizeof head, "%3d", std::stoi(std::string(tag.substr(0, space))));
        const std::string_view value =
            space == std::string_view::npos ? std::string_view() : tag.substr(space + 1);
        out += std::string(head) + "\n" + std::string(value) + "\n";
        tags.remove_prefix(std::min(bar + 1, tags.size()));
    }
    return out;
}

std::string testDrawing(const std::vector<TestLayer>& layers, std::string_view blocks,
                        std::string_view entities) {
    std::string tags = "0 SECTION|2 TABLES|0 TABLE|2 LAYER|70 " + std::to_string(layers.size());
    for (const TestLayer& layer : layers) {
        tags += "|0 LAYER|2 " + layer.name + "|70 " + std::to_string(layer.flags) + "|62 " +
                std::to_string(layer.color) + "|6 CONTINUOUS";
    }
    tags += "|0 ENDTAB|0 ENDSEC|0 SECTION|2 BLOCKS";
    if (!blocks.empty()) tags += "|" + std::string(blocks);
    tags += "|0 ENDSEC|0 SECTION|2 ENTITIES";
    if (!entities.empty()) tags += "|" + std::string(entities);
    tags += "|0 ENDSEC|0 EOF";
    return dxfTags(tags);
}

std::unique_ptr<DxfDocument> readTestDrawing(const std::string& bytes) {
    auto read = DxfDocument::readBytes("test.dxf", bytes);
    EXPECT_TRUE(read.isOk()) << read.errorString();
    return read.isOk() ? read.takeValue() : nullptr;
}

std::string deepNesting(int depth) {
    std::string blocks;
    for (int level = 0; level < depth; ++level) {
        const std::string name = "B" + std::to_string(level);
        blocks += (level == 0 ? "" : "|") + std::string("0 BLOCK|8 0|2 ") + name +
                  "|70 0|10 0|20 0|30 0|";
        if (level + 1 < depth) {
            blocks += "0 INSERT|8 0|2 B" + std::to_string(level + 1) + "|10 0|20 0|";
        } else {
            blocks += "0 LINE|8 0|10 0|20 0|11 10|21 6|0 INSERT|8 0|2 B" +
                      std::to_string(std::max(level - 1, 0)) + "|10 0|20 0|";
        }
        blocks += "0 ENDBLK|8 0";
    }
    return blocks;
}
