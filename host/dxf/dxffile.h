// Files on disk: reading one whole into a single buffer.
#pragma once

#include <cstddef>
#include <filesystem>
#include <memory>

#include "host/dxf/dxfprogress.h"
#include "host/dxf/dxfresult.h"

struct DxfFileBytes {
    std::unique_ptr<char[]> data;
    std::size_t size = 0;
};

DxfResult<DxfFileBytes> readWholeFile(const std::filesystem::path& path,
                                      const DxfProgress& progress = {});
