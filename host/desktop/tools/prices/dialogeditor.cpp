// The tool's editor: boxes for the dialogs, no drawing window behind them.
#include "host/desktop/tools/prices/dialogeditor.h"

#include <QApplication>
#include <QWidget>
#include <cstdio>

#include "host/desktop/services/qthostdialogs.h"

namespace {

// The window that asked: the module's dialog running modally.
QWidget* askingWindow() {
    if (QWidget* modal = QApplication::activeModalWidget()) return modal;
    return QApplication::activeWindow();
}

}  // namespace

DialogEditor::DialogEditor(const DxfDocument* drawing) : m_drawing(drawing) {}

int DialogEditor::getFileD(const std::wstring& title, const std::wstring& defaultName,
                           const std::wstring& extension, int flags, std::wstring& path) {
    return runFileDialog(askingWindow(), title, defaultName, extension, flags, path);
}

int DialogEditor::alert(const std::wstring& message) {
    return showAlertBox(askingWindow(), message);
}

// Without a drawing window there is nothing to select, pick or draw on.
int DialogEditor::selectObjects(const wchar_t*, const std::vector<resbuf>*,
                                std::vector<AcDbObjectId>&) {
    return RTERROR;
}
int DialogEditor::getVar(const std::wstring& name, resbuf& value) {
    return m_drawing != nullptr ? m_drawing->getVar(name, value) : RTERROR;
}
int DialogEditor::setVar(const std::wstring&, const resbuf&) { return RTERROR; }
int DialogEditor::initGet(int, const std::wstring&) { return RTERROR; }
int DialogEditor::getPoint(const ads_point*, const std::wstring&, ads_point&) { return RTERROR; }
int DialogEditor::grRead(int, int&, resbuf&) { return RTERROR; }
int DialogEditor::grDraw(const ads_point&, const ads_point&, int, int) { return RTERROR; }
int DialogEditor::command(const std::vector<resbuf>&) { return RTERROR; }

void DialogEditor::print(const std::wstring& text) {
    std::fputs(QString::fromStdWString(text).toLocal8Bit().constData(), stdout);
}
