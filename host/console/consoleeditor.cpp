// The console's editor.
#include "host/console/consoleeditor.h"

#include "host/api/acdbdatabase.h"
#include "host/api/insertcommand.h"
#include "text/TextFile.h"

namespace {

// A message of the host's dialect starts with a line break to leave the prompt's line; on a console
// each message is a line of its own.
std::wstring trimmedLines(std::wstring text) {
    while (!text.empty() && (text.front() == L'\n' || text.front() == L'\r')) text.erase(0, 1);
    while (!text.empty() && (text.back() == L'\n' || text.back() == L'\r')) text.pop_back();
    return text;
}

}  // namespace

ConsoleEditor::ConsoleEditor(std::FILE* messages)
    : m_messages(messages), m_previousWindow(acapSetWindowServices(this)) {}

ConsoleEditor::~ConsoleEditor() { acapSetWindowServices(m_previousWindow); }

void ConsoleEditor::writeLine(const std::wstring& text) {
    const std::string line = EncodeText(trimmedLines(text), TextFormat{}) + "\n";
    std::fputs(line.c_str(), m_messages);
}

void ConsoleEditor::setVariable(const std::wstring& name, resbuf value) {
    m_variables[name] = std::move(value);
}

int ConsoleEditor::getFileD(const std::wstring&, const std::wstring&, const std::wstring&, int,
                            std::wstring&) {
    return RTERROR;
}

int ConsoleEditor::alert(const std::wstring& message) {
    ++m_alerts;
    writeLine(message);
    return RTNORM;
}

int ConsoleEditor::selectObjects(const wchar_t*, const std::vector<resbuf>*,
                                 std::vector<AcDbObjectId>& selected) {
    selected = m_selection;
    return RTNORM;
}

int ConsoleEditor::getVar(const std::wstring& name, resbuf& value) {
    const auto it = m_variables.find(name);
    if (it == m_variables.end()) return RTERROR;
    value = it->second;
    return RTNORM;
}

int ConsoleEditor::setVar(const std::wstring& name, const resbuf& value) {
    m_variables[name] = value;
    if (m_variableWriter) m_variableWriter(name, value);
    return RTNORM;
}

int ConsoleEditor::initGet(int, const std::wstring&) { return RTNORM; }

int ConsoleEditor::getPoint(const ads_point*, const std::wstring&, ads_point&) { return RTCAN; }

int ConsoleEditor::grRead(int, int&, resbuf&) { return RTCAN; }

int ConsoleEditor::grDraw(const ads_point&, const ads_point&, int, int) { return RTNORM; }

int ConsoleEditor::command(const std::vector<resbuf>& arguments) {
    AcDbDatabase* database = acdbHostApplicationServices()->workingDatabase();
    if (database == nullptr) return RTERROR;
    return runInsertCommand(*database, arguments);
}

void ConsoleEditor::print(const std::wstring& text) {
    if (!trimmedLines(text).empty()) writeLine(text);
}

int ConsoleEditor::messageBox(const std::wstring& text, unsigned) {
    writeLine(text);
    return IDCANCEL;
}

void ConsoleEditor::beep(unsigned, unsigned) {}
