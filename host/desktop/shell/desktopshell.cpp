// Turning the command line's lines into commands, and what the commands share.
#include "host/desktop/shell/desktopshell.h"

#include <QFile>
#include <QFileInfo>
#include <QMessageBox>
#include <QTimer>
#include <exception>

#include "host/api/acrxregistry.h"
#include "host/desktop/shell/builtincommands.h"
#include "host/desktop/shell/commandline.h"
#include "host/desktop/shell/drawingsurface.h"

namespace {

constexpr int kNewFile = 1;

AcEdCommandStack* commandStack() {
    return AcRxCast<AcEdCommandStack>(acrxSysRegistry()->at(ACRX_COMMAND_DOCK));
}

// A command name as typed: "_" asks for the English name and "." for the host's own command,
// both of which are the only names here.
QString bareName(QString name, bool& hostOnly) {
    name = name.trimmed();
    hostOnly = false;
    while (name.startsWith(QLatin1Char('_')) || name.startsWith(QLatin1Char('.'))) {
        if (name.startsWith(QLatin1Char('.'))) hostOnly = true;
        name.remove(0, 1);
    }
    return name;
}

// A script's lines; a blank line is Enter. Line ends may be CR LF.
std::optional<QStringList> readScript(const QString& path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) return std::nullopt;
    QStringList lines = QString::fromUtf8(file.readAll()).split(QLatin1Char('\n'));
    if (!lines.isEmpty() && lines.back().isEmpty()) lines.removeLast();
    for (QString& line : lines) {
        if (line.endsWith(QLatin1Char('\r'))) line.chop(1);
    }
    return lines;
}

}  // namespace

DesktopShell::DesktopShell(CommandLine& commandLine, SurfaceFactory surfaces, QObject* parent)
    : QObject(parent),
      m_commandLine(commandLine),
      m_surfaceFactory(std::move(surfaces)),
      m_editor(commandLine),
      m_modules([this](const std::string& warning) { report(QString::fromStdString(warning)); }) {
    m_editor.setCommandRunner([this](const QString& name) { return runCommand(name); });
    drawingAdded(m_drawings.active());
    showCommandPrompt();
}

DesktopShell::~DesktopShell() = default;

void DesktopShell::showCommandPrompt() { m_commandLine.print(QStringLiteral("\nCommand: ")); }

void DesktopShell::report(const QString& message) {
    m_commandLine.print(QStringLiteral("\n") + message);
    // Outside a command, the command prompt comes back under the message.
    if (!m_busy) showCommandPrompt();
}

bool DesktopShell::isIdle() const {
    return !m_busy && m_typed.empty() && !m_editor.isScriptRunning();
}

void DesktopShell::submitLine(const QString& line) {
    if (m_editor.isPrompting() || m_busy) {
        if (m_editor.isPrompting() && line.trimmed().startsWith(QLatin1Char('\''))) {
            // Run from the event loop, so that the prompt's wait stays below it.
            QTimer::singleShot(0, this, [this, line] { runTransparent(line); });
            return;
        }
        m_editor.submitLine(line);
        return;
    }
    m_typed.push_back({line, {}});
    scheduleNext();
}

void DesktopShell::runMacro(const QStringList& lines) {
    if (lines.isEmpty()) return;
    m_typed.clear();
    if (m_busy || m_editor.isPrompting()) m_editor.cancelAll();
    m_typed.push_back({lines.front(), lines.mid(1)});
    scheduleNext();
}

void DesktopShell::cancel() {
    m_typed.clear();
    const bool prompting = m_editor.isPrompting();
    m_editor.cancel();
    if (!m_busy && !prompting) showCommandPrompt();
}

void DesktopShell::scheduleNext() {
    if (m_scheduled) return;
    m_scheduled = true;
    // Each command starts from the event loop: the key press that typed it has been handled, and
    // the window is painted between the lines of a script.
    QTimer::singleShot(0, this, &DesktopShell::processNext);
}

