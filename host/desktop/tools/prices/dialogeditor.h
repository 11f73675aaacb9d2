// The editor of a tool that runs one of the module's dialogs without a drawing window: it answers
// the file dialog and the alert with the host's Qt boxes and refuses everything else.
#pragma once

#include "host/api/acededitor.h"
#include "host/dxf/dxfdocument.h"

class DialogEditor final : public AcEdEditor {
public:
    // Installs itself as the host's editor for its lifetime; the drawing, when there is one,
    // answers the system variables (its name and folder among them).
    explicit DialogEditor(const DxfDocument* drawing);
    DialogEditor(const DialogEditor&) = delete;
    DialogEditor& operator=(const DialogEditor&) = delete;

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

private:
    const DxfDocument* m_drawing;
    AcEdEditorInstallation m_installation{this};
};
