// Files on disk: reading one whole into a single buffer, and replacing one atomically (a temporary
// file in the same folder, renamed over the target, with the target's permissions).
#pragma once

#include <cstddef>
#include <filesystem>
#include <functional>
#include <memory>

#include "host/dxf/dxfprogress.h"
#include "host/dxf/dxfresult.h"
#include "host/dxf/dxfsink.h"

struct DxfFileBytes {
    std::unique_ptr<char[]> data;
    std::size_t size = 0;
};

DxfResult<DxfFileBytes> readWholeFile(const std::filesystem::path& path,
                                      const DxfProgress& progress = {});

// `produce` hands the new content to its sink piece by piece. A failure leaves the target as it
// was.
DxfStatus writeFileAtomically(const std::filesystem::path& path,
                              const std::function<void(const DxfSink&)>& produce);
