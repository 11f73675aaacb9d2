// The host's window services on Qt: the main window as the dialogs' parent, message boxes with the
// host's button sets and answers, and the speaker.
#pragma once

#include <QPointer>
#include <QWidget>

#include "host/api/acapwindow.h"

class QtWindowServices final : public AcApWindowServices {
public:
    // Installs itself as the host's window services for its lifetime.
    explicit QtWindowServices(QWidget* mainWindow = nullptr);
    ~QtWindowServices() override;
    QtWindowServices(const QtWindowServices&) = delete;
    QtWindowServices& operator=(const QtWindowServices&) = delete;

    void setMainWindow(QWidget* window) { m_mainWindow = window; }

    void* mainWindow() override { return m_mainWindow.data(); }
    // MB_OK, MB_OKCANCEL, MB_YESNO or MB_YESNOCANCEL, with MB_ICONEXCLAMATION for a warning sign;
    // IDOK, IDCANCEL, IDYES or IDNO. Escape answers IDCANCEL where there is a Cancel button.
    int messageBox(const std::wstring& text, unsigned type) override;
    // The platform's beep: frequency and length are beyond what a desktop speaker offers.
    void beep(unsigned frequency, unsigned milliseconds) override;

private:
    QPointer<QWidget> m_mainWindow;
    AcApWindowServices* m_previous;
};
