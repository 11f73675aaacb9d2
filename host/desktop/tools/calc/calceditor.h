// The editor of tarnwick-calc: the calculation command run over one drawing without a drawing
// window. File prompts and alerts are Qt's boxes, the selection is the whole model space, points
// are typed on the console, and ".INSERT" goes straight to the drawing.
#pragma once

#include <functional>
#include <map>
#include <optional>
#include <string>

#include "host/api/acededitor.h"

class DxfDocument;

// The outside world the editor talks to; the tool wires Qt's boxes and the console, tests their
// own.
struct CalcToolIo {
    // acedGetFileD: RTNORM with the path, or RTERROR when cancelled.
    std::function<int(const std::wstring& title, const std::wstring& defaultName,
                      const std::wstring& extension, int flags, std::wstring& path)>
        askFile;
    std::function<void(const std::wstring& message)> showAlert;
    // A line typed on the console without its line break; null at the end of the input.
    std::function<std::optional<std::string>()> readLine;
    // Prompts and the command's messages, for the console.
    std::function<void(const std::string& text)> write;
    // The tool's own one-line messages (standard error).
    std::function<void(const std::string& line)> report;
};

class CalcEditor final : public AcEdEditor {
public:
    // Installs itself as the host's editor for its lifetime.
    CalcEditor(DxfDocument& document, CalcToolIo& io);
    CalcEditor(const CalcEditor&) = delete;
    CalcEditor& operator=(const CalcEditor&) = delete;

    // The first price-list prompt ("prc", an existing file) answers this path without asking.
    void answerPriceListPrompt(std::wstring path) { m_priceList = std::move(path); }
    // Whether ".INSERT" added a reference.
    bool inserted() const { return m_inserted; }

    int getFileD(const std::wstring& title, const std::wstring& defaultName,
                 const std::wstring& extension, int flags, std::wstring& path) override;
    int alert(const std::wstring& message) override;
    int selectObjects(const wchar_t* mode, const std::vector<resbuf>* filter,
                      std::vector<AcDbObjectId>& selected) override;
    int getVar(const std::wstring& name, resbuf& value) override;
    int setVar(const std::wstring& name, const resbuf& value) override;
    int initGet(int flags, const std::wstring& keywords) override;
    // Reads "x,y" or "x,y,z" from the console; asks again after anything else.
    int getPoint(const ads_point* base, const std::wstring& prompt, ads_point& point) override;
    // Without a cursor the rubber band is typed: RETURN (or the end of input) keeps scale 1, a
    // point "x,y" drags the frame's corner there and picks it.
    int grRead(int track, int& type, resbuf& result) override;
    int grDraw(const ads_point& from, const ads_point& to, int color, int highlight) override;
    int command(const std::vector<resbuf>& arguments) override;
    void print(const std::wstring& text) override;
    // Every selection is the whole of model space.
    bool selectsWholeSpace() const override { return true; }

private:
    // A line of the console read as a point; null for anything else.
    static std::optional<ads_point> parsePoint(const std::string& line);
    void writeText(const std::wstring& text);

    DxfDocument& m_document;
    CalcToolIo& m_io;
    std::optional<std::wstring> m_priceList;
    std::map<std::wstring, resbuf> m_sessionVariables;  // those the drawing does not keep
    int m_initGetFlags = 0;
    bool m_pickPending = false;
    std::wstring m_lastPrompt;
    bool m_inserted = false;
    AcEdEditorInstallation m_installation{this};
};
