// Where the programs find Tarnwick.arx: beside themselves in the build tree, in the private
// library folder of an installed tree. The module keeps its settings beside it, so every program
// that shares them asks here.
#pragma once

#include <filesystem>

// The module file for the program that runs now; it need not exist.
std::filesystem::path bundledModuleFile();
