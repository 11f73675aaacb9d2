// A drawing opened for one console command: read from its file, and the host's working database,
// with the console's editor installed, for as long as the session lives.
#pragma once

#include <memory>
#include <string>

#include "host/console/consoleeditor.h"
#include "host/dxf/dxfdocument.h"

class DrawingSession {
public:
    // Null, after the error line, when the drawing cannot be read.
    static std::unique_ptr<DrawingSession> open(const std::string& path);
    // A session over a drawing read already, from `path`.
    static std::unique_ptr<DrawingSession> adopt(const std::string& path,
                                                 std::unique_ptr<DxfDocument> document);
    ~DrawingSession();
    DrawingSession(const DrawingSession&) = delete;
    DrawingSession& operator=(const DrawingSession&) = delete;

    DxfDocument& document() { return *m_document; }
    ConsoleEditor& editor() { return m_editor; }
    const std::string& path() const { return m_path; }

private:
    DrawingSession(std::string path, std::unique_ptr<DxfDocument> document);

    std::string m_path;
    std::unique_ptr<DxfDocument> m_document;
    ConsoleEditor m_editor;
    AcDbDatabase* m_previousDatabase;
};
