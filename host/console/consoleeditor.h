// The editor of the console front end: no one to ask, so selections and answers are set up from the
// command line beforehand; alerts and prompts go to standard error.
#pragma once

#include <cstdio>
#include <functional>
#include <map>
#include <string>
#include <vector>

#include "host/api/acapwindow.h"
#include "host/api/acededitor.h"

class ConsoleEditor final : public AcEdEditor, public AcApWindowServices {
public:
    using VariableWriter = std::function<void(const std::wstring& name, const resbuf& value)>;

    // Installs itself as the host's editor and window for its lifetime.
    explicit ConsoleEditor(std::FILE* messages);
    ~ConsoleEditor() override;
    ConsoleEditor(const ConsoleEditor&) = delete;
    ConsoleEditor& operator=(const ConsoleEditor&) = delete;

    // What the next selection prompt answers.
    void setSelection(std::vector<AcDbObjectId> ids) { m_selection = std::move(ids); }
    // System variables as the drawing holds them; `writer` hears of every change.
    void setVariable(const std::wstring& name, resbuf value);
    void setVariableWriter(VariableWriter writer) { m_variableWriter = std::move(writer); }
    // Alerts shown so far, for the exit status.
    int alertCount() const { return m_alerts; }

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

    void* mainWindow() override { return nullptr; }
    int messageBox(const std::wstring& text, unsigned type) override;
    void beep(unsigned frequency, unsigned milliseconds) override;

private:
    void writeLine(const std::wstring& text);

    std::FILE* m_messages;
    std::vector<AcDbObjectId> m_selection;
    std::map<std::wstring, resbuf> m_variables;
    VariableWriter m_variableWriter;
    int m_alerts = 0;
    AcEdEditorInstallation m_installation{this};
    AcApWindowServices* m_previousWindow;
};
