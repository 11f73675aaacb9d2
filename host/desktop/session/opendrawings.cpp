// Adding, switching and closing the desktop host's drawings.
#include "host/desktop/session/opendrawings.h"

#include <string>

#include "files/fileidentity.h"
#include "host/api/acdbdatabase.h"

OpenDrawings::OpenDrawings() { addNew(); }

OpenDrawings::~OpenDrawings() {
    while (!m_drawings.empty()) m_drawings.pop_back();
}

std::optional<std::size_t> OpenDrawings::indexOf(const DrawingSession& drawing) const {
    for (std::size_t i = 0; i < m_drawings.size(); ++i) {
        if (m_drawings[i].get() == &drawing) return i;
    }
    return std::nullopt;
}

std::optional<std::size_t> OpenDrawings::indexOfFile(const std::filesystem::path& path) const {
    for (std::size_t i = 0; i < m_drawings.size(); ++i) {
        const DrawingSession& drawing = *m_drawings[i];
        if (drawing.hasFile() && isSameFile(path, drawing.document().path())) return i;
    }
    return std::nullopt;
}

DrawingSession& OpenDrawings::addNew() {
    // Numbered for the whole session, as CAD programs do: a closed Drawing2 leaves its number.
    const std::string name = "Drawing" + std::to_string(++m_newDrawings) + ".dxf";
    m_drawings.push_back(std::make_unique<DrawingSession>(name));
    makeActive(m_drawings.size() - 1);
    return *m_drawings.back();
}

DxfResult<DrawingSession*> OpenDrawings::open(const std::filesystem::path& path,
                                              DxfReading reading) {
    auto read = DxfDocument::readFile(path, {}, DxfFileAccess::Copy, reading);
    if (!read.isOk()) return read.error();
    m_drawings.push_back(std::make_unique<DrawingSession>(read.takeValue()));
    makeActive(m_drawings.size() - 1);
    return m_drawings.back().get();
}

void OpenDrawings::activate(std::size_t index) {
    if (index >= m_drawings.size()) return;
    makeActive(index);
}

void OpenDrawings::makeActive(std::size_t index) {
    m_active = index;
    DrawingSession& drawing = *m_drawings[index];
    acdbHostApplicationServices()->setWorkingDatabase(&drawing.document());
    acDocManagerPtr()->documentActivated(&drawing.hostDocument());
}

bool OpenDrawings::close(std::size_t index) {
    if (index >= m_drawings.size() || m_drawings.size() == 1) return false;
    const bool wasActive = index == m_active;
    m_drawings.erase(m_drawings.begin() + static_cast<std::ptrdiff_t>(index));
    if (wasActive) {
        makeActive(std::min(index, m_drawings.size() - 1));
    } else if (index < m_active) {
        --m_active;
    }
    return true;
}
