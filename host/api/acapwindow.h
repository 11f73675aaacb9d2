// The host's main window, message boxes, the speaker and the current resource module.
#pragma once

#include <string>

#include "host/api/hostexport.h"

// Message box styles and answers.
constexpr unsigned MB_OK = 0x0;
constexpr unsigned MB_OKCANCEL = 0x1;
constexpr unsigned MB_YESNOCANCEL = 0x3;
constexpr unsigned MB_YESNO = 0x4;
constexpr unsigned MB_ICONEXCLAMATION = 0x30;
constexpr int IDOK = 1;
constexpr int IDCANCEL = 2;
constexpr int IDYES = 6;
constexpr int IDNO = 7;

class ACHOST_EXPORT AcApWindowServices {
public:
    virtual ~AcApWindowServices();
    // The parent of the module's dialogs (a QWidget* in the desktop shell, null without windows).
    virtual void* mainWindow() = 0;
    virtual int messageBox(const std::wstring& text, unsigned type) = 0;
    virtual void beep(unsigned frequency, unsigned milliseconds) = 0;
};

ACHOST_EXPORT AcApWindowServices* acapSetWindowServices(AcApWindowServices* services);

ACHOST_EXPORT void* adsw_acadMainWnd();
ACHOST_EXPORT int AfxMessageBox(const wchar_t* text, unsigned type = MB_OK);
ACHOST_EXPORT bool Beep(unsigned frequency, unsigned milliseconds);

// The module whose dialog templates and strings are used; an opaque handle.
using HINSTANCE = const void*;
ACHOST_EXPORT HINSTANCE AfxGetResourceHandle();
ACHOST_EXPORT void AfxSetResourceHandle(HINSTANCE instance);
