// The desktop editor: prompts, selection, tracking input, variables and host commands.
#include "host/desktop/shell/desktopeditor.h"

#include <QEventLoop>
#include <QFileInfo>
#include <algorithm>
#include <utility>

#include "host/desktop/session/drawingsession.h"
#include "host/desktop/session/inputtext.h"
#include "host/desktop/session/referenceselection.h"
#include "host/desktop/shell/commandline.h"
#include "host/desktop/shell/drawingsurface.h"
#include "text/CaseRules.h"

namespace {

constexpr int kNoNullInput = 1;
constexpr int kTrackCursor = 1;
constexpr int kKeyInput = 2;
constexpr int kPickedPoint = 3;
constexpr int kCursorSample = 5;
constexpr short kReturnKey = 13;
constexpr int kXorInk = -1;
constexpr int kNewFile = 1;
constexpr int kExistingFile = 2;

// The session's own variables and what a new session starts with.
constexpr std::pair<const wchar_t*, short> kSessionVariables[] = {
    {L"CMDECHO", 1},
    {L"FILEDIA", 1},
};

std::optional<short> shortOf(const resbuf& value) {
    if (value.restype == RTSHORT) return value.resval.rint;
    if (value.restype == RTLONG && value.resval.rlong >= -32768 && value.resval.rlong <= 32767)
        return static_cast<short>(value.resval.rlong);
    return std::nullopt;
}

// A command's argument as the line that answers its prompt.
std::optional<QString> argumentLine(const resbuf& argument) {
    switch (argument.restype) {
        case RTSTR:
            return QString::fromStdWString(argument.resval.rstring);
        case RTREAL:
            return QString::fromStdWString(formatReal(argument.resval.rreal));
        case RTSHORT:
            return QString::number(argument.resval.rint);
        case RTLONG:
            return QString::number(argument.resval.rlong);
        case RTPOINT:
        case RT3DPOINT:
            return QString::fromStdWString(formatPoint(argument.resval.rpoint));
        default:
            return std::nullopt;
    }
}

// A prompt shown again after a message starts on a line of its own.
QString onNewLine(const QString& prompt) {
    return prompt.startsWith(QLatin1Char('\n')) ? prompt : QLatin1Char('\n') + prompt;
}

std::optional<AcGePoint3d> typedPoint(const QString& text, const AcGePoint3d* last) {
    return parsePoint(text.toStdWString(), last);
}

}  // namespace

struct DesktopEditor::Waiter {
    bool wantsCursor = false;
    QString prompt;
    std::optional<Input> input;
    QEventLoop loop;
};

DesktopEditor::DesktopEditor(CommandLine& commandLine, QObject* parent)
    : QObject(parent), m_commandLine(commandLine) {
    for (const auto& [name, value] : kSessionVariables) m_variables[name] = value;
}

void DesktopEditor::setDrawing(DrawingSession& drawing, DrawingSurface& surface) {
    if (m_drawing == &drawing && m_surface == &surface) return;
    clearRubberLine();
    m_drawing = &drawing;
    m_surface = &surface;
    m_lastPoint.reset();
}

DesktopEditor::~DesktopEditor() = default;

// Input.

void DesktopEditor::deliver(const Input& input) {
    if (!m_waiters.empty() && !m_waiters.back()->input) {
        Waiter& waiter = *m_waiters.back();
        if (input.kind == Input::Kind::Cursor && !waiter.wantsCursor) return;
        waiter.input = input;
        waiter.loop.quit();
        return;
    }
    // Input that comes before the next prompt waits for it, as typed-ahead input does in a CAD
    // program; the cursor moves on and sends another sample.
    if (input.kind == Input::Kind::Cursor) return;
    if (!m_waiters.empty() || m_commandActive) m_typeAhead.push_back(input);
}

void DesktopEditor::setCommandActive(bool active) {
    m_commandActive = active;
    if (active) return;
    // Picks and cancels meant for a prompt that never came are dropped; lines become commands.
    std::erase_if(m_typeAhead, [](const Input& input) { return input.kind != Input::Kind::Line; });
}

QStringList DesktopEditor::takeTypeAhead() {
    QStringList lines;
    for (const Input& input : m_typeAhead) {
        if (input.kind == Input::Kind::Line) lines.append(input.text);
    }
    m_typeAhead.clear();
    return lines;
}

