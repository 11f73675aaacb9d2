// The price-list dialog's test fixture.
#include "tests/pricelist/PriceDialogFixture.h"

#include <QApplication>
#include <QFileInfo>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <QTest>
#include <QWindow>

#include "grid/CUGGrid.h"
#include "grid/CUGTopHdg.h"
#include "pricelist/CurrentPriceList.h"
#include "resources/BomTemplate.h"
#include "resources/DialogBuilder.h"
#include "resources/ModulePath.h"

void PriceDialogTest::SetUp() {
    acdbHostApplicationServices()->setWorkingDatabase(&m_drawing);
    modulePath = m_folder.wpath("Tarnwick.arx");
    priceListFileName.clear();
}

void PriceDialogTest::TearDown() {
    m_dialog.reset();
    acdbHostApplicationServices()->setWorkingDatabase(nullptr);
    modulePath.clear();
    priceListFileName.clear();
}

BlockPriceDialog& PriceDialogTest::OpenDialog() {
    m_dialog.reset();
    m_dialog = std::make_unique<BlockPriceDialog>();
    m_dialog->show();
    EXPECT_TRUE(QTest::qWaitForWindowExposed(m_dialog.get()));
    QApplication::setActiveWindow(m_dialog.get());
    return *m_dialog;
}

QPushButton* PriceDialogTest::Button(int id) const {
    return qobject_cast<QPushButton*>(GetDlgItem(*m_dialog, id));
}

void PriceDialogTest::ClickAt(QWidget* widget, const QPoint& point) {
    const QPoint inDialog = widget->mapTo(m_dialog.get(), point);
    QTest::mouseClick(m_dialog->windowHandle(), Qt::LeftButton, Qt::NoModifier, inDialog);
}

void PriceDialogTest::Click(int id) {
    QPushButton* button = Button(id);
    ASSERT_NE(button, nullptr) << id;
    ClickAt(button, button->rect().center());
}

bool PriceDialogTest::Enabled(int id) const { return Button(id)->isEnabled(); }

std::string PriceDialogTest::ButtonStates() const {
    std::string states;
    for (int id : {IDC_PRICE_SAVE, IDC_PRICE_SAVE_AS, IDC_PRICE_INSERT_ROW, IDC_PRICE_DELETE_ROW,
                   IDC_PRICE_MOVE_UP, IDC_PRICE_MOVE_DOWN})
        states += Enabled(id) ? '1' : '0';
    return states;
}

void PriceDialogTest::ClickCell(int col, long row) {
    const QRect rect = Grid().GetCellRect(col, row);
    ClickAt(Grid().GetGridWindow(), QPoint(rect.left() + 8, rect.center().y()));
}

void PriceDialogTest::ClickDropButton(int col, long row) {
    const QRect rect = Grid().GetCellRect(col, row);
    ClickAt(Grid().GetGridWindow(), QPoint(rect.right() - 4, rect.center().y()));
}

void PriceDialogTest::ClickHeading(int col) {
    const QRect rect = Grid().GetCellRect(col, 0);
    ClickAt(Grid().GetTopHdgWindow(), QPoint(rect.center().x(), Grid().GetTopHdgWindow()->height() / 2));
}

QWidget* PriceDialogTest::FocusWidget() const { return QApplication::focusWidget(); }

// Each key goes where the focus is when it is typed, as the first key of a name moves the focus
// into the editor it opens.
void PriceDialogTest::Type(const char* text) {
    for (const char* c = text; *c != '\0'; ++c) {
        QWidget* target = FocusWidget();
        ASSERT_NE(target, nullptr);
        QTest::keyClick(target, *c);
    }
}

void PriceDialogTest::TypeText(const QString& text) {
    for (const QChar c : text) {
        QWidget* target = FocusWidget();
        ASSERT_NE(target, nullptr);
        QKeyEvent press(QEvent::KeyPress, 0, Qt::NoModifier, QString(c));
        QApplication::sendEvent(target, &press);
        QKeyEvent release(QEvent::KeyRelease, 0, Qt::NoModifier, QString(c));
        QApplication::sendEvent(target, &release);
    }
}

void PriceDialogTest::Key(Qt::Key key, Qt::KeyboardModifiers modifiers) {
    QWidget* target = FocusWidget();
    ASSERT_NE(target, nullptr);
    QTest::keyClick(target, key, modifiers);
}

std::wstring PriceDialogTest::WriteList(const std::string& name, const std::string& bytes) {
    m_folder.write(name, bytes);
    return m_folder.wpath(name);
}

void PriceDialogTest::OpenFile(const std::wstring& path) {
    m_editor.answerFile(RTNORM, path);
    Click(IDC_PRICE_OPEN);
}

std::wstring PriceDialogTest::OpenList(const std::string& name, const std::string& bytes) {
    const std::wstring path = WriteList(name, bytes);
    OpenDialog();
    OpenFile(path);
    return path;
}

void PriceDialogTest::Edit(int col, long row, const char* text) {
    ClickCell(col, row);
    ASSERT_TRUE(Grid().IsEditing());
    if (*text == '\0')
        Key(Qt::Key_Backspace);
    else
        Type(text);
    Key(Qt::Key_Return);
}

bool PriceDialogTest::Exists(const std::string& name) const {
    return QFileInfo::exists(QString::fromStdString(m_folder.path(name)));
}

std::wstring PriceDialogTest::FileLabelText() const {
    return m_dialog->FileLabel()->text().toStdWString();
}

std::vector<std::wstring> PriceDialogTest::Column(int col) {
    std::vector<std::wstring> texts;
    for (long row = 0; row < Grid().GetNumberRows(); ++row) texts.push_back(Text(col, row));
    return texts;
}

std::wstring PriceDialogTest::Text(int col, long row) {
    std::wstring text;
    Grid().QuickGetText(col, row, &text);
    return text;
}
