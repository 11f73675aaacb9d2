// A drawing opened for one console command: read from its file, and the host's working database,
// with the console's editor installed, for as long as the session lives.
#pragma once

#include <memory>
#include <string>

#include "host/console/commandline.h"
#include "host/console/consoleeditor.h"
#include "host/dxf/dxfdocument.h"

// Reads a drawing as every console command reads it: the file mapped, refused at a fault of its
// structure unless `reading` asks to mend it. A refusal that a recovering read may get past says
// so.
DxfResult<std::unique_ptr<DxfDocument>> readDrawing(const std::string& path,
                                                    const DxfProgress& progress,
                                                    DxfReading reading);
// How the user asked a drawing to be read: with --recover, mended.
DxfReading readingAsked(const ParsedArguments& arguments);
// What a recovering read mended, on standard error: one line a repair.
void tellRepairs(const DxfDocument& document);

class DrawingSession {
public:
    // Null, after the error line, when the drawing cannot be read. Repairs are told.
    static std::unique_ptr<DrawingSession> open(const std::string& path,
                                                DxfReading reading = DxfReading::Strict);
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
