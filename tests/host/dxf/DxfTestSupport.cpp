// Shared helpers of the DXF tests.
#include "tests/host/dxf/DxfTestSupport.h"

#include <fstream>
#include <sstream>

std::filesystem::path corpusFolder() {
    const std::filesystem::path folder = std::filesystem::path(TARNWICK_CORPUS_DIR);
    std::error_code error;
    return std::filesystem::is_directory(folder / "files", error) ? folder
                                                                  : std::filesystem::path();
}

std::string readBytes(const std::filesystem::path& path) {
    std::ifstream in(path, std::ios::binary);
    std::ostringstream content;
    content << in.rdbuf();
    return content.str();
}

ProcessResult runPython(const std::filesystem::path& script,
                        const std::vector<std::string>& arguments) {
    std::vector<std::string> all{script.string()};
    all.insert(all.end(), arguments.begin(), arguments.end());
    return runProcess("/usr/bin/python3", all);
}

bool haveEzdxf() { return runProcess("/usr/bin/python3", {"-c", "import ezdxf"}).exitCode == 0; }