void DesktopEditor::submitLine(const QString& line) { deliver({Input::Kind::Line, line, {}}); }

void DesktopEditor::cancel() {
    stopScript();
    if (m_waiters.empty()) {
        m_commandLine.echo(QStringLiteral("*Cancel*"));
        return;
    }
    deliver({Input::Kind::Cancel, {}, {}});
}

void DesktopEditor::cancelAll(bool cancelling) {
    m_cancelling = cancelling;
    if (!cancelling) return;
    stopScript();
    m_typeAhead.clear();
    for (Waiter* waiter : m_waiters) {
        if (waiter->input) continue;
        waiter->input = Input{Input::Kind::Cancel, {}, {}};
        waiter->loop.quit();
    }
}

void DesktopEditor::cursorMoved(const AcGePoint3d& point) {
    // A sample that repeats the last position says nothing new (a click reports its place too).
    if (m_lastCursor == point) return;
    m_lastCursor = point;
    emit cursorPositionChanged(point.x, point.y);
    deliver({Input::Kind::Cursor, {}, point});
}

void DesktopEditor::pointPicked(const AcGePoint3d& point) {
    m_lastCursor = point;
    emit cursorPositionChanged(point.x, point.y);
    deliver({Input::Kind::Pick, {}, point});
}

void DesktopEditor::repeatPrompt() {
    if (m_waiters.empty()) return;
    print(QStringLiteral("\n") + m_waiters.back()->prompt);
    emit inputRequested(m_waiters.back()->prompt);
}

void DesktopEditor::runScript(QStringList lines) {
    stopScript();
    Feed script;
    for (const QString& line : lines) script.lines.push_back(line);
    m_feeds.insert(m_feeds.begin(), std::move(script));
}

bool DesktopEditor::isScriptRunning() const {
    return !m_feeds.empty() && !m_feeds.front().exclusive;
}

std::optional<QString> DesktopEditor::takeScriptLine() {
    if (!isScriptRunning()) return std::nullopt;
    Feed& script = m_feeds.front();
    if (script.lines.empty()) {
        m_feeds.erase(m_feeds.begin());
        return std::nullopt;
    }
    QString line = script.lines.front();
    script.lines.pop_front();
    return line;
}

void DesktopEditor::stopScript() {
    if (isScriptRunning()) m_feeds.erase(m_feeds.begin());
}

std::optional<DesktopEditor::Input> DesktopEditor::queued() {
    if (m_cancelling) return Input{Input::Kind::Cancel, {}, {}};
    while (!m_feeds.empty()) {
        Feed& feed = m_feeds.back();
        if (!feed.lines.empty()) {
            Input input{Input::Kind::Line, feed.lines.front(), {}};
            feed.lines.pop_front();
            return input;
        }
        // A command given too few arguments is cancelled rather than left waiting.
        if (feed.exclusive) return Input{Input::Kind::Cancel, {}, {}};
        m_feeds.pop_back();
    }
    return std::nullopt;
}

DesktopEditor::Input DesktopEditor::wait(bool wantsCursor) {
    if (!m_typeAhead.empty()) {
        const Input input = m_typeAhead.front();
        m_typeAhead.pop_front();
        return input;
    }
    Waiter waiter;
    waiter.wantsCursor = wantsCursor;
    waiter.prompt = m_commandLine.openLine();
    m_waiters.push_back(&waiter);
    m_dialogsAside.promptWaits(m_commandLine.window());
    if (m_dialogsAside.anyAside()) m_commandLine.setFocus();
    emit inputRequested(waiter.prompt);
    while (!waiter.input) waiter.loop.exec();
    std::erase(m_waiters, &waiter);
    m_dialogsAside.promptAnswered();
    return *waiter.input;
}

DesktopEditor::Input DesktopEditor::nextInput(bool wantsCursor) {
    std::optional<Input> input = queued();
    if (!input) input = wait(wantsCursor);
    switch (input->kind) {
        case Input::Kind::Line:
            echo(input->text);
            break;
        case Input::Kind::Pick:
            echo(QString());
            break;
        case Input::Kind::Cancel:
            echo(QStringLiteral("*Cancel*"));
            break;
        case Input::Kind::Cursor:
            break;
    }
    return *input;
}

