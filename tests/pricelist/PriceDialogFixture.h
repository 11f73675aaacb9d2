// A price-list dialog on the screen of the tests: a drawing in memory, the scripted editor answering
// its prompts, its settings in a fresh folder, and real clicks and keys to drive it.
#pragma once

#include <gtest/gtest.h>

#include <QPoint>
#include <memory>
#include <string>
#include <vector>

#include "host/scripted/memorydatabase.h"
#include "host/scripted/scriptededitor.h"
#include "pricelist/BlockPriceDialog.h"
#include "tests/TempFolder.h"

class QPushButton;

class PriceDialogTest : public ::testing::Test {
protected:
    void SetUp() override;
    void TearDown() override;

    // A new dialog, shown; the old one, if any, is gone first.
    BlockPriceDialog& OpenDialog();
    BlockPriceDialog& Dialog() const { return *m_dialog; }
    MyCug& Grid() const { return m_dialog->Grid(); }

    QPushButton* Button(int id) const;
    // A left click through the dialog's window at a point of one of its widgets: the widget that
    // is there gets it, as under the user's mouse.
    void ClickAt(QWidget* widget, const QPoint& point);
    // A left click on the button of this id (nothing happens when it is disabled).
    void Click(int id);
    bool Enabled(int id) const;
    // The enabled states of the six list buttons: Save, Save As, Insert, Delete, Up, Down.
    std::string ButtonStates() const;

    // Clicks a cell of the grid at its centre, or at its drop button.
    void ClickCell(int col, long row);
    void ClickDropButton(int col, long row);
    void ClickHeading(int col);
    // Types into whatever has the keyboard focus (the grid's editor while a cell is edited).
    void Type(const char* text);
    // Any text, one key event a character, as a keyboard of its script types it.
    void TypeText(const QString& text);
    void Key(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
    QWidget* FocusWidget() const;

    // A price-list file in the test folder, and its path.
    std::wstring WriteList(const std::string& name, const std::string& bytes);
    // "&Open" answered with this file.
    void OpenFile(const std::wstring& path);
    // A price-list file written, a new dialog shown and the file opened in it; the file's path.
    std::wstring OpenList(const std::string& name, const std::string& bytes);
    // A cell clicked, the text typed (Backspace when it is empty) and Enter pressed.
    void Edit(int col, long row, const char* text);
    bool Exists(const std::string& name) const;
    std::wstring FileLabelText() const;
    std::vector<std::wstring> Column(int col);
    std::wstring Text(int col, long row);

    std::vector<RecordedCall> MessageBoxes() const { return m_editor.callsOf(L"AfxMessageBox"); }
    std::vector<RecordedCall> Alerts() const { return m_editor.callsOf(L"acedAlert"); }
    std::vector<RecordedCall> FilePrompts() const { return m_editor.callsOf(L"acedGetFileD"); }

    TempFolder m_folder;
    MemoryDatabase m_drawing;
    ScriptedEditor m_editor;
    std::unique_ptr<BlockPriceDialog> m_dialog;
};
