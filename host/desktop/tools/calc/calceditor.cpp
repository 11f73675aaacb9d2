// The editor of tarnwick-calc.
#include "host/desktop/tools/calc/calceditor.h"

#include <charconv>
#include <cmath>
#include <sstream>

#include "host/api/insertcommand.h"
#include "host/dxf/dxfdocument.h"
#include "text/CaseRules.h"
#include "text/TextFile.h"

namespace {

constexpr int kNoNullInput = 1;
constexpr int kKeyInput = 2;
constexpr int kPickedPoint = 3;
constexpr int kCursorSample = 5;
constexpr short kReturnKey = 13;

std::string trimmed(const std::string& text) {
    const std::size_t first = text.find_first_not_of(" \t\r");
    if (first == std::string::npos) return {};
    return text.substr(first, text.find_last_not_of(" \t\r") - first + 1);
}

}  // namespace

CalcEditor::CalcEditor(DxfDocument& document, CalcToolIo& io) : m_document(document), m_io(io) {}

void CalcEditor::writeText(const std::wstring& text) {
    // The host's messages start with a line break to leave the prompt's line; a console has left
    // it already when the user pressed RETURN.
    std::wstring shown = text;
    while (!shown.empty() && shown.front() == L'\n') shown.erase(0, 1);
    if (!shown.empty()) m_io.write(EncodeText(shown, TextFormat{}));
}

int CalcEditor::getFileD(const std::wstring& title, const std::wstring& defaultName,
                         const std::wstring& extension, int flags, std::wstring& path) {
    if (m_priceList && extension == L"prc" && flags == 2) {
        path = std::move(*m_priceList);
        m_priceList.reset();
        return RTNORM;
    }
    return m_io.askFile(title, defaultName, extension, flags, path);
}

int CalcEditor::alert(const std::wstring& message) {
    m_io.showAlert(message);
    return RTNORM;
}

int CalcEditor::selectObjects(const wchar_t*, const std::vector<resbuf>*,
                              std::vector<AcDbObjectId>& selected) {
    selected.clear();
    for (const DxfReference& reference : m_document.blockReferences(DxfSpace::Model))
        selected.push_back(reference.id);
    return RTNORM;
}

int CalcEditor::getVar(const std::wstring& name, resbuf& value) {
    if (m_document.getVar(name, value) == RTNORM) return RTNORM;
    const auto it = m_sessionVariables.find(MakeUpper(name));
    if (it == m_sessionVariables.end()) return RTERROR;
    value = it->second;
    return RTNORM;
}

int CalcEditor::setVar(const std::wstring& name, const resbuf& value) {
    if (m_document.setVar(name, value) == RTNORM) return RTNORM;
    if (value.restype == static_cast<short>(RTNONE)) return RTERROR;
    m_sessionVariables[MakeUpper(name)] = value;
    return RTNORM;
}

int CalcEditor::initGet(int flags, const std::wstring&) {
    m_initGetFlags = flags;
    return RTNORM;
}

std::optional<ads_point> CalcEditor::parsePoint(const std::string& line) {
    std::vector<double> numbers;
    std::istringstream fields(line);
    for (std::string field; std::getline(fields, field, ',');) {
        const std::string number = trimmed(field);
        double value = 0.0;
        const char* end = number.data() + number.size();
        const auto [stop, error] = std::from_chars(number.data(), end, value);
        if (number.empty() || error != std::errc() || stop != end || !std::isfinite(value))
            return std::nullopt;
        numbers.push_back(value);
    }
    if (numbers.size() != 2 && numbers.size() != 3) return std::nullopt;
    return ads_point{numbers[0], numbers[1], numbers.size() == 3 ? numbers[2] : 0.0};
}

int CalcEditor::getPoint(const ads_point*, const std::wstring& prompt, ads_point& point) {
    const int flags = m_initGetFlags;
    m_initGetFlags = 0;
    for (;;) {
        writeText(prompt);
        const std::optional<std::string> line = m_io.readLine();
        if (!line) {
            m_io.write("\n");
            return RTCAN;
        }
        if (trimmed(*line).empty()) {
            if (!(flags & kNoNullInput)) return RTNONE;
            continue;
        }
        if (const auto picked = parsePoint(*line)) {
            point = *picked;
            return RTNORM;
        }
        m_io.write("Invalid point.\n");
    }
}

int CalcEditor::grRead(int, int& type, resbuf& result) {
    if (m_pickPending) {
        m_pickPending = false;
        type = kPickedPoint;
        return RTNORM;
    }
    for (bool first = true;; first = false) {
        if (!first) writeText(m_lastPrompt);
        const std::optional<std::string> line = m_io.readLine();
        if (!line || trimmed(*line).empty()) {
            type = kKeyInput;
            result = resbuf::shortValue(kReturnKey);
            return RTNORM;
        }
        if (const auto corner = parsePoint(*line)) {
            type = kCursorSample;
            result = resbuf::pointValue(*corner);
            m_pickPending = true;
            return RTNORM;
        }
        m_io.write("Invalid point.\n");
    }
}

int CalcEditor::grDraw(const ads_point&, const ads_point&, int, int) { return RTNORM; }

int CalcEditor::command(const std::vector<resbuf>& arguments) {
    const int status = runInsertCommand(m_document, arguments);
    if (status == RTNORM) m_inserted = true;
    return status;
}

void CalcEditor::print(const std::wstring& text) {
    m_lastPrompt = text;
    writeText(text);
}
