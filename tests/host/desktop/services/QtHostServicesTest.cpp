// The host's Qt boxes and file dialog answer with the host's codes, driven by real clicks and keys.
#include <gtest/gtest.h>

#include <QApplication>
#include <QFileDialog>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <functional>

#include "host/api/adscodes.h"
#include "host/desktop/services/qthostdialogs.h"
#include "host/desktop/services/qtwindowservices.h"
#include "tests/TempFolder.h"

namespace {

// Runs `act` on the modal dialog as soon as it is shown.
void whenModal(std::function<void(QWidget*)> act) {
    QTimer::singleShot(0, [act = std::move(act)] {
        QWidget* modal = QApplication::activeModalWidget();
        ASSERT_NE(modal, nullptr);
        act(modal);
    });
}

void clickButton(QWidget* modal, QMessageBox::StandardButton which) {
    auto* box = qobject_cast<QMessageBox*>(modal);
    ASSERT_NE(box, nullptr);
    ASSERT_NE(box->button(which), nullptr);
    QTest::mouseClick(box->button(which), Qt::LeftButton);
}

struct Answer {
    unsigned type;
    QMessageBox::StandardButton clicked;
    int expected;
};

const Answer kAnswers[] = {
    {MB_OK, QMessageBox::Ok, IDOK},
    {MB_OKCANCEL, QMessageBox::Cancel, IDCANCEL},
    {MB_YESNO, QMessageBox::No, IDNO},
    {MB_YESNOCANCEL, QMessageBox::Yes, IDYES},
    {MB_YESNOCANCEL, QMessageBox::No, IDNO},
    {MB_YESNOCANCEL | MB_ICONEXCLAMATION, QMessageBox::Cancel, IDCANCEL},
};

TEST(QtWindowServices, MessageBoxesAnswerWithTheButtonClickedOrEscape) {
    const QtWindowServices services;
    for (const auto& [type, clicked, expected] : kAnswers) {
        whenModal([clicked = clicked](QWidget* modal) { clickButton(modal, clicked); });
        EXPECT_EQ(AfxMessageBox(L"Save changes to a.prc", type), expected) << type;
    }
    // Esc cancels a question with Cancel; the box shows the text.
    QString shown;
    whenModal([&shown](QWidget* modal) {
        shown = qobject_cast<QMessageBox*>(modal)->text();
        QTest::keyClick(modal, Qt::Key_Escape);
    });
    EXPECT_EQ(AfxMessageBox(L"Save changes to c:\\lists\\a.prc", MB_YESNOCANCEL), IDCANCEL);
    EXPECT_EQ(shown, "Save changes to c:\\lists\\a.prc");
}

TEST(QtWindowServices, TheMainWindowIsTheDialogsParentWhileInstalled) {
    QWidget window;
    {
        const QtWindowServices services(&window);
        EXPECT_EQ(adsw_acadMainWnd(), &window);
        EXPECT_TRUE(Beep(1000, 50));
    }
    EXPECT_EQ(adsw_acadMainWnd(), nullptr);
}

TEST(QtHostDialogs, AFileToCreateGetsTheExtensionAndCancelAnswersMinus5001) {
    TempFolder folder;
    const std::wstring proposed = folder.wpath("doors-plan.txt");
    whenModal([](QWidget* modal) {
        auto* dialog = qobject_cast<QFileDialog*>(modal);
        ASSERT_NE(dialog, nullptr);
        EXPECT_EQ(dialog->acceptMode(), QFileDialog::AcceptSave);
        auto* name = dialog->findChild<QLineEdit*>("fileNameEdit");
        ASSERT_NE(name, nullptr);
        EXPECT_EQ(name->text(), "doors-plan.txt");
        name->setText("report");
        QTest::keyClick(name, Qt::Key_Return);
    });
    std::wstring path;
    ASSERT_EQ(runFileDialog(nullptr, L"Save as", proposed, L"txt", 1, path), RTNORM);
    EXPECT_EQ(path, folder.wpath("report.txt"));

    whenModal([](QWidget* modal) { QTest::keyClick(modal, Qt::Key_Escape); });
    std::wstring untouched = L"kept";
    EXPECT_EQ(runFileDialog(nullptr, L"Open", proposed, L"prc", 2, untouched), RTERROR);
    EXPECT_EQ(untouched, L"kept");
}

TEST(QtHostDialogs, AnExistingFileIsWhatOpenAccepts) {
    TempFolder folder;
    folder.write("doors.prc", "Door|10|front\n");
    whenModal([](QWidget* modal) {
        auto* dialog = qobject_cast<QFileDialog*>(modal);
        ASSERT_NE(dialog, nullptr);
        EXPECT_EQ(dialog->windowTitle(), "Open");
        EXPECT_EQ(dialog->fileMode(), QFileDialog::ExistingFile);
        QTest::keyClick(dialog->findChild<QLineEdit*>("fileNameEdit"), Qt::Key_Return);
    });
    std::wstring path;
    ASSERT_EQ(runFileDialog(nullptr, L"Open", folder.wpath("doors.prc"), L"prc", 2, path), RTNORM);
    EXPECT_EQ(path, folder.wpath("doors.prc"));
}

}  // namespace
