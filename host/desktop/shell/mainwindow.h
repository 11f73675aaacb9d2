// The desktop host's main window: the drawing area over the command line, and a status line with
// the cursor's position in drawing units.
#pragma once

#include <QMainWindow>
#include <memory>

class CommandLine;
class DesktopShell;
class PlaceholderView;
class QLabel;
class QtWindowServices;

class MainWindow final : public QMainWindow {
    Q_OBJECT
public:
    explicit MainWindow(QWidget* parent = nullptr);
    ~MainWindow() override;

    DesktopShell& shell() { return *m_shell; }
    CommandLine& commandLine() { return *m_commandLine; }
    PlaceholderView& view() { return *m_view; }
    QLabel& cursorPosition() { return *m_cursorPosition; }

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    void updateTitle();

    PlaceholderView* m_view;
    CommandLine* m_commandLine;
    QLabel* m_cursorPosition;
    // The module's dialogs take this window as their parent; message boxes and the beep.
    std::unique_ptr<QtWindowServices> m_windowServices;
    // Destroyed before the widgets it prints to: modules are unloaded while they still exist.
    std::unique_ptr<DesktopShell> m_shell;
    bool m_closeConfirmed = false;
};
