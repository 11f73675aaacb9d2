// Opening, replacing, saving and closing the desktop host's drawing.
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

constexpr const char* kNewDrawingName = "Drawing1.dxf";

std::unique_ptr<DxfDocument> emptyDrawing() {
    auto read = DxfDocument::readBytes(kNewDrawingName, kNewDrawing);
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

DrawingSession::DrawingSession() { replace(emptyDrawing(), false); }

DrawingSession::~DrawingSession() { close(); }

void DrawingSession::close() {
    if (!m_document) return;
    acDocManagerPtr()->documentToBeDestroyed(m_hostDocument.get());
    if (acdbHostApplicationServices()->workingDatabase() == m_document.get())
        acdbHostApplicationServices()->setWorkingDatabase(nullptr);
    m_hostDocument.reset();
    m_document.reset();
}

void DrawingSession::replace(std::unique_ptr<DxfDocument> document, bool hasFile) {
    close();
    m_undo.clear();
    m_command.reset();
    m_document = std::move(document);
    m_hasFile = hasFile;
    m_savedEditCount = m_document->editCount();
    m_hostDocument = std::make_unique<AcApDocument>(m_document.get(), wideName(m_document->path()));
    acdbHostApplicationServices()->setWorkingDatabase(m_document.get());
    acDocManagerPtr()->documentCreated(m_hostDocument.get());
}

DxfStatus DrawingSession::open(const std::filesystem::path& path) {
    auto read = DxfDocument::readFile(path);
    if (!read.isOk()) return DxfError(read.errorString());
    replace(read.takeValue(), true);
    return {};
}

void DrawingSession::newDrawing() { replace(emptyDrawing(), false); }

DxfStatus DrawingSession::save() {
    if (!m_hasFile) return DxfError(std::string(kNewDrawingName) + ": the drawing has no file yet");
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

std::optional<std::wstring> DrawingSession::refusalToSaveAs(const std::filesystem::path& path) const {
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
