// The drawings the desktop host holds open, in the order they were opened, one of them active: the
// working database and the document manager's current document. Each keeps its own database (its
// content, undo and variables) and its own saved state.
#pragma once

#include <filesystem>
#include <memory>
#include <optional>
#include <vector>

#include "host/desktop/session/drawingsession.h"

class OpenDrawings final {
public:
    // Starts with one new drawing, "Drawing1.dxf".
    OpenDrawings();
    // Closes them all, the last opened first.
    ~OpenDrawings();
    OpenDrawings(const OpenDrawings&) = delete;
    OpenDrawings& operator=(const OpenDrawings&) = delete;

    std::size_t count() const { return m_drawings.size(); }
    DrawingSession& at(std::size_t index) { return *m_drawings.at(index); }
    const DrawingSession& at(std::size_t index) const { return *m_drawings.at(index); }
    DrawingSession& active() { return *m_drawings.at(m_active); }
    const DrawingSession& active() const { return *m_drawings.at(m_active); }
    std::size_t activeIndex() const { return m_active; }
    std::optional<std::size_t> indexOf(const DrawingSession& drawing) const;
    // The open drawing whose file this is, through links and other spellings of its name.
    std::optional<std::size_t> indexOfFile(const std::filesystem::path& path) const;

    // A new drawing named "Drawing2.dxf", "Drawing3.dxf", ... as they come; it becomes active.
    DrawingSession& addNew();
    // The file read into a drawing of its own, which becomes active. On failure nothing changes,
    // and the error says why (its kind tells a structure that a recovering read may mend).
    [[nodiscard]] DxfResult<DrawingSession*> open(const std::filesystem::path& path,
                                                  DxfReading reading = DxfReading::Strict);
    void activate(std::size_t index);
    // The drawing is closed and the one after it (or before, if it was the last) becomes active.
    // The only open drawing is not closed: false.
    bool close(std::size_t index);

private:
    void makeActive(std::size_t index);

    std::vector<std::unique_ptr<DrawingSession>> m_drawings;
    std::size_t m_active = 0;
    int m_newDrawings = 0;
};
