// How far reading a drawing has come, for a host that shows progress on long reads.
#pragma once

#include <cstdint>
#include <functional>

// Called with the work done and the work in all, in the same unit; a few hundred times a read at
// most. Reading the bytes counts for a quarter of the work, splitting them into tags for the rest.
using DxfProgress = std::function<void(std::uint64_t done, std::uint64_t total)>;
