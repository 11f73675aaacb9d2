// An editor and window for tests: records every call with its texts and flags, answers from queues.
#pragma once

#include <deque>
#include <map>
#include <ostream>
#include <string>
#include <vector>

#include "host/api/acapwindow.h"
#include "host/api/acededitor.h"

struct RecordedCall {
    std::wstring function;           // e.g. L"acedGetFileD"
    std::vector<std::wstring> args;  // texts as passed, numbers in decimal
    friend bool operator==(const RecordedCall&, const RecordedCall&) = default;
};

std::ostream& operator<<(std::ostream& out, const RecordedCall& call);

class ScriptedEditor final : public AcEdEditor, public AcApWindowServices {
public:
    struct FileAnswer {
        int status = RTERROR;
        std::wstring path;
    };
    struct SelectionAnswer {
        int status = RTCAN;
        std::vector<AcDbObjectId> ids;
    };
    struct PointAnswer {
        int status = RTCAN;
        ads_point point;
    };
    struct GrReadAnswer {
        int status = RTCAN;
        int type = 0;
        resbuf result;
    };

    // Installs itself as the host's editor and window for its lifetime.
    ScriptedEditor();
    ~ScriptedEditor() override;
    ScriptedEditor(const ScriptedEditor&) = delete;
    ScriptedEditor& operator=(const ScriptedEditor&) = delete;

    void answerFile(int status, std::wstring path = {});
    void answerSelection(int status, std::vector<AcDbObjectId> ids = {});
    void answerPoint(int status, ads_point point = {});
    void answerGrRead(int status, int type, resbuf result = {});
    void answerMessageBox(int answer);
    // Selections stand for the whole space, as tarnwick-calc's do.
    void selectWholeSpace(bool whole) { m_wholeSpace = whole; }
    void setVariable(const std::wstring& name, resbuf value);
    const resbuf* variable(const std::wstring& name) const;

    const std::vector<RecordedCall>& calls() const { return m_calls; }
    std::vector<RecordedCall> callsOf(const std::wstring& function) const;
    void clearCalls() { m_calls.clear(); }
    const std::wstring& printed() const { return m_printed; }

    // AcEdEditor
    int getFileD(const std::wstring& title, const std::wstring& defaultName,
                 const std::wstring& extension, int flags, std::wstring& path) override;
    int alert(const std::wstring& message) override;
    int selectObjects(const wchar_t* mode, const std::vector<resbuf>* filter,
                      std::vector<AcDbObjectId>& selected) override;
    int getVar(const std::wstring& name, resbuf& value) override;
    int setVar(const std::wstring& name, const resbuf& value) override;
    int initGet(int flags, const std::wstring& keywords) override;
    int getPoint(const ads_point* base, const std::wstring& prompt, ads_point& point) override;
    int grRead(int track, int& type, resbuf& result) override;
    int grDraw(const ads_point& from, const ads_point& to, int color, int highlight) override;
    int command(const std::vector<resbuf>& arguments) override;
    void print(const std::wstring& text) override;
    bool selectsWholeSpace() const override { return m_wholeSpace; }

    // AcApWindowServices
    void* mainWindow() override { return nullptr; }
    int messageBox(const std::wstring& text, unsigned type) override;
    void beep(unsigned frequency, unsigned milliseconds) override;

private:
    void record(std::wstring function, std::vector<std::wstring> args);

    std::vector<RecordedCall> m_calls;
    std::wstring m_printed;
    std::deque<FileAnswer> m_files;
    std::deque<SelectionAnswer> m_selections;
    std::deque<PointAnswer> m_points;
    std::deque<GrReadAnswer> m_grReads;
    std::deque<int> m_messageBoxes;
    std::map<std::wstring, resbuf> m_variables;
    bool m_wholeSpace = false;
    AcEdEditorInstallation m_installation{this};
    AcApWindowServices* m_previousWindow;
};

// How a value reads in a recorded call: numbers in shortest decimal, points as "(x,y,z)".
std::wstring describe(double value);
std::wstring describe(const ads_point& point);
std::wstring describe(const resbuf& value);
