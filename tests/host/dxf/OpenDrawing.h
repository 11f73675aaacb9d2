// Opening test drawings in the DXF database, the hand-written ones of tests/data/dxf among them:
// a failure is reported and gives null.
#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <memory>
#include <string>

#include "host/dxf/dxfdocument.h"
#include "tests/host/dxf/DxfTestSupport.h"

inline const std::filesystem::path kDxfData = std::filesystem::path(TARNWICK_TEST_DATA) / "dxf";

inline std::unique_ptr<DxfDocument> openDrawing(const std::string& name, const std::string& bytes) {
    auto read = DxfDocument::readBytes(name, bytes);
    EXPECT_TRUE(read.isOk()) << read.errorString();
    return read.isOk() ? read.takeValue() : nullptr;
}

inline std::unique_ptr<DxfDocument> openFixture(const char* name) {
    return openDrawing(name, readBytes(kDxfData / name));
}

inline AcDbObjectId blockIdOf(const DxfDocument& document, const std::wstring& name) {
    AcDbObjectId id;
    EXPECT_EQ(document.getBlockTableRecordId(name, id), Acad::eOk);
    return id;
}
