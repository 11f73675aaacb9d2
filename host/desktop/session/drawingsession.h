// One drawing the desktop host has open: its DXF database, the host's document for it, and whether
// it holds unsaved work. The document manager hears of the drawing when it comes and goes.
#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <vector>

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

    // Undo. The host's INSERTs are taken back one at a time; what a module's command changed
    // besides them is one step of its own, under the INSERTs it ran. Commands run inside another
    // belong to the outer one. The last kCommandSteps commands can be taken back.
    static constexpr long kCommandSteps = 10;
    void beginModuleCommand(const std::wstring& name);
    // True when the command changed the drawing beyond its INSERTs: the view must read it again.
    bool endModuleCommand();
    // After an INSERT took the document from `editsBefore` to its edit count now.
    void noteInsert(std::uint64_t editsBefore);
    struct Undone {
        enum class What { Nothing, Insert, Command };
        What what = What::Nothing;
        AcDbObjectId insert;   // the reference taken back
        std::wstring command;  // the command taken back
    };
    Undone undo();
    // "floorplan.dxf"; what DWGNAME answers.
    std::wstring drawingName() const;

private:
    DrawingSession(std::unique_ptr<DxfDocument> document, bool hasFile);

    std::unique_ptr<DxfDocument> m_document;
    std::unique_ptr<AcApDocument> m_hostDocument;
    bool m_hasFile = false;
    std::uint64_t m_savedEditCount = 0;

    // A step to take back: an INSERT (no state), or a command with the drawing as it was before.
    struct UndoStep {
        std::wstring command;
        std::shared_ptr<const DxfDocument::EditState> before;
    };
    struct RunningCommand {
        std::wstring name;
        std::shared_ptr<const DxfDocument::EditState> before;
        std::uint64_t editsBefore = 0;
        std::uint64_t insertEdits = 0;  // what its INSERTs changed
        std::size_t firstStep = 0;      // where its step goes among the steps
        int depth = 1;
    };
    std::vector<UndoStep> m_undo;
    std::optional<RunningCommand> m_command;
};
