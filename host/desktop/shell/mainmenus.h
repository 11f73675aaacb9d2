// The main window's menus: File (drawings and the recent ones), View (zooms) and one menu per
// loaded module with its commands by their global names. Each item runs a command as typing it
// does, on the active drawing, so the menus need nothing of the widgets below them.
#pragma once

#include <QObject>
#include <QStringList>
#include <vector>

class DesktopShell;
class QAction;
class QMenu;
class QMenuBar;
class RecentDrawings;

class MainMenus final : public QObject {
    Q_OBJECT
public:
    MainMenus(QMenuBar& menuBar, DesktopShell& shell, RecentDrawings& recent,
              QObject* parent = nullptr);

    QMenu& fileMenu() { return *m_file; }
    QMenu& recentMenu() { return *m_recent; }
    QMenu& viewMenu() { return *m_view; }
    // The loaded modules' menus, in the order the modules were loaded.
    const std::vector<QMenu*>& moduleMenus() const { return m_modules; }

private:
    QAction* addCommand(QMenu& menu, const QString& text, const QStringList& macro);
    void buildFileMenu();
    void buildViewMenu();
    void updateRecent();
    void updateModules();
    void drawingChanged();

    QMenuBar& m_menuBar;
    DesktopShell& m_shell;
    RecentDrawings& m_recentDrawings;
    QMenu* m_file;
    QMenu* m_recent;
    QMenu* m_view;
    std::vector<QMenu*> m_modules;
};
