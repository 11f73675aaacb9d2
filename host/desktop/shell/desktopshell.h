// The desktop host's command processor: the open drawings (each with the surface that shows it, one
// of them active), the editor and the loaded modules, and the command line's lines turned into
// commands on the active drawing: the host's own, the modules' registered ones, and system
// variables; scripts fed one line at a time; transparent commands typed with a leading "'" while
// another command prompts.
#pragma once

#include <QObject>
#include <QString>
#include <QStringList>
#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <optional>

#include "host/api/acrxregistry.h"
#include "host/desktop/modules/moduleloader.h"
#include "host/desktop/session/opendrawings.h"
#include "host/desktop/shell/desktopeditor.h"
#include "host/desktop/shell/drawingsurface.h"

class CommandLine;
class DrawingSurface;
class QWidget;

class DesktopShell final : public QObject {
    Q_OBJECT
public:
    // The surface that shows a drawing the shell opens (the window's view of it); the shell keeps
    // it while the drawing is open and lets it go before the drawing.
    using SurfaceFactory = std::function<std::unique_ptr<DrawingSurface>(DrawingSession& drawing)>;

    // Starts with a new drawing.
    DesktopShell(CommandLine& commandLine, SurfaceFactory surfaces, QObject* parent = nullptr);
    ~DesktopShell() override;

    // The active drawing and its surface: what the commands and the command line work on.
    DrawingSession& drawing() { return m_drawings.active(); }
    DrawingSurface& surface() { return *m_surfaces.at(&m_drawings.active()); }
    const OpenDrawings& drawings() const { return m_drawings; }
    DesktopEditor& editor() { return m_editor; }
    ModuleLoader& modules() { return m_modules; }
    CommandLine& commandLine() { return m_commandLine; }
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

    // Makes an open drawing the active one; refused (false) while a command runs or prompts.
    bool activateDrawing(std::size_t index);
    // NEW: a drawing of its own, active.
    void newDrawing();
    // What OPEN, APPLOAD, ARX and SCRIPT do once they have their file; each prints its outcome.
    // A drawing opens beside the others (an untouched new drawing that was the only one gives
    // way); one already open becomes active. One whose structure is damaged is read with repairs
    // if the user agrees, each repair printed.
    bool openDrawing(const QString& path);
    bool loadModule(const QString& path);
    bool unloadModule(const QString& name);
    bool startScript(const QString& path);
    // SAVE: under the drawing's name, or asking for one if it has none.
    int saveDrawing();
    int saveDrawingAs();
    // Before the active drawing goes: if it holds unsaved work, asks whether to save it. False
    // when the user cancels (or saving fails).
    bool confirmDiscard();
    // The same for every open drawing, each made active while it is asked about.
    bool confirmDiscardAll();
    // CLOSE: the active drawing goes once confirmDiscard() agrees; the last one leaves a new one.
    bool closeDrawing();
    // QUIT: the window closes once the command has ended.
    void requestQuit();
    bool isQuitting() const { return m_quitting; }

signals:
    // The command prompt waits and nothing is queued.
    void idle();
    void commandEnded(const QString& name, int status);
    // A drawing was opened, closed, saved or changed, or another one became active.
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
    // The drawing just added to the open ones gets its surface; the active one becomes the
    // editor's.
    void drawingAdded(DrawingSession& drawing);
    void useActiveDrawing();
    void closeWithoutAsking(DrawingSession& drawing);
    // Asks whether to read a damaged drawing with repairs: on the command line or in a box.
    bool askToRepair(const QString& fault);
    // A message of the shell's own on a line of its own.
    void report(const QString& message);
    // What a save wrote: the file, its format and its size.
    void reportSaved();

    CommandLine& m_commandLine;
    SurfaceFactory m_surfaceFactory;
    DesktopEditor m_editor;
    OpenDrawings m_drawings;
    // After the drawings, so that each surface goes before the drawing it shows.
    std::map<const DrawingSession*, std::unique_ptr<DrawingSurface>> m_surfaces;
    // Last, so that modules are unloaded while the editor and the drawing are still there.
    ModuleLoader m_modules;
    QWidget* m_dialogParent = nullptr;
    std::deque<TypedLine> m_typed;
    QString m_lastCommand;
    bool m_busy = false;
    bool m_scheduled = false;
    bool m_quitting = false;
};
