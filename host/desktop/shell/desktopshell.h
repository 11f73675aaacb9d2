// The desktop host's command processor: the drawing, the editor and the loaded modules, and the
// command line's lines turned into commands: the host's own, the modules' registered ones, and
// system variables; scripts fed one line at a time; transparent commands typed with a leading "'"
// while another command prompts.
#pragma once

#include <QObject>
#include <QString>
#include <QStringList>
#include <deque>
#include <optional>

#include "host/api/acrxregistry.h"
#include "host/desktop/modules/moduleloader.h"
#include "host/desktop/session/drawingsession.h"
#include "host/desktop/shell/desktopeditor.h"

class CommandLine;
class DrawingSurface;
class QWidget;

class DesktopShell final : public QObject {
    Q_OBJECT
public:
    DesktopShell(CommandLine& commandLine, DrawingSurface& surface, QObject* parent = nullptr);
    ~DesktopShell() override;

    DrawingSession& drawing() { return m_drawing; }
    DesktopEditor& editor() { return m_editor; }
    ModuleLoader& modules() { return m_modules; }
    CommandLine& commandLine() { return m_commandLine; }
    DrawingSurface& surface() { return m_surface; }
    // The parent of the shell's own questions (saving changes).
    void setDialogParent(QWidget* parent) { m_dialogParent = parent; }

    // A line entered at the command line: a command when none runs, else the answer to the
    // prompt that waits (or a transparent command).
    void submitLine(const QString& line);
    // Esc.
    void cancel();
    // Runs the command now and returns when it ends: a module's registered command, the host's own,
    // or a system variable's name. RTNORM, RTCAN, RTERROR; RTREJ when no command has the name.
    int runCommand(const QString& name);
    bool isTransparent(const QString& name);
    // Nothing runs, nothing is queued: the command prompt waits.
    bool isIdle() const;
    // A menu's command, as a CAD menu's macro runs: what runs is cancelled first; then the first
    // line runs as if typed, and the others answer its prompts in turn.
    void runMacro(const QStringList& lines);

    // What OPEN, APPLOAD, ARX and SCRIPT do once they have their file; each prints its outcome.
    bool openDrawing(const QString& path);
    bool loadModule(const QString& path);
    bool unloadModule(const QString& name);
    bool startScript(const QString& path);
    // SAVE: under the drawing's name, or asking for one if it has none.
    int saveDrawing();
    int saveDrawingAs();
    // Before the drawing goes: if it holds unsaved work, asks whether to save it. False when the
    // user cancels (or saving fails).
    bool confirmDiscard();
    // QUIT: the window closes once the command has ended.
    void requestQuit();
    bool isQuitting() const { return m_quitting; }
    void drawingReplaced();

signals:
    // The command prompt waits and nothing is queued.
    void idle();
    void commandEnded(const QString& name, int status);
    // The drawing was opened, replaced, saved or changed.
    void drawingChanged();
    // A module was loaded or unloaded.
    void modulesChanged();
    void quitRequested();

private:
    // A line for the command prompt, and the answers a menu gave for its prompts.
    struct TypedLine {
        QString line;
        QStringList answers;
    };

    void scheduleNext();
    void processNext();
    void runLine(const QString& line, bool fromScript);
    void runTransparent(const QString& line);
    int runVariable(const QString& name);
    int runModuleCommand(const QString& name, AcRxFunctionPtr function);
    void showCommandPrompt();
    // A message of the shell's own on a line of its own.
    void report(const QString& message);
    // What a save wrote: the file, its format and its size.
    void reportSaved();

    CommandLine& m_commandLine;
    DrawingSurface& m_surface;
    DrawingSession m_drawing;
    DesktopEditor m_editor;
    // Last, so that modules are unloaded while the editor and the drawing are still there.
    ModuleLoader m_modules;
    QWidget* m_dialogParent = nullptr;
    std::deque<TypedLine> m_typed;
    QString m_lastCommand;
    bool m_busy = false;
    bool m_scheduled = false;
    bool m_quitting = false;
};
