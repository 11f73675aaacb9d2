// File dialog and alert box of the host.
#include "host/desktop/services/qthostdialogs.h"

#include <QApplication>
#include <QFileDialog>
#include <QFileInfo>
#include <QMessageBox>

#include "host/api/adscodes.h"

namespace {

constexpr int kFileToCreate = 1;

QString nameFilters(const QString& extension) {
    const QString all = QObject::tr("All files (*)");
    if (extension.isEmpty()) return all;
    return QObject::tr("%1 files (*.%2)").arg(extension.toUpper(), extension) + ";;" + all;
}

}  // namespace

QString hostDialogTitle() {
    const QString name = QApplication::applicationDisplayName();
    return name.isEmpty() ? QStringLiteral("Tarnwick") : name;
}

int runFileDialog(QWidget* parent, const std::wstring& title, const std::wstring& defaultName,
                  const std::wstring& extension, int flags, std::wstring& path) {
    const QString suffix = QString::fromStdWString(extension);
    QFileDialog dialog(parent, QString::fromStdWString(title));
    dialog.setOption(QFileDialog::DontUseNativeDialog);
    dialog.setNameFilters(nameFilters(suffix).split(";;"));
    dialog.setDefaultSuffix(suffix);
    if (flags & kFileToCreate) {
        dialog.setAcceptMode(QFileDialog::AcceptSave);
        dialog.setFileMode(QFileDialog::AnyFile);
    } else {
        dialog.setAcceptMode(QFileDialog::AcceptOpen);
        dialog.setFileMode(QFileDialog::ExistingFile);
    }
    if (!defaultName.empty()) {
        const QFileInfo proposed(QString::fromStdWString(defaultName));
        if (!proposed.path().isEmpty() && proposed.path() != QStringLiteral("."))
            dialog.setDirectory(proposed.absolutePath());
        dialog.selectFile(proposed.fileName());
    }
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty()) return RTERROR;
    path = dialog.selectedFiles().constFirst().toStdWString();
    return RTNORM;
}

int showAlertBox(QWidget* parent, const std::wstring& message) {
    QString text = QString::fromStdWString(message);
    while (text.startsWith(QLatin1Char('\n'))) text.remove(0, 1);
    QMessageBox box(QMessageBox::Warning, hostDialogTitle(), text, QMessageBox::Ok, parent);
    box.exec();
    return RTNORM;
}
