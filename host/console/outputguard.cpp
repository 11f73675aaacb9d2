// Clashes between the files a command reads and writes.
#include "host/console/outputguard.h"

#include <filesystem>

#include "files/fileidentity.h"

std::string proposedDrawingOutput(const std::string& drawing) {
    const std::filesystem::path path(drawing);
    return (path.parent_path() / (path.stem().string() + "-bom" + path.extension().string()))
        .string();
}

void OutputGuard::addDrawing(std::string path) {
    m_inputs.push_back({"the drawing", std::move(path), true});
}

void OutputGuard::addPriceList(std::string path) {
    m_inputs.push_back({"the price list", std::move(path), false});
}

void OutputGuard::addOutput(std::string what, std::string path) {
    m_outputs.push_back({std::move(what), std::move(path), false});
}

void OutputGuard::addDrawingOutput(std::string what, std::string path) {
    m_outputs.push_back({std::move(what), std::move(path), true});
}

std::optional<std::string> OutputGuard::firstClash() const {
    std::vector<FileIdentity> outputs;
    for (const Named& output : m_outputs) outputs.push_back(fileIdentity(output.path));
    for (const Named& input : m_inputs) {
        const FileIdentity identity = fileIdentity(input.path);
        for (std::size_t o = 0; o < m_outputs.size(); ++o) {
            const Named& output = m_outputs[o];
            if (outputs[o] != identity || (output.isDrawing && input.isDrawing)) continue;
            return output.what + " " + output.path + " would write over " + input.what + " " +
                   input.path;
        }
    }
    for (std::size_t a = 0; a < m_outputs.size(); ++a) {
        for (std::size_t b = a + 1; b < m_outputs.size(); ++b) {
            if (outputs[a] != outputs[b]) continue;
            return m_outputs[a].what + " " + m_outputs[a].path + " and " + m_outputs[b].what + " " +
                   m_outputs[b].path + " name the same file";
        }
    }
    return std::nullopt;
}
