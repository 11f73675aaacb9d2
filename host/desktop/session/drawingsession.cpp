// Opening, saving and closing one of the desktop host's drawings.
#include "host/desktop/session/drawingsession.h"

#include <algorithm>
#include <string_view>

#include "files/fileidentity.h"
#include "host/api/acdbdatabase.h"
#include "host/dxf/dxffile.h"
#include "text/TextFile.h"

namespace {

// The smallest drawing every DXF reader takes: a version, and no entities yet.
constexpr std::string_view kNewDrawing =
    "  0\nSECTION\n  2\nHEADER\n  9\n$ACADVER\n  1\nAC1009\n  0\nENDSEC\n"
    "  0\nSECTION\n  2\nENTITIES\n  0\nENDSEC\n  0\nEOF\n";

std::unique_ptr<DxfDocument> emptyDrawing(const std::string& name) {
    auto read = DxfDocument::readBytes(name, kNewDrawing);
    return read.isOk() ? read.takeValue() : nullptr;
}

std::wstring wideName(const std::filesystem::path& path) {
    try {
        return path.wstring();
    } catch (const std::exception&) {
        const std::string bytes = path.string();
        return std::wstring(bytes.begin(), bytes.end());
    }
}

}  // namespace

DrawingSession::DrawingSession(const std::string& newName)
    : DrawingSession(emptyDrawing(newName), false) {}

DrawingSession::DrawingSession(std::unique_ptr<DxfDocument> document)
    : DrawingSession(std::move(document), true) {}

DrawingSession::DrawingSession(std::unique_ptr<DxfDocument> document, bool hasFile)
    : m_document(std::move(document)),
      m_hostDocument(
          std::make_unique<AcApDocument>(m_document.get(), wideName(m_document->path()))),
      m_hasFile(hasFile),
      m_savedEditCount(m_document->editCount()) {
    // A created document is the current one, its drawing the working database, by the time the
    // reactors hear of it.
    acdbHostApplicationServices()->setWorkingDatabase(m_document.get());
    acDocManagerPtr()->documentCreated(m_hostDocument.get());
}

DrawingSession::~DrawingSession() {
    acDocManagerPtr()->documentToBeDestroyed(m_hostDocument.get());
    if (acdbHostApplicationServices()->workingDatabase() == m_document.get())
        acdbHostApplicationServices()->setWorkingDatabase(nullptr);
}

DxfStatus DrawingSession::save() {
    if (!m_hasFile) return DxfError(m_document->path().string() + ": the drawing has no file yet");
    DxfStatus status = m_document->save();
    if (status.isOk()) m_savedEditCount = m_document->editCount();
    return status;
}

DxfStatus DrawingSession::saveAs(const std::filesystem::path& path) {
    DxfStatus status = m_document->saveAs(path);
    if (!status.isOk()) return status;
    m_hasFile = true;
    m_savedEditCount = m_document->editCount();
    return status;
}

std::optional<std::wstring> DrawingSession::refusalToSaveAs(
    const std::filesystem::path& path) const {
    if (m_hasFile && isSameFile(path, m_document->path())) return std::nullopt;
    if (mayBeDrawingFile(path)) return std::nullopt;
    return L"File " + WidePath(path.string()) + L" is not a drawing: it is not written over";
}

void DrawingSession::beginModuleCommand(const std::wstring& name) {
    if (m_command) {
        ++m_command->depth;
        return;
    }
    m_command = RunningCommand{
        name, m_document->saveEditState(), m_document->editCount(), 0, m_undo.size(), 1};
}

bool DrawingSession::endModuleCommand() {
    if (!m_command || --m_command->depth > 0) return false;
    RunningCommand command = std::move(*m_command);
    m_command.reset();
    const std::uint64_t edits = m_document->editCount() - command.editsBefore;
    if (edits <= command.insertEdits) return false;
    m_undo.insert(m_undo.begin() + static_cast<std::ptrdiff_t>(command.firstStep),
                  UndoStep{command.name, std::move(command.before)});
    // Each command's step holds a copy of the drawing's record lists: past the last few, the
    // oldest goes, with everything before it.
    const auto isCommand = [](const UndoStep& step) { return step.before != nullptr; };
    if (std::count_if(m_undo.begin(), m_undo.end(), isCommand) > kCommandSteps)
        m_undo.erase(m_undo.begin(), std::find_if(m_undo.begin(), m_undo.end(), isCommand) + 1);
    return true;
}

void DrawingSession::noteInsert(std::uint64_t editsBefore) {
    m_undo.push_back(UndoStep{L"INSERT", nullptr});
    if (m_command) m_command->insertEdits += m_document->editCount() - editsBefore;
}

DrawingSession::Undone DrawingSession::undo() {
    Undone undone;
    if (m_undo.empty() || m_command) return undone;
    UndoStep step = std::move(m_undo.back());
    m_undo.pop_back();
    undone.command = step.command;
    if (step.before) {
        m_document->restoreEditState(*step.before);
        undone.what = Undone::What::Command;
        return undone;
    }
    if (m_document->eraseLastInsertedReference(undone.insert) == Acad::eOk)
        undone.what = Undone::What::Insert;
    return undone;
}

std::wstring DrawingSession::drawingName() const {
    resbuf value;
    if (m_document->getVar(L"DWGNAME", value) != RTNORM) return {};
    return value.resval.rstring;
}
