// The user's input and the command line: what a host implements so that the editor functions work.
#pragma once

#include <string>
#include <vector>

#include "host/api/acdbobjectid.h"
#include "host/api/adscodes.h"
#include "host/api/hostexport.h"

// One implementation per host: the desktop shell, the console, and the scripted editor of the
// tests. The results are the editor functions' status codes (RTNORM, RTCAN, ...).
class ACHOST_EXPORT AcEdEditor {
public:
    virtual ~AcEdEditor();

    // Flags: 1 asks for a file to create, 2 for an existing file. Cancel answers RTERROR (-5001).
    virtual int getFileD(const std::wstring& title, const std::wstring& defaultName,
                         const std::wstring& extension, int flags, std::wstring& path) = 0;
    virtual int alert(const std::wstring& message) = 0;
    // The user's selection, narrowed by the filter (pairs of DXF group code and value).
    virtual int selectObjects(const wchar_t* mode, const std::vector<resbuf>* filter,
                              std::vector<AcDbObjectId>& selected) = 0;
    virtual int getVar(const std::wstring& name, resbuf& value) = 0;
    virtual int setVar(const std::wstring& name, const resbuf& value) = 0;
    virtual int initGet(int flags, const std::wstring& keywords) = 0;
    virtual int getPoint(const ads_point* base, const std::wstring& prompt, ads_point& point) = 0;
    // Tracking input: `type` is 2 for a key, 3 for a picked point, 5 for a cursor sample.
    virtual int grRead(int track, int& type, resbuf& result) = 0;
    virtual int grDraw(const ads_point& from, const ads_point& to, int color, int highlight) = 0;
    virtual int command(const std::vector<resbuf>& arguments) = 0;
    virtual void print(const std::wstring& text) = 0;
    // Whether every selection is answered with all of the current space rather than by the user
    // (tarnwick-calc): a table counted from it counts the whole space again when it is refreshed.
    virtual bool selectsWholeSpace() const { return false; }
};

// Installs the editor that the functions below reach; returns the one it replaces.
ACHOST_EXPORT AcEdEditor* acedSetEditor(AcEdEditor* editor);
ACHOST_EXPORT AcEdEditor* acedEditor();

// What every host's editor does: it is the installed editor for as long as it lives, and the one
// it replaced comes back when it goes. A member of the editor, declared after what the editor
// functions use.
class AcEdEditorInstallation final {
public:
    explicit AcEdEditorInstallation(AcEdEditor* editor) : m_previous(acedSetEditor(editor)) {}
    ~AcEdEditorInstallation() { acedSetEditor(m_previous); }
    AcEdEditorInstallation(const AcEdEditorInstallation&) = delete;
    AcEdEditorInstallation& operator=(const AcEdEditorInstallation&) = delete;

private:
    AcEdEditor* m_previous;
};

// A path is returned in result->resval.rstring; the string frees itself, so there is no acad_free.
ACHOST_EXPORT int acedGetFileD(const wchar_t* title, const wchar_t* defaultName,
                               const wchar_t* extension, int flags, resbuf* result);
ACHOST_EXPORT int acedAlert(const wchar_t* message);
ACHOST_EXPORT int acedSSGet(const wchar_t* mode, const void* point1, const void* point2,
                            const std::vector<resbuf>* filter, ads_name& selectionSet);
ACHOST_EXPORT int acedSSLength(const ads_name& selectionSet, std::int32_t* length);
ACHOST_EXPORT int acedSSName(const ads_name& selectionSet, std::int32_t index, ads_name& entity);
ACHOST_EXPORT int acedSSFree(const ads_name& selectionSet);
// Whether the installed editor answers selections with the whole current space.
ACHOST_EXPORT bool acedSelectsWholeSpace();
ACHOST_EXPORT int acedGetVar(const wchar_t* name, resbuf* result);
ACHOST_EXPORT int acedSetVar(const wchar_t* name, const resbuf* value);
ACHOST_EXPORT int acedInitGet(int flags, const wchar_t* keywords);
ACHOST_EXPORT int acedGetPoint(const ads_point* base, const wchar_t* prompt, ads_point& result);
ACHOST_EXPORT int acedGrRead(int track, int* type, resbuf* result);
ACHOST_EXPORT int acedGrDraw(const ads_point& from, const ads_point& to, int color, int highlight);
ACHOST_EXPORT int acedCommandS(const std::vector<resbuf>& arguments);
ACHOST_EXPORT int acutPrintf(const wchar_t* format, ...);
