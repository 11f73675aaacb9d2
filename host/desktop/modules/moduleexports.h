// Reads the exported functions of a shared library from its file, before any of its code runs.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

struct ModuleExports {
    std::string error;                   // why the file is no loadable module; empty when it is one
    std::vector<std::string> functions;  // the functions it defines and exports, in table order

    bool exports(const std::string& name) const;
};

// ELF shared objects of this machine's class and architecture; anything else gives an error.
ModuleExports readModuleExports(const std::filesystem::path& path);
