// Finding the bundled module from the running program's own path, so that a tree runs wherever
// it was unpacked.
#include "host/desktop/modules/modulelocation.h"

namespace {

constexpr const char* kModuleFileName = "Tarnwick.arx";

}  // namespace

std::filesystem::path bundledModuleFile() {
    std::error_code error;
    const std::filesystem::path program = std::filesystem::read_symlink("/proc/self/exe", error);
    const std::filesystem::path folder = program.parent_path();
    const std::filesystem::path beside = folder / kModuleFileName;
    if (std::filesystem::exists(beside, error)) return beside;
    // TARNWICK_MODULE_FROM_PROGRAM: the installed module folder relative to the programs' folder.
    return (folder / TARNWICK_MODULE_FROM_PROGRAM / kModuleFileName).lexically_normal();
}