bool DesktopEditor::quiet() const { return !m_feeds.empty() && m_feeds.back().quiet; }

void DesktopEditor::showPrompt(const QString& prompt) {
    if (!quiet()) print(prompt);
}

void DesktopEditor::echo(const QString& answer) {
    if (!quiet()) m_commandLine.echo(answer);
}

void DesktopEditor::print(const QString& text) { m_commandLine.print(text); }

void DesktopEditor::print(const std::wstring& text) { print(QString::fromStdWString(text)); }

bool DesktopEditor::asksOnCommandLine() const {
    const auto fileDia = m_variables.find(L"FILEDIA");
    return !m_feeds.empty() || (fileDia != m_variables.end() && fileDia->second == 0);
}

// Prompts of the host's own commands.

int DesktopEditor::promptText(const QString& prompt, QString& answer) {
    showPrompt(prompt);
    for (;;) {
        const Input input = nextInput(false);
        switch (input.kind) {
            case Input::Kind::Cancel:
                return RTCAN;
            case Input::Kind::Line:
                answer = input.text.trimmed();
                return answer.isEmpty() ? RTNONE : RTNORM;
            case Input::Kind::Pick:
            case Input::Kind::Cursor:
                break;
        }
        showPrompt(onNewLine(prompt));
    }
}

int DesktopEditor::promptTextOrPick(const QString& prompt, QString& answer,
                                    std::optional<AcGePoint3d>& picked) {
    picked.reset();
    showPrompt(prompt);
    for (;;) {
        const Input input = nextInput(false);
        switch (input.kind) {
            case Input::Kind::Cancel:
                return RTCAN;
            case Input::Kind::Line:
                answer = input.text.trimmed();
                return answer.isEmpty() ? RTNONE : RTNORM;
            case Input::Kind::Pick:
                picked = input.point;
                m_lastPoint = input.point;
                return RTNORM;
            case Input::Kind::Cursor:
                break;
        }
    }
}

int DesktopEditor::promptCorner(const QString& prompt, const AcGePoint3d& first,
                                AcGePoint3d& corner) {
    return selectCorner(prompt, &first, false, corner);
}

int DesktopEditor::promptReal(const QString& prompt, double& value) {
    for (;;) {
        QString text;
        const int status = promptText(prompt, text);
        if (status != RTNORM) return status;
        if (const auto number = parseReal(text.toStdWString())) {
            value = *number;
            return RTNORM;
        }
        print(QStringLiteral("\nRequires numeric value."));
    }
}

int DesktopEditor::promptYesNo(const QString& question, bool defaultYes, bool& yes) {
    const QString prompt = question + (defaultYes ? QStringLiteral(" [Yes/No] <Yes>: ")
                                                  : QStringLiteral(" [Yes/No] <No>: "));
    for (;;) {
        QString text;
        const int status = promptText(prompt, text);
        if (status == RTCAN) return RTCAN;
        const QString answer = text.toUpper();
        if (status == RTNONE) {
            yes = defaultYes;
            return RTNORM;
        }
        if (answer == QLatin1String("Y") || answer == QLatin1String("YES")) {
            yes = true;
            return RTNORM;
        }
        if (answer == QLatin1String("N") || answer == QLatin1String("NO")) {
            yes = false;
            return RTNORM;
        }
        print(QStringLiteral("\nInvalid option keyword."));
    }
}

int DesktopEditor::promptPoint(const QString& prompt, const AcGePoint3d* base, AcGePoint3d& point) {
    return pointPrompt(prompt, base, 0, point);
}

void DesktopEditor::moveRubberLine(const AcGePoint3d* base, const AcGePoint3d& to) {
    if (base == nullptr) return;
    clearRubberLine();
    m_rubberLine = std::make_pair(*base, to);
    m_surface->drawVector(*base, to, kXorInk, false);
}

void DesktopEditor::clearRubberLine() {
    if (!m_rubberLine) return;
    m_surface->drawVector(m_rubberLine->first, m_rubberLine->second, kXorInk, false);
    m_rubberLine.reset();
}

