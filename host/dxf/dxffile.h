// Drawings on disk: reading one whole, into a buffer or mapped.
#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>

#include "host/dxf/dxfbytes.h"
#include "host/dxf/dxfprogress.h"
#include "host/dxf/dxfresult.h"

// How a drawing's bytes are held while it is open. Copy reads them into memory of our own: a host
// that keeps a drawing open for hours is safe from another program rewriting the file in place.
// Map maps the file, which costs no copy: for a command that reads, works and ends.
enum class DxfFileAccess : std::uint8_t { Copy, Map };

// A file whose first bytes cannot begin a drawing is refused before the rest is read, with the
// scanner's message for its first line.
DxfResult<DxfBytes> readWholeFile(const std::filesystem::path& path,
                                  const DxfProgress& progress = {},
                                  DxfFileAccess access = DxfFileAccess::Copy);

// False only for a file that is there, can be read, and cannot be a drawing by its first bytes: a
// price list, a report, a picture. A host saves a drawing over no such file.
bool mayBeDrawingFile(const std::filesystem::path& path);

// "plan.dxf: not enough memory to read it (195 MB)".
DxfError dxfNotEnoughMemory(const std::filesystem::path& path, std::uint64_t size);