void DesktopShell::processNext() {
    m_scheduled = false;
    if (m_busy || m_quitting) return;
    std::optional<QString> line;
    QStringList answers;
    bool fromScript = false;
    if (!m_typed.empty()) {
        line = m_typed.front().line;
        answers = m_typed.front().answers;
        m_typed.pop_front();
    } else if ((line = m_editor.takeScriptLine())) {
        fromScript = true;
    }
    if (!line) {
        emit idle();
        return;
    }
    m_commandLine.echo(*line);
    m_editor.cancelAll(false);
    m_busy = true;
    m_editor.setCommandActive(true);
    // Queued as typed ahead: the command's first prompts take them.
    for (const QString& answer : answers) m_editor.submitLine(answer);
    runLine(*line, fromScript);
    m_editor.setCommandActive(false);
    m_busy = false;
    m_editor.cancelAll(false);
    const QStringList ahead = m_editor.takeTypeAhead();
    // A menu's answers that no prompt took were meant for this command only.
    if (answers.isEmpty()) {
        for (const QString& typed : ahead) m_typed.push_back({typed, {}});
    }
    emit drawingChanged();
    if (m_quitting) return;
    showCommandPrompt();
    scheduleNext();
}

void DesktopShell::runLine(const QString& line, bool fromScript) {
    QString name = line.trimmed();
    if (name.startsWith(QLatin1Char('\''))) name.remove(0, 1);
    if (name.isEmpty()) {
        // Enter repeats the last command; in a script a blank line at the command prompt is idle.
        if (fromScript || m_lastCommand.isEmpty()) return;
        name = m_lastCommand;
    }
    m_lastCommand = name;
    const int status = runCommand(name);
    emit commandEnded(name, status);
}

int DesktopShell::runCommand(const QString& typed) {
    bool hostOnly = false;
    const QString name = bareName(typed, hostOnly);
    if (name.isEmpty()) return RTREJ;
    if (AcEdCommandStack* stack = commandStack(); stack && !hostOnly) {
        if (const AcEdCommandStack::Command* command = stack->lookup(name.toStdWString())) {
            // Copied: the command may unload its own module.
            const AcRxFunctionPtr function = command->function;
            return runModuleCommand(name.toUpper(), function);
        }
    }
    if (const BuiltinCommand* builtin = findBuiltinCommand(name)) return builtin->run(*this);
    resbuf value;
    if (m_editor.getVar(name.toStdWString(), value) == RTNORM) return runVariable(name.toUpper());
    m_commandLine.print(QStringLiteral("\nUnknown command \"%1\".").arg(name.toUpper()));
    return RTREJ;
}

int DesktopShell::runModuleCommand(const QString& name, AcRxFunctionPtr function) {
    // What the command changes is one step of UNDO of the drawing it ran in; the view reads again
    // what it changed besides the references it inserted.
    DrawingSession& ranIn = drawing();
    ranIn.beginModuleCommand(name.toStdWString());
    int status = RTNORM;
    try {
        function();
    } catch (const std::exception& e) {
        m_commandLine.print(QStringLiteral("\n%1 ended with an error: %2")
                                .arg(name, QString::fromLocal8Bit(e.what())));
        status = RTERROR;
    } catch (...) {
        m_commandLine.print(QStringLiteral("\n%1 ended with an error").arg(name));
        status = RTERROR;
    }
    if (ranIn.endModuleCommand()) m_surfaces.at(&ranIn)->reload();
    return status;
}

bool DesktopShell::isTransparent(const QString& typed) {
    bool hostOnly = false;
    const QString name = bareName(typed, hostOnly);
    if (AcEdCommandStack* stack = commandStack(); stack && !hostOnly) {
        if (const auto* command = stack->lookup(name.toStdWString()))
            return (command->flags & ACRX_CMD_TRANSPARENT) != 0;
    }
    if (const BuiltinCommand* builtin = findBuiltinCommand(name)) return builtin->transparent;
    resbuf value;
    return m_editor.getVar(name.toStdWString(), value) == RTNORM;
}

void DesktopShell::runTransparent(const QString& line) {
    if (!m_editor.isPrompting()) {
        // The prompt ended meanwhile: the line is a command of its own.
        m_typed.push_back({line, {}});
        scheduleNext();
        return;
    }
    m_commandLine.echo(line.trimmed());
    const QString name = line.trimmed().mid(1);
    if (isTransparent(name)) {
        runCommand(name);
    } else {
        m_commandLine.print(
            QStringLiteral("\n** That command may not be invoked transparently **"));
    }
    m_editor.repeatPrompt();
}