int DesktopEditor::pointPrompt(const QString& prompt, const AcGePoint3d* base, int flags,
                               AcGePoint3d& point) {
    showPrompt(prompt);
    for (;;) {
        const Input input = nextInput(base != nullptr);
        switch (input.kind) {
            case Input::Kind::Cursor:
                moveRubberLine(base, input.point);
                continue;
            case Input::Kind::Cancel:
                clearRubberLine();
                return RTCAN;
            case Input::Kind::Pick:
                clearRubberLine();
                point = input.point;
                m_lastPoint = point;
                return RTNORM;
            case Input::Kind::Line:
                break;
        }
        if (input.text.trimmed().isEmpty()) {
            if ((flags & kNoNullInput) == 0) {
                clearRubberLine();
                return RTNONE;
            }
            print(QStringLiteral("\nPoint or option keyword required."));
        } else if (const auto typed = typedPoint(
                       input.text, base ? base : (m_lastPoint ? &*m_lastPoint : nullptr))) {
            clearRubberLine();
            point = *typed;
            m_lastPoint = point;
            return RTNORM;
        } else {
            print(QStringLiteral("\nInvalid point."));
        }
        showPrompt(onNewLine(prompt));
    }
}

// The editor functions.

int DesktopEditor::initGet(int flags, const std::wstring&) {
    m_initGetFlags = flags;
    return RTNORM;
}

int DesktopEditor::getPoint(const ads_point* base, const std::wstring& prompt, ads_point& point) {
    const int flags = std::exchange(m_initGetFlags, 0);
    AcGePoint3d picked;
    const int status = pointPrompt(QString::fromStdWString(prompt), base, flags, picked);
    if (status == RTNORM) point = picked;
    return status;
}

int DesktopEditor::grRead(int track, int& type, resbuf& result) {
    const Input input = nextInput((track & kTrackCursor) != 0);
    switch (input.kind) {
        case Input::Kind::Cancel:
            return RTCAN;
        case Input::Kind::Cursor:
            type = kCursorSample;
            result = resbuf::pointValue(input.point);
            return RTNORM;
        case Input::Kind::Pick:
            type = kPickedPoint;
            result = resbuf::pointValue(input.point);
            return RTNORM;
        case Input::Kind::Line:
            break;
    }
    // Typed coordinates count as a pick; Enter is the Return key; other text its first key.
    if (const auto point = typedPoint(input.text, m_lastPoint ? &*m_lastPoint : nullptr)) {
        type = kPickedPoint;
        result = resbuf::pointValue(*point);
        return RTNORM;
    }
    type = kKeyInput;
    const QString text = input.text.trimmed();
    result = resbuf::shortValue(text.isEmpty() ? kReturnKey
                                               : static_cast<short>(text.front().unicode()));
    return RTNORM;
}

int DesktopEditor::grDraw(const ads_point& from, const ads_point& to, int color, int highlight) {
    m_surface->drawVector(from, to, color, highlight != 0);
    return RTNORM;
}

int DesktopEditor::getVar(const std::wstring& name, resbuf& value) {
    if (const auto it = m_variables.find(MakeUpper(name)); it != m_variables.end()) {
        value = resbuf::shortValue(it->second);
        return RTNORM;
    }
    if (m_drawing == nullptr) return RTERROR;
    return m_drawing->document().getVar(name, value);
}

int DesktopEditor::setVar(const std::wstring& name, const resbuf& value) {
    if (const auto it = m_variables.find(MakeUpper(name)); it != m_variables.end()) {
        const auto number = shortOf(value);
        if (!number) return RTERROR;
        it->second = *number;
        return RTNORM;
    }
    if (m_drawing == nullptr) return RTERROR;
    return m_drawing->document().setVar(name, value);
}

int DesktopEditor::command(const std::vector<resbuf>& arguments) {
    if (arguments.empty() || arguments.front().restype != RTSTR || !m_runCommand) return RTREJ;
    Feed feed;
    feed.exclusive = true;
    resbuf echoSetting;
    feed.quiet = getVar(L"CMDECHO", echoSetting) == RTNORM && echoSetting.resval.rint == 0;
    for (std::size_t i = 1; i < arguments.size(); ++i) {
        const auto line = argumentLine(arguments[i]);
        if (!line) return RTREJ;
        feed.lines.push_back(*line);
    }
    const QString name = QString::fromStdWString(arguments.front().resval.rstring);
    m_feeds.push_back(std::move(feed));
    if (!quiet()) print(QStringLiteral("\n") + name);
    const int status = m_runCommand(name);
    // Commands nested in this one have taken their own arguments off again; ours is on top.
    const auto ours =
        std::find_if(m_feeds.rbegin(), m_feeds.rend(), [](const Feed& f) { return f.exclusive; });
    if (ours != m_feeds.rend()) m_feeds.erase(std::next(ours).base());
    return status;
}

