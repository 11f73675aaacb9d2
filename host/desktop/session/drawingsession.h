// One drawing the desktop host has open: its DXF database, the host's document for it, and whether
// it holds unsaved work. The document manager hears of the drawing when it comes and goes.
#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>

#include "host/api/acapdocmanager.h"
#include "host/dxf/dxfdocument.h"

class DrawingSession final {
public:
    // A new, empty drawing under this name ("Drawing1.dxf") that has no file yet.
    explicit DrawingSession(const std::string& newName);
    // A drawing read from its file.
    explicit DrawingSession(std::unique_ptr<DxfDocument> document);
    // The drawing is closed: the reactors hear of it; it stops being the working database.
    ~DrawingSession();
    DrawingSession(const DrawingSession&) = delete;
    DrawingSession& operator=(const DrawingSession&) = delete;

    DxfDocument& document() { return *m_document; }
    const DxfDocument& document() const { return *m_document; }
    AcApDocument& hostDocument() { return *m_hostDocument; }

    // False for a new drawing until it is saved under a name.
    bool hasFile() const { return m_hasFile; }
    // A new drawing nobody has touched: opening a file may take its place.
    bool isPristine() const { return !m_hasFile && !isModified(); }
    [[nodiscard]] DxfStatus save();
    [[nodiscard]] DxfStatus saveAs(const std::filesystem::path& path);
    // The alert when saving the drawing as `path` would write over a file that is no drawing (a
    // price list, a report); nothing when the save may go ahead.
    std::optional<std::wstring> refusalToSaveAs(const std::filesystem::path& path) const;

    bool isModified() const { return m_document->editCount() != m_savedEditCount; }
    // "floorplan.dxf"; what DWGNAME answers.
    std::wstring drawingName() const;

private:
    DrawingSession(std::unique_ptr<DxfDocument> document, bool hasFile);

    std::unique_ptr<DxfDocument> m_document;
    std::unique_ptr<AcApDocument> m_hostDocument;
    bool m_hasFile = false;
    std::uint64_t m_savedEditCount = 0;
};
