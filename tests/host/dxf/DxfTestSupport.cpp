// Shared helpers of the DXF tests.
#include "tests/host/dxf/DxfTestSupport.h"

#include <cstdint>
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

std::string utf8(std::wstring_view text) {
    std::string out;
    for (const wchar_t c : text) {
        const auto u = static_cast<std::uint32_t>(c);
        if (u < 0x80) {
            out += static_cast<char>(u);
        } else if (u < 0x800) {
            out += static_cast<char>(0xC0 | (u >> 6));
            out += static_cast<char>(0x80 | (u & 0x3F));
        } else if (u < 0x10000) {
            out += static_cast<char>(0xE0 | (u >> 12));
            out += static_cast<char>(0x80 | ((u >> 6) & 0x3F));
            out += static_cast<char>(0x80 | (u & 0x3F));
        } else {
            out += static_cast<char>(0xF0 | (u >> 18));
            out += static_cast<char>(0x80 | ((u >> 12) & 0x3F));
            out += static_cast<char>(0x80 | ((u >> 6) & 0x3F));
            out += static_cast<char>(0x80 | (u & 0x3F));
        }
    }
    return out;
}

ProcessResult runPython(const std::filesystem::path& script,
                        const std::vector<std::string>& arguments) {
    std::vector<std::string> all{script.string()};
    all.insert(all.end(), arguments.begin(), arguments.end());
    return runProcess("/usr/bin/python3", all);
}

bool haveEzdxf() { return runProcess("/usr/bin/python3", {"-c", "import ezdxf"}).exitCode == 0; }