int DesktopEditor::alert(const std::wstring& message) {
    const QString text = QString::fromStdWString(message);
    // While a script or a command's arguments answer, no one is there to close a box.
    if (m_alertBox && m_feeds.empty()) {
        m_alertBox(text);
    } else {
        print(onNewLine(text) + QLatin1Char('\n'));
    }
    return RTNORM;
}

int DesktopEditor::getFileD(const std::wstring& title, const std::wstring& defaultName,
                            const std::wstring& extension, int flags, std::wstring& path) {
    const QString qTitle = QString::fromStdWString(title);
    const QString qDefault = QString::fromStdWString(defaultName);
    const QString qExtension = QString::fromStdWString(extension);
    QString chosen;
    // A file name typed ahead (a menu's recent drawing, say) answers without the dialog.
    const bool lineAhead = !m_typeAhead.empty() && m_typeAhead.front().kind == Input::Kind::Line;
    const int status = m_fileDialog && !asksOnCommandLine() && !lineAhead
                           ? m_fileDialog(qTitle, qDefault, qExtension, flags, chosen)
                           : fileOnCommandLine(qDefault, qExtension, flags, chosen);
    if (status == RTNORM) path = chosen.toStdWString();
    return status == RTNORM ? RTNORM : RTERROR;
}

int DesktopEditor::fileOnCommandLine(const QString& defaultName, const QString& extension,
                                     int flags, QString& path) {
    const QString prompt = defaultName.isEmpty()
                               ? QStringLiteral("\nEnter file name: ")
                               : QStringLiteral("\nEnter file name <%1>: ").arg(defaultName);
    QString text;
    const int status = promptText(prompt, text);
    if (status == RTCAN || (status == RTNONE && defaultName.isEmpty())) return RTERROR;
    if (status == RTNONE) text = defaultName;
    if (text.size() >= 2 && text.startsWith(QLatin1Char('"')) && text.endsWith(QLatin1Char('"')))
        text = text.mid(1, text.size() - 2);
    // "~" asks for the dialog, as CAD programs allow at a file prompt.
    if (text == QLatin1String("~") && m_fileDialog)
        return m_fileDialog(QString(), defaultName, extension, flags, path);
    if (!extension.isEmpty() && QFileInfo(text).suffix().isEmpty())
        text += QLatin1Char('.') + extension;
    const QFileInfo file(text);
    if ((flags & kExistingFile) != 0 && !file.isFile()) {
        print(QStringLiteral("\nCannot find \"%1\".").arg(text));
        return RTERROR;
    }
    if ((flags & kNewFile) != 0 && file.exists()) {
        bool replace = false;
        if (promptYesNo(QStringLiteral("\n\"%1\" already exists. Replace it?").arg(file.fileName()),
                        false, replace) != RTNORM ||
            !replace)
            return RTERROR;
    }
    path = file.absoluteFilePath();
    return RTNORM;
}

// Selection.

int DesktopEditor::selectObjects(const wchar_t* mode, const std::vector<resbuf>* filter,
                                 std::vector<AcDbObjectId>& selected) {
    const SelectionFilterResult made = makeSelectionFilter(filter);
    if (!made.filter) {
        print(QStringLiteral("\n") + QString::fromStdWString(made.error));
        return RTERROR;
    }
    QString how = mode ? QString::fromWCharArray(mode).toUpper() : QString();
    if (how.startsWith(QLatin1Char('_'))) how.remove(0, 1);
    if (how == QLatin1String("X")) {
        selected =
            applyReferenceTests(m_drawing->document(), m_surface->all(*made.filter), *made.filter);
        return selected.empty() ? RTERROR : RTNORM;
    }
    if (!how.isEmpty()) {
        print(QStringLiteral("\nselection mode \"%1\" is not supported").arg(how));
        return RTERROR;
    }
    return selectInteractively(*made.filter, selected);
}

