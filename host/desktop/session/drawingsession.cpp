// Opening, saving and closing one of the desktop host's drawings.
#include "host/desktop/session/drawingsession.h"

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

std::wstring DrawingSession::drawingName() const {
    resbuf value;
    if (m_document->getVar(L"DWGNAME", value) != RTNORM) return {};
    return value.resval.rstring;
}
