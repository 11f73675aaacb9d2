// What the DXF tests share: the corpus's place, file bytes, UTF-8 text, and running Debian's
// Python.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "tests/RunProcess.h"
#include "tests/host/Utf8.h"

// The shared corpus beside the checkout (../shared/corpus); empty when it is not there.
std::filesystem::path corpusFolder();
std::string readBytes(const std::filesystem::path& path);

// Runs /usr/bin/python3 with the script and arguments.
ProcessResult runPython(const std::filesystem::path& script,
                        const std::vector<std::string>& arguments);
// Whether /usr/bin/python3 can import ezdxf.
bool haveEzdxf();
