// Opening a drawing for a console command.
#include "host/console/drawingsession.h"

#include <cstdio>

#include "host/console/messages.h"
#include "host/console/progressline.h"

DxfResult<std::unique_ptr<DxfDocument>> readDrawing(const std::string& path,
                                                    const DxfProgress& progress,
                                                    DxfReading reading) {
    auto document = DxfDocument::readFile(path, progress, DxfFileAccess::Map, reading);
    if (!document.isOk() && reading == DxfReading::Strict &&
        document.error().kind() == DxfErrorKind::Structure)
        return DxfError(document.errorString() + " (try --recover)", DxfErrorKind::Structure);
    return document;
}

DxfReading readingAsked(const ParsedArguments& arguments) {
    return arguments.has("--recover") ? DxfReading::Recover : DxfReading::Strict;
}

void tellRepairs(const DxfDocument& document) {
    for (const std::string& repair : document.repairs())
        std::fprintf(stderr, "%s\n", repair.c_str());
}

std::unique_ptr<DrawingSession> DrawingSession::open(const std::string& path, DxfReading reading) {
    if (const std::string reason = unreadableReason(path); !reason.empty()) {
        fail(path, reason);
        return nullptr;
    }
    ProgressLine progress("reading " + path);
    auto document = readDrawing(
        path,
        [&progress](std::uint64_t done, std::uint64_t total) { progress.update(done, total); },
        reading);
    if (!document.isOk()) {
        std::fprintf(stderr, "%s\n", document.errorString().c_str());
        return nullptr;
    }
    tellRepairs(*document.value());
    return std::unique_ptr<DrawingSession>(new DrawingSession(path, document.takeValue()));
}

std::unique_ptr<DrawingSession> DrawingSession::adopt(const std::string& path,
                                                      std::unique_ptr<DxfDocument> document) {
    return std::unique_ptr<DrawingSession>(new DrawingSession(path, std::move(document)));
}

DrawingSession::DrawingSession(std::string path, std::unique_ptr<DxfDocument> document)
    : m_path(std::move(path)),
      m_document(std::move(document)),
      m_editor(stderr),
      m_previousDatabase(acdbHostApplicationServices()->workingDatabase()) {
    acdbHostApplicationServices()->setWorkingDatabase(m_document.get());
    m_editor.setVariableWriter([this](const std::wstring& name, const resbuf& value) {
        (void)m_document->setVar(name, value);
    });
    for (const wchar_t* name : {L"ATTREQ", L"SNAPMODE", L"OSMODE", L"DWGNAME", L"DWGPREFIX"}) {
        resbuf value;
        if (m_document->getVar(name, value) == RTNORM) m_editor.setVariable(name, value);
    }
}

DrawingSession::~DrawingSession() {
    acdbHostApplicationServices()->setWorkingDatabase(m_previousDatabase);
}