int DesktopEditor::selectCorner(const QString& prompt, const AcGePoint3d* first,
                                std::optional<bool> crossing, AcGePoint3d& corner) {
    showPrompt(prompt);
    for (;;) {
        const Input input = nextInput(first != nullptr);
        switch (input.kind) {
            case Input::Kind::Cursor:
                m_surface->showSelectionRectangle(*first, input.point,
                                                  crossing.value_or(input.point.x < first->x));
                continue;
            case Input::Kind::Cancel:
                m_surface->hideSelectionRectangle();
                return RTCAN;
            case Input::Kind::Pick:
                m_surface->hideSelectionRectangle();
                corner = input.point;
                return RTNORM;
            case Input::Kind::Line:
                break;
        }
        if (const auto typed = typedPoint(input.text, first)) {
            m_surface->hideSelectionRectangle();
            corner = *typed;
            return RTNORM;
        }
        print(QStringLiteral("\nInvalid point."));
        showPrompt(onNewLine(prompt));
    }
}

int DesktopEditor::selectInteractively(const SelectionFilter& filter,
                                       std::vector<AcDbObjectId>& selected) {
    const DxfDocument& document = m_drawing->document();
    std::vector<AcDbObjectId> chosen;
    auto add = [&](std::vector<AcDbObjectId> found) {
        found = applyReferenceTests(document, std::move(found), filter);
        const std::size_t count = found.size();
        for (const AcDbObjectId id : found) {
            if (std::find(chosen.begin(), chosen.end(), id) == chosen.end()) chosen.push_back(id);
        }
        m_surface->setHighlighted(chosen);
        print(QStringLiteral("\n%1 found").arg(count));
    };
    // A pick on an entity takes it; a pick on nothing starts a window or crossing there.
    auto pickOrWindow = [&](const AcGePoint3d& at) {
        if (const auto id = m_surface->pick(at, filter);
            id && !applyReferenceTests(document, {*id}, filter).empty()) {
            add({*id});
            return RTNORM;
        }
        AcGePoint3d other;
        const int status =
            selectCorner(QStringLiteral("\nSpecify opposite corner: "), &at, std::nullopt, other);
        if (status != RTNORM) return status;
        add(other.x >= at.x ? m_surface->window(at, other, filter)
                            : m_surface->crossing(at, other, filter));
        return RTNORM;
    };
    auto explicitWindow = [&](bool crossing) {
        AcGePoint3d first;
        AcGePoint3d second;
        int status =
            selectCorner(QStringLiteral("\nSpecify first corner: "), nullptr, crossing, first);
        if (status == RTNORM)
            status = selectCorner(QStringLiteral("\nSpecify opposite corner: "), &first, crossing,
                                  second);
        if (status != RTNORM) return status;
        add(crossing ? m_surface->crossing(first, second, filter)
                     : m_surface->window(first, second, filter));
        return RTNORM;
    };
    auto finish = [&](int status) {
        m_surface->setHighlighted({});
        if (status == RTCAN) return RTCAN;
        selected = chosen;
        return chosen.empty() ? RTERROR : RTNORM;
    };

    for (;;) {
        showPrompt(QStringLiteral("\nSelect objects: "));
        const Input input = nextInput(false);
        int status = RTNORM;
        switch (input.kind) {
            case Input::Kind::Cancel:
                return finish(RTCAN);
            case Input::Kind::Cursor:
                continue;
            case Input::Kind::Pick:
                status = pickOrWindow(input.point);
                break;
            case Input::Kind::Line: {
                const QString text = input.text.trimmed().toUpper();
                if (text.isEmpty()) return finish(RTNORM);
                if (text == QLatin1String("W") || text == QLatin1String("WINDOW")) {
                    status = explicitWindow(false);
                } else if (text == QLatin1String("C") || text == QLatin1String("CROSSING")) {
                    status = explicitWindow(true);
                } else if (const auto point = typedPoint(text, nullptr)) {
                    status = pickOrWindow(*point);
                } else {
                    print(QStringLiteral(
                        "\n*Invalid selection*\nExpects a point or Window/Crossing"));
                }
                break;
            }
        }
        if (status == RTCAN) return finish(RTCAN);
    }
}
