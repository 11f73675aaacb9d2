// The scripted editor of the tests.
#include "host/scripted/scriptededitor.h"

#include <cstdio>
#include <utility>

std::wstring describe(double value) {
    char buffer[64];
    std::snprintf(buffer, sizeof buffer, "%.15g", value);
    return std::wstring(buffer, buffer + std::char_traits<char>::length(buffer));
}

std::wstring describe(const ads_point& point) {
    return L"(" + describe(point.x) + L"," + describe(point.y) + L"," + describe(point.z) + L")";
}

std::wstring describe(const resbuf& value) {
    switch (value.restype) {
        case RTSHORT:
            return std::to_wstring(value.resval.rint);
        case RTLONG:
            return std::to_wstring(value.resval.rlong);
        case RTREAL:
            return describe(value.resval.rreal);
        case RTPOINT:
        case RT3DPOINT:
            return describe(value.resval.rpoint);
        case RTSTR:
            return value.resval.rstring;
        default:
            return std::to_wstring(value.restype) + L"=" + value.resval.rstring;
    }
}

std::ostream& operator<<(std::ostream& out, const RecordedCall& call) {
    auto narrow = [](const std::wstring& s) {
        std::string n;
        for (wchar_t c : s) n += (c >= 32 && c < 127) ? static_cast<char>(c) : '?';
        return n;
    };
    out << narrow(call.function) << '(';
    for (std::size_t i = 0; i < call.args.size(); ++i) {
        if (i) out << ", ";
        out << '"' << narrow(call.args[i]) << '"';
    }
    return out << ')';
}

ScriptedEditor::ScriptedEditor() : m_previousWindow(acapSetWindowServices(this)) {}

ScriptedEditor::~ScriptedEditor() { acapSetWindowServices(m_previousWindow); }

void ScriptedEditor::answerFile(int status, std::wstring path) {
    m_files.push_back({status, std::move(path)});
}

void ScriptedEditor::answerSelection(int status, std::vector<AcDbObjectId> ids) {
    m_selections.push_back({status, std::move(ids)});
}

void ScriptedEditor::answerPoint(int status, ads_point point) {
    m_points.push_back({status, point});
}

void ScriptedEditor::answerGrRead(int status, int type, resbuf result) {
    m_grReads.push_back({status, type, std::move(result)});
}

void ScriptedEditor::answerMessageBox(int answer) { m_messageBoxes.push_back(answer); }

void ScriptedEditor::setVariable(const std::wstring& name, resbuf value) {
    m_variables[name] = std::move(value);
}

const resbuf* ScriptedEditor::variable(const std::wstring& name) const {
    const auto it = m_variables.find(name);
    return it == m_variables.end() ? nullptr : &it->second;
}

std::vector<RecordedCall> ScriptedEditor::callsOf(const std::wstring& function) const {
    std::vector<RecordedCall> result;
    for (const auto& call : m_calls) {
        if (call.function == function) result.push_back(call);
    }
    return result;
}

void ScriptedEditor::record(std::wstring function, std::vector<std::wstring> args) {
    m_calls.push_back({std::move(function), std::move(args)});
}

int ScriptedEditor::getFileD(const std::wstring& title, const std::wstring& defaultName,
                             const std::wstring& extension, int flags, std::wstring& path) {
    record(L"acedGetFileD", {title, defaultName, extension, std::to_wstring(flags)});
    if (m_files.empty()) return RTERROR;
    const FileAnswer answer = std::move(m_files.front());
    m_files.pop_front();
    path = answer.path;
    return answer.status;
}

int ScriptedEditor::alert(const std::wstring& message) {
    record(L"acedAlert", {message});
    return RTNORM;
}

int ScriptedEditor::selectObjects(const wchar_t* mode, const std::vector<resbuf>* filter,
                                  std::vector<AcDbObjectId>& selected) {
    std::vector<std::wstring> args{mode ? mode : L"(null)"};
    if (filter) {
        for (const auto& item : *filter) args.push_back(describe(item));
    }
    record(L"acedSSGet", std::move(args));
    if (m_selections.empty()) return RTCAN;
    SelectionAnswer answer = std::move(m_selections.front());
    m_selections.pop_front();
    selected = std::move(answer.ids);
    return answer.status;
}

int ScriptedEditor::getVar(const std::wstring& name, resbuf& value) {
    record(L"acedGetVar", {name});
    const auto it = m_variables.find(name);
    if (it == m_variables.end()) return RTERROR;
    value = it->second;
    return RTNORM;
}

int ScriptedEditor::setVar(const std::wstring& name, const resbuf& value) {
    record(L"acedSetVar", {name, describe(value)});
    m_variables[name] = value;
    return RTNORM;
}

int ScriptedEditor::initGet(int flags, const std::wstring& keywords) {
    record(L"acedInitGet", {std::to_wstring(flags), keywords});
    return RTNORM;
}

int ScriptedEditor::getPoint(const ads_point* base, const std::wstring& prompt, ads_point& point) {
    record(L"acedGetPoint", {base ? describe(*base) : L"(null)", prompt});
    if (m_points.empty()) return RTCAN;
    const PointAnswer answer = m_points.front();
    m_points.pop_front();
    point = answer.point;
    return answer.status;
}

int ScriptedEditor::grRead(int track, int& type, resbuf& result) {
    record(L"acedGrRead", {std::to_wstring(track)});
    if (m_grReads.empty()) return RTCAN;
    GrReadAnswer answer = std::move(m_grReads.front());
    m_grReads.pop_front();
    type = answer.type;
    result = std::move(answer.result);
    return answer.status;
}

int ScriptedEditor::grDraw(const ads_point& from, const ads_point& to, int color, int highlight) {
    record(L"acedGrDraw",
           {describe(from), describe(to), std::to_wstring(color), std::to_wstring(highlight)});
    return RTNORM;
}

int ScriptedEditor::command(const std::vector<resbuf>& arguments) {
    std::vector<std::wstring> args;
    for (const auto& argument : arguments) args.push_back(describe(argument));
    record(L"acedCommandS", std::move(args));
    return RTNORM;
}

void ScriptedEditor::print(const std::wstring& text) {
    record(L"acutPrintf", {text});
    m_printed += text;
}

int ScriptedEditor::messageBox(const std::wstring& text, unsigned type) {
    record(L"AfxMessageBox", {text, std::to_wstring(type)});
    if (m_messageBoxes.empty()) return IDCANCEL;
    const int answer = m_messageBoxes.front();
    m_messageBoxes.pop_front();
    return answer;
}

void ScriptedEditor::beep(unsigned frequency, unsigned milliseconds) {
    record(L"Beep", {std::to_wstring(frequency), std::to_wstring(milliseconds)});
}
