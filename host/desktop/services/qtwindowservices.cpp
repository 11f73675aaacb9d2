// Message boxes and the beep through Qt.
#include "host/desktop/services/qtwindowservices.h"

#include <QApplication>
#include <QMessageBox>

#include "host/desktop/services/qthostdialogs.h"

namespace {

constexpr unsigned kButtonMask = 0xF;
constexpr unsigned kIconMask = 0xF0;

QMessageBox::StandardButtons buttonsOf(unsigned type) {
    switch (type & kButtonMask) {
        case MB_OKCANCEL:
            return QMessageBox::Ok | QMessageBox::Cancel;
        case MB_YESNOCANCEL:
            return QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel;
        case MB_YESNO:
            return QMessageBox::Yes | QMessageBox::No;
        default:
            return QMessageBox::Ok;
    }
}

int answerOf(int button) {
    switch (button) {
        case QMessageBox::Yes:
            return IDYES;
        case QMessageBox::No:
            return IDNO;
        case QMessageBox::Cancel:
            return IDCANCEL;
        default:
            return IDOK;
    }
}

}  // namespace

QtWindowServices::QtWindowServices(QWidget* mainWindow)
    : m_mainWindow(mainWindow), m_previous(acapSetWindowServices(this)) {}

QtWindowServices::~QtWindowServices() { acapSetWindowServices(m_previous); }

int QtWindowServices::messageBox(const std::wstring& text, unsigned type) {
    QMessageBox box(m_mainWindow.data());
    box.setWindowTitle(hostDialogTitle());
    box.setText(QString::fromStdWString(text));
    box.setIcon((type & kIconMask) == MB_ICONEXCLAMATION ? QMessageBox::Warning
                                                         : QMessageBox::NoIcon);
    const QMessageBox::StandardButtons buttons = buttonsOf(type);
    box.setStandardButtons(buttons);
    box.setDefaultButton(buttons.testFlag(QMessageBox::Yes) ? QMessageBox::Yes : QMessageBox::Ok);
    if (buttons.testFlag(QMessageBox::Cancel)) box.setEscapeButton(QMessageBox::Cancel);
    return answerOf(box.exec());
}

void QtWindowServices::beep(unsigned /*frequency*/, unsigned /*milliseconds*/) {
    QApplication::beep();
}
