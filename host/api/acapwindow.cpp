// Window services of the host, reached through the installed implementation.
#include "host/api/acapwindow.h"

AcApWindowServices::~AcApWindowServices() = default;

namespace {

AcApWindowServices*& installedServices() {
    static AcApWindowServices* services = nullptr;
    return services;
}

HINSTANCE& currentResource() {
    static HINSTANCE instance = nullptr;
    return instance;
}

}  // namespace

AcApWindowServices* acapSetWindowServices(AcApWindowServices* services) {
    AcApWindowServices* previous = installedServices();
    installedServices() = services;
    return previous;
}

void* adsw_acadMainWnd() {
    AcApWindowServices* services = installedServices();
    return services ? services->mainWindow() : nullptr;
}

// Without a window the question cannot be asked: answer as if the user cancelled.
int AfxMessageBox(const wchar_t* text, unsigned type) {
    AcApWindowServices* services = installedServices();
    if (services == nullptr) return IDCANCEL;
    return services->messageBox(text ? text : L"", type);
}

bool Beep(unsigned frequency, unsigned milliseconds) {
    AcApWindowServices* services = installedServices();
    if (services == nullptr) return false;
    services->beep(frequency, milliseconds);
    return true;
}

HINSTANCE AfxGetResourceHandle() { return currentResource(); }
void AfxSetResourceHandle(HINSTANCE instance) { currentResource() = instance; }