int DesktopShell::runVariable(const QString& name) {
    resbuf value;
    m_editor.getVar(name.toStdWString(), value);
    if (value.restype == RTSTR) {
        m_commandLine.print(QStringLiteral("\n%1 = \"%2\" (read only)")
                                .arg(name, QString::fromStdWString(value.resval.rstring)));
        return RTNORM;
    }
    double number = 0.0;
    const int status = m_editor.promptReal(
        QStringLiteral("\nEnter new value for %1 <%2>: ").arg(name).arg(value.resval.rint), number);
    if (status != RTNORM) return status == RTNONE ? RTNORM : status;
    if (number != static_cast<short>(number) ||
        m_editor.setVar(name.toStdWString(), resbuf::shortValue(static_cast<short>(number))) !=
            RTNORM) {
        m_commandLine.print(QStringLiteral("\nInvalid value for %1.").arg(name));
        return RTERROR;
    }
    return RTNORM;
}

void DesktopShell::drawingAdded(DrawingSession& drawing) {
    m_surfaces[&drawing] = m_surfaceFactory(drawing);
    useActiveDrawing();
}

void DesktopShell::useActiveDrawing() {
    m_editor.setDrawing(drawing(), surface());
    emit drawingChanged();
}

bool DesktopShell::activateDrawing(std::size_t index) {
    if (index >= m_drawings.count()) return false;
    if (index == m_drawings.activeIndex()) return true;
    if (m_busy || m_editor.isPrompting()) return false;
    m_drawings.activate(index);
    useActiveDrawing();
    return true;
}

void DesktopShell::newDrawing() { drawingAdded(m_drawings.addNew()); }

bool DesktopShell::askToRepair(const QString& fault) {
    const QString question = QStringLiteral("Read it with repairs?");
    bool repair = false;
    if (m_editor.asksOnCommandLine()) {
        report(fault);
        return m_editor.promptYesNo(QStringLiteral("\n") + question, true, repair) == RTNORM &&
               repair;
    }
    const auto answer = QMessageBox::question(
        m_dialogParent, QStringLiteral("Tarnwick CAD"),
        fault + QStringLiteral("\n\nThe drawing's structure is damaged. ") + question,
        QMessageBox::Yes | QMessageBox::No, QMessageBox::Yes);
    return answer == QMessageBox::Yes;
}

bool DesktopShell::openDrawing(const QString& path) {
    const std::filesystem::path file = path.toStdString();
    const qsizetype printed = m_commandLine.history().size();
    if (const auto open = m_drawings.indexOfFile(file)) {
        activateDrawing(*open);
        return true;
    }
    // An untouched new drawing that is all there is gives way, as in a CAD program.
    DrawingSession* replaced =
        m_drawings.count() == 1 && drawing().isPristine() ? &drawing() : nullptr;
    auto read = m_drawings.open(file);
    if (!read.isOk() && read.error().kind() == DxfErrorKind::Structure) {
        // Asked on the command line, the fault stands above the question already.
        const bool shown = m_editor.asksOnCommandLine();
        if (!askToRepair(QString::fromStdString(read.errorString()))) {
            if (!shown) report(QString::fromStdString(read.errorString()));
            return false;
        }
        read = m_drawings.open(file, DxfReading::Recover);
    }
    if (!read.isOk()) {
        report(QString::fromStdString(read.errorString()));
        return false;
    }
    DrawingSession& opened = *read.value();
    for (const std::string& repair : opened.document().repairs())
        report(QString::fromStdString(repair));
    drawingAdded(opened);
    if (replaced != nullptr) closeWithoutAsking(*replaced);
    // What a module says of the drawing as it opens stands on its own; outside a command the
    // prompt comes back under it.
    if (!m_busy && m_commandLine.history().size() != printed) showCommandPrompt();
    return true;
}

void DesktopShell::closeWithoutAsking(DrawingSession& closing) {
    // There is always a drawing to work on: the last one leaves a new one behind.
    if (m_drawings.count() == 1) drawingAdded(m_drawings.addNew());
    auto index = m_drawings.indexOf(closing);
    if (!index) return;
    if (*index == m_drawings.activeIndex()) {
        // The editor moves to the next drawing before this one's surface goes.
        m_drawings.activate(*index + 1 < m_drawings.count() ? *index + 1 : *index - 1);
        useActiveDrawing();
    }
    m_surfaces.erase(&closing);
    m_drawings.close(*index);
    emit drawingChanged();
}

