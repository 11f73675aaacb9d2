// Drawings on disk: reading one whole into a single buffer.
#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <memory>

#include "host/dxf/dxfprogress.h"
#include "host/dxf/dxfresult.h"

struct DxfFileBytes {
    std::unique_ptr<char[]> data;
    std::size_t size = 0;
};

// A file whose first bytes cannot begin a drawing is refused before the rest is read, with the
// scanner's message for its first line.
DxfResult<DxfFileBytes> readWholeFile(const std::filesystem::path& path,
                                      const DxfProgress& progress = {});

// False only for a file that is there, can be read, and cannot be a drawing by its first bytes: a
// price list, a report, a picture. A host saves a drawing over no such file.
bool mayBeDrawingFile(const std::filesystem::path& path);

// "plan.dxf: not enough memory to read it (195 MB)".
DxfError dxfNotEnoughMemory(const std::filesystem::path& path, std::uint64_t size);
