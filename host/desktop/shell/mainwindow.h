// The desktop host's main window: the menus, a tab for each open drawing over the command line,
// and a status line with the cursor's position in drawing units. The title names the active
// drawing and marks unsaved changes; each tab names its drawing and marks them too.
#pragma once

#include <QMainWindow>
#include <filesystem>
#include <memory>

#include "host/desktop/session/recentdrawings.h"

class CommandLine;
class DesktopShell;
class DrawingSession;
class DrawingSurface;
class DrawingView;
class MainMenus;
class QLabel;
class QTabWidget;
class QtWindowServices;
class ViewSurface;

class MainWindow final : public QMainWindow {
    Q_OBJECT
public:
    // The recent drawings are kept in the file given, or only while the window lives.
    explicit MainWindow(const std::filesystem::path& recentDrawingsFile = {},
                        QWidget* parent = nullptr);
    ~MainWindow() override;

    DesktopShell& shell() { return *m_shell; }
    CommandLine& commandLine() { return *m_commandLine; }
    // The active drawing's view and surface.
    DrawingView& view();
    ViewSurface& surface();
    QTabWidget& drawingTabs() { return *m_tabs; }
    QLabel& cursorPosition() { return *m_cursorPosition; }
    MainMenus& menus() { return *m_menus; }

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    // A tab with a view of its own for a drawing the shell opened.
    std::unique_ptr<DrawingSurface> addDrawingTab(DrawingSession& drawing);
    void tabChosen(int index);
    void updateTitles();

    QTabWidget* m_tabs;
    CommandLine* m_commandLine;
    QLabel* m_cursorPosition;
    // The module's dialogs take this window as their parent; message boxes and the beep.
    std::unique_ptr<QtWindowServices> m_windowServices;
    // Destroyed before the widgets it prints to: modules are unloaded while they still exist.
    std::unique_ptr<DesktopShell> m_shell;
    RecentDrawings m_recentDrawings;
    MainMenus* m_menus = nullptr;
    bool m_closeConfirmed = false;
};