bool DesktopShell::closeDrawing() {
    if (!confirmDiscard()) return false;
    closeWithoutAsking(drawing());
    return true;
}

int DesktopShell::saveDrawing() {
    if (!drawing().hasFile()) return saveDrawingAs();
    const DxfStatus status = drawing().save();
    if (!status.isOk()) {
        report(QString::fromStdString(status.errorString()));
        return RTERROR;
    }
    reportSaved();
    emit drawingChanged();
    return RTNORM;
}

int DesktopShell::saveDrawingAs() {
    std::wstring path;
    if (m_editor.getFileD(L"Save Drawing As", drawing().drawingName(), L"dxf", kNewFile, path) !=
        RTNORM)
        return RTCAN;
    if (const auto refusal = drawing().refusalToSaveAs(path)) {
        m_editor.alert(*refusal);
        return RTERROR;
    }
    const DxfStatus status = drawing().saveAs(path);
    if (!status.isOk()) {
        report(QString::fromStdString(status.errorString()));
        return RTERROR;
    }
    reportSaved();
    emit drawingChanged();
    return RTNORM;
}

void DesktopShell::reportSaved() {
    const DxfDocument& document = drawing().document();
    const QFileInfo file(QString::fromStdString(document.path().string()));
    QString format = document.isBinary() ? QStringLiteral("binary DXF") : QStringLiteral("DXF");
    if (!document.version().empty())
        format += QLatin1Char(' ') + QString::fromLatin1(document.version().data(),
                                                         qsizetype(document.version().size()));
    report(QStringLiteral("Saved %1 (%2, %3 bytes).")
               .arg(file.absoluteFilePath(), format)
               .arg(file.size()));
}

bool DesktopShell::confirmDiscard() {
    if (!drawing().isModified()) return true;
    const QString question =
        QStringLiteral("Save changes to %1?").arg(QString::fromStdWString(drawing().drawingName()));
    bool save = false;
    if (m_editor.asksOnCommandLine()) {
        if (m_editor.promptYesNo(QStringLiteral("\n") + question, true, save) != RTNORM)
            return false;
    } else {
        const auto answer = QMessageBox::question(
            m_dialogParent, QStringLiteral("Tarnwick CAD"), question,
            QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel, QMessageBox::Yes);
        if (answer == QMessageBox::Cancel) return false;
        save = answer == QMessageBox::Yes;
    }
    return !save || saveDrawing() == RTNORM;
}

bool DesktopShell::confirmDiscardAll() {
    for (std::size_t i = 0; i < m_drawings.count(); ++i) {
        if (!m_drawings.at(i).isModified()) continue;
        // Shown while asked about, so that the user sees which drawing the question means.
        m_drawings.activate(i);
        useActiveDrawing();
        if (!confirmDiscard()) return false;
    }
    return true;
}

void DesktopShell::requestQuit() {
    m_quitting = true;
    m_typed.clear();
    m_editor.stopScript();
    QTimer::singleShot(0, this, &DesktopShell::quitRequested);
}

bool DesktopShell::loadModule(const QString& path) {
    const ModuleStatus status = m_modules.load(path.toStdString());
    report(status.isOk() ? QStringLiteral("%1 successfully loaded.").arg(QFileInfo(path).fileName())
                         : QString::fromStdString(status.errorString()));
    if (status.isOk()) emit modulesChanged();
    return status.isOk();
}

bool DesktopShell::unloadModule(const QString& name) {
    const ModuleStatus status = m_modules.unload(name.toStdString());
    report(status.isOk() ? QStringLiteral("%1 successfully unloaded.").arg(name)
                         : QString::fromStdString(status.errorString()));
    if (status.isOk()) emit modulesChanged();
    return status.isOk();
}

bool DesktopShell::startScript(const QString& path) {
    const auto lines = readScript(path);
    if (!lines) {
        report(QStringLiteral("Cannot read the script \"%1\".").arg(path));
        return false;
    }
    m_editor.runScript(*lines);
    scheduleNext();
    return true;
}
