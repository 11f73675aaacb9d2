// The price-list editor: the grid of a price list with the buttons that create, open, save and
// close a list and insert, delete and move its rows. It reads its settings files when it starts
// and writes them when it closes after a list was opened. One such dialog exists at a time; its
// grid reaches it through `blockPriceDialog`.
#pragma once

#include <QDialog>
#include <string>

#include "pricelist/MyCug.h"

class CStaticEx;
class QLabel;
class QPushButton;

class BlockPriceDialog final : public QDialog {
    Q_OBJECT

public:
    // Builds the dialog from template 200 in "Courier" at the template's size, disables the
    // buttons for list work and reads the settings files.
    explicit BlockPriceDialog(QWidget* parent = nullptr);
    ~BlockPriceDialog() override;

    // Runs the dialog modally: IDCANCEL, as every way of closing it ends it like a cancel.
    int DoModal();

    // The buttons' handlers.
    void OnNew();
    void OnOpen();
    void OnSave();
    void OnSaveAs();
    void OnInsertRow();
    void OnDeleteRow();
    void OnMoveUp();
    void OnMoveDown();
    // "&Close", the window's close request, Escape: the save prompt, the settings, the end.
    void OnClose();

    // What "&Open" does once a file is chosen: attach the grid, load the file, show it. A tool
    // that is given a list to start with opens it this way. False when the file cannot be read.
    [[nodiscard]] bool OpenList(const std::wstring& path);

    MyCug& Grid() { return m_grid; }
    CStaticEx* MessageLabel() const { return m_messageLabel; }
    QLabel* FileLabel() const { return m_fileLabel; }
    int SkipUniqueness() const { return m_skipUniqueness; }
    bool IsListOpen() const { return m_listOpen != 0; }
    bool IsGridAttached() const { return m_gridAttached != 0; }

public slots:
    void reject() override;

private:
    void OnInitDialog();
    void BindControls();
    void ArrangeFileLabels();
    void ReadSettings();
    void WriteSettings();
    // IDYES, IDNO or IDCANCEL; IDNO when there is nothing to ask about.
    int AskToSave();
    void AttachGridOnce();
    void ShowFileName();
    bool ChooseFile(int titleId, const std::wstring& defaultName, int flags, std::wstring& path);

    MyCug m_grid;
    int m_skipUniqueness = 0;
    QPushButton* m_moveDown = nullptr;
    QPushButton* m_moveUp = nullptr;
    QPushButton* m_deleteRow = nullptr;
    QPushButton* m_insertRow = nullptr;
    QPushButton* m_saveAs = nullptr;
    QPushButton* m_save = nullptr;
    QLabel* m_fileLabel = nullptr;
    CStaticEx* m_messageLabel = nullptr;
    int m_gridAttached = 0;
    int m_listOpen = 0;
};

// The open price-list dialog, or null.
extern BlockPriceDialog* blockPriceDialog;
