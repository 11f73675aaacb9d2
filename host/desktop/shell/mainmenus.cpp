// Building the menus and keeping the recent drawings and the modules' menus up to date.
#include "host/desktop/shell/mainmenus.h"

#include <QFileInfo>
#include <QKeySequence>
#include <QMenu>
#include <QMenuBar>

#include "host/api/acrxregistry.h"
#include "host/desktop/session/recentdrawings.h"
#include "host/desktop/shell/commandline.h"
#include "host/desktop/shell/desktopshell.h"

MainMenus::MainMenus(QMenuBar& menuBar, DesktopShell& shell, RecentDrawings& recent,
                     QObject* parent)
    : QObject(parent),
      m_menuBar(menuBar),
      m_shell(shell),
      m_recentDrawings(recent),
      m_file(menuBar.addMenu(QStringLiteral("&File"))),
      m_recent(new QMenu(QStringLiteral("Open &Recent"), m_file)),
      m_view(menuBar.addMenu(QStringLiteral("&View"))) {
    buildFileMenu();
    buildViewMenu();
    updateRecent();
    updateModules();
    connect(&shell, &DesktopShell::modulesChanged, this, &MainMenus::updateModules);
    connect(&shell, &DesktopShell::drawingChanged, this, &MainMenus::drawingChanged);
}

QAction* MainMenus::addCommand(QMenu& menu, const QString& text, const QStringList& macro) {
    QAction* action = menu.addAction(text);
    connect(action, &QAction::triggered, &m_shell, [this, macro] { m_shell.runMacro(macro); });
    return action;
}

// "_" asks for a command by its English name, as CAD menus do.
void MainMenus::buildFileMenu() {
    addCommand(*m_file, QStringLiteral("&New"), {QStringLiteral("_NEW")})
        ->setShortcut(QKeySequence::New);
    addCommand(*m_file, QStringLiteral("&Open..."), {QStringLiteral("_OPEN")})
        ->setShortcut(QKeySequence::Open);
    m_file->addMenu(m_recent);
    addCommand(*m_file, QStringLiteral("&Close"), {QStringLiteral("_CLOSE")})
        ->setShortcut(QKeySequence::Close);
    m_file->addSeparator();
    addCommand(*m_file, QStringLiteral("&Save"), {QStringLiteral("_SAVE")})
        ->setShortcut(QKeySequence::Save);
    addCommand(*m_file, QStringLiteral("Save &As..."), {QStringLiteral("_SAVEAS")})
        ->setShortcut(QKeySequence::SaveAs);
    m_file->addSeparator();
    addCommand(*m_file, QStringLiteral("&Quit"), {QStringLiteral("_QUIT")})
        ->setShortcut(QKeySequence::Quit);
}

void MainMenus::buildViewMenu() {
    addCommand(*m_view, QStringLiteral("Zoom &Extents"),
               {QStringLiteral("_ZOOM"), QStringLiteral("E")});
    addCommand(*m_view, QStringLiteral("Zoom &Window"),
               {QStringLiteral("_ZOOM"), QStringLiteral("W")});
}

void MainMenus::updateRecent() {
    m_recent->clear();
    int number = 0;
    for (const std::filesystem::path& drawing : m_recentDrawings.paths()) {
        const QString path = QString::fromStdString(drawing.string());
        // OPEN takes the file typed ahead instead of showing its dialog.
        QAction* action = addCommand(
            *m_recent, QStringLiteral("&%1 %2").arg(++number).arg(QFileInfo(path).fileName()),
            {QStringLiteral("_OPEN"), path});
        action->setStatusTip(path);
        action->setToolTip(path);
    }
    m_recent->setEnabled(!m_recent->isEmpty());
}

void MainMenus::drawingChanged() {
    if (!m_shell.drawing().hasFile()) return;
    const std::filesystem::path path =
        std::filesystem::absolute(m_shell.drawing().document().path());
    if (const FileStatus status = m_recentDrawings.add(path); !status.isOk())
        m_shell.commandLine().print(QStringLiteral("\nRecent drawings not kept: %1")
                                        .arg(QString::fromStdString(status.errorString())));
    updateRecent();
}

void MainMenus::updateModules() {
    for (QMenu* menu : m_modules) {
        m_menuBar.removeAction(menu->menuAction());
        delete menu;
    }
    m_modules.clear();
    const auto* stack = AcRxCast<AcEdCommandStack>(acrxSysRegistry()->at(ACRX_COMMAND_DOCK));
    if (stack == nullptr) return;
    for (const ModuleRecord* module : m_shell.modules().modules()) {
        auto* menu = new QMenu(QString::fromStdString(module->path().stem().string()), &m_menuBar);
        for (const auto& command : stack->commands()) {
            if (!module->contains(reinterpret_cast<const void*>(command.function))) continue;
            const QString global = QString::fromStdWString(command.globalName);
            // The local name stands where a shortcut would: what to type for the same command.
            addCommand(*menu,
                       global + QLatin1Char('\t') + QString::fromStdWString(command.localName),
                       {QLatin1Char('_') + global});
        }
        menu->setEnabled(!menu->isEmpty());
        m_menuBar.addMenu(menu);
        m_modules.push_back(menu);
    }
}
