// The desktop host's editor: the editor functions of the host interface answered by the user at the
// command line and in the active drawing's view. A prompt blocks the command that asked in a nested
// event loop until the user answers, cancels, or a script line or a command's argument answers for
// them. While it waits, a module's modal dialog steps aside, so that a dialog's button can ask for
// a selection or a point as in any CAD program.
#pragma once

#include <QObject>
#include <QString>
#include <QStringList>
#include <deque>
#include <functional>
#include <map>
#include <optional>
#include <vector>

#include "host/api/acededitor.h"
#include "host/desktop/session/selectionfilter.h"
#include "host/desktop/shell/dialogsaside.h"

class CommandLine;
class DrawingSession;
class DrawingSurface;

class DesktopEditor final : public QObject, public AcEdEditor {
    Q_OBJECT
public:
    // Runs a command by name for acedCommandS, its prompts answered from the arguments: RTNORM,
    // RTCAN when it wanted more than it was given, RTREJ for a name no command has.
    using CommandRunner = std::function<int(const QString& name)>;
    // The file dialog: flags 1 for a file to create, 2 for an existing one; RTNORM or RTERROR.
    using FileDialog = std::function<int(const QString& title, const QString& defaultName,
                                         const QString& extension, int flags, QString& path)>;
    using AlertBox = std::function<void(const QString& message)>;

    // Installs itself as the host's editor for its lifetime. It works on a drawing once given one.
    explicit DesktopEditor(CommandLine& commandLine, QObject* parent = nullptr);
    ~DesktopEditor() override;

    // The drawing that prompts, selections and variables work on, and the surface that shows it;
    // the last point and the rubber line belong to the drawing they were given in.
    void setDrawing(DrawingSession& drawing, DrawingSurface& surface);

    void setCommandRunner(CommandRunner runner) { m_runCommand = std::move(runner); }
    // Without a dialog, and whenever FILEDIA is 0 or a script runs, files are asked for on the
    // command line.
    void setFileDialog(FileDialog dialog) { m_fileDialog = std::move(dialog); }
    // Without one, and while a script runs, alerts are printed on the command line.
    void setAlertBox(AlertBox box) { m_alertBox = std::move(box); }

    // The user's input. A line answers the prompt that waits (Enter gives an empty line).
    void submitLine(const QString& line);
    // Esc: the prompt that waits answers RTCAN; a running script stops.
    void cancel();
    // Ends every prompt with RTCAN, and the ones that come, until cancelAll(false).
    void cancelAll(bool cancelling = true);
    void cursorMoved(const AcGePoint3d& point);
    void pointPicked(const AcGePoint3d& point);
    bool isPrompting() const { return !m_waiters.empty(); }
    // While a command runs, input that comes between its prompts waits for the next one.
    void setCommandActive(bool active);
    // Lines typed ahead that no prompt took: the commands that follow.
    QStringList takeTypeAhead();
    // The prompt of the innermost wait, printed again after a transparent command.
    void repeatPrompt();

    // Scripts: lines that answer the command prompt and every prompt until they run out.
    void runScript(QStringList lines);
    bool isScriptRunning() const;
    std::optional<QString> takeScriptLine();
    void stopScript();

    // Prompts of the host's own commands. RTNORM with the answer, RTNONE for an empty answer
    // (when allowed), RTCAN when cancelled.
    int promptText(const QString& prompt, QString& answer);
    int promptReal(const QString& prompt, double& value);
    int promptPoint(const QString& prompt, const AcGePoint3d* base, AcGePoint3d& point);
    // Text, or a click in the view, which answers with `picked` set.
    int promptTextOrPick(const QString& prompt, QString& answer,
                         std::optional<AcGePoint3d>& picked);
    // The opposite corner of a window from `first`, the rectangle shown while the cursor moves.
    int promptCorner(const QString& prompt, const AcGePoint3d& first, AcGePoint3d& corner);
    // Yes or No at the command line; the default answers an empty line, Esc answers Cancel.
    int promptYesNo(const QString& question, bool defaultYes, bool& yes);
    // Whether questions go to the command line rather than to a dialog.
    bool asksOnCommandLine() const;
    void print(const QString& text);

    // AcEdEditor
    int getFileD(const std::wstring& title, const std::wstring& defaultName,
                 const std::wstring& extension, int flags, std::wstring& path) override;
    int alert(const std::wstring& message) override;
    int selectObjects(const wchar_t* mode, const std::vector<resbuf>* filter,
                      std::vector<AcDbObjectId>& selected) override;
    int getVar(const std::wstring& name, resbuf& value) override;
    int setVar(const std::wstring& name, const resbuf& value) override;
    int initGet(int flags, const std::wstring& keywords) override;
    int getPoint(const ads_point* base, const std::wstring& prompt, ads_point& point) override;
    int grRead(int track, int& type, resbuf& result) override;
    int grDraw(const ads_point& from, const ads_point& to, int color, int highlight) override;
    int command(const std::vector<resbuf>& arguments) override;
    void print(const std::wstring& text) override;

signals:
    // A prompt begins to wait for the user (not when queued input answers it). Tests drive the
    // editor with real events from here.
    void inputRequested(const QString& prompt);
    void cursorPositionChanged(double x, double y);

private:
    struct Input {
        enum class Kind { Line, Pick, Cursor, Cancel };
        Kind kind = Kind::Cancel;
        QString text;
        AcGePoint3d point;
    };
    struct Waiter;
    struct Feed {
        std::deque<QString> lines;
        bool exclusive = false;  // a command's arguments: running out cancels
        bool quiet = false;      // CMDECHO 0: neither prompts nor answers are shown
    };

    // The next input, queued or the user's; lines, picks and cancels are echoed after the prompt.
    Input nextInput(bool wantsCursor);
    std::optional<Input> queued();
    Input wait(bool wantsCursor);
    void deliver(const Input& input);
    bool quiet() const;
    void showPrompt(const QString& prompt);
    void echo(const QString& answer);
    int fileOnCommandLine(const QString& defaultName, const QString& extension, int flags,
                          QString& path);
    int pointPrompt(const QString& prompt, const AcGePoint3d* base, int flags, AcGePoint3d& point);
    // The second corner shows the rectangle from `first`: a window when it lies to the right, a
    // crossing to the left, unless `crossing` fixes which.
    int selectCorner(const QString& prompt, const AcGePoint3d* first, std::optional<bool> crossing,
                     AcGePoint3d& corner);
    int selectInteractively(const SelectionFilter& filter, std::vector<AcDbObjectId>& selected);
    void moveRubberLine(const AcGePoint3d* base, const AcGePoint3d& to);
    void clearRubberLine();

    CommandLine& m_commandLine;
    DrawingSurface* m_surface = nullptr;
    DrawingSession* m_drawing = nullptr;
    DialogsAside m_dialogsAside;
    CommandRunner m_runCommand;
    FileDialog m_fileDialog;
    AlertBox m_alertBox;
    std::vector<Waiter*> m_waiters;
    std::deque<Input> m_typeAhead;
    bool m_commandActive = false;
    std::vector<Feed> m_feeds;  // the script's first, a command's arguments on top
    bool m_cancelling = false;
    int m_initGetFlags = 0;
    std::optional<AcGePoint3d> m_lastPoint;
    std::optional<AcGePoint3d> m_lastCursor;
    std::optional<std::pair<AcGePoint3d, AcGePoint3d>> m_rubberLine;
    std::map<std::wstring, short> m_variables;  // the session's: CMDECHO, FILEDIA
    AcEdEditorInstallation m_installation{this};
};
