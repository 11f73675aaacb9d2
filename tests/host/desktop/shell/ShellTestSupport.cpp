// Real events for the shell's tests.
#include "tests/host/desktop/shell/ShellTestSupport.h"

#include <QSignalSpy>
#include <QTest>
#include <QTimer>

namespace {

constexpr int kIdleTimeoutMs = 20000;

}  // namespace

QPoint widgetPoint(MainWindow& window, const AcGePoint3d& drawingPoint) {
    return window.view().toScreen({drawingPoint.x, drawingPoint.y}).toPoint();
}

AcGePoint3d onPixel(MainWindow& window, const AcGePoint3d& drawingPoint) {
    const ScenePoint p = window.view().toWorld(QPointF(widgetPoint(window, drawingPoint)));
    return {p.x, p.y, 0.0};
}

std::size_t vectorCount(MainWindow& window) { return window.view().vectors().vectors().size(); }

void typeLine(MainWindow& window, const QString& text) {
    CommandInput& input = window.commandLine().input();
    QTest::keyClicks(&input, text);
    QTest::keyClick(&input, Qt::Key_Return);
}

void pressEscape(MainWindow& window) { pressKey(window, Qt::Key_Escape); }

void pressKey(MainWindow& window, Qt::Key key) {
    QTest::keyClick(&window.commandLine().input(), key);
}

void moveMouse(MainWindow& window, const AcGePoint3d& drawingPoint) {
    QTest::mouseMove(&window.view(), widgetPoint(window, drawingPoint));
}

void clickAt(MainWindow& window, const AcGePoint3d& drawingPoint) {
    QTest::mouseClick(&window.view(), Qt::LeftButton, {}, widgetPoint(window, drawingPoint));
}

QAction* menuItem(QMenu& menu, const QString& text) {
    for (QAction* action : menu.actions()) {
        if (action->text().section(QLatin1Char('\t'), 0, 0) == text) return action;
    }
    return nullptr;
}

QStringList menuItemTexts(QMenu& menu) {
    QStringList texts;
    for (const QAction* action : menu.actions()) texts.append(action->text());
    return texts;
}

PromptDriver::PromptDriver(MainWindow& window) : m_window(window) {
    // Queued: the step runs from inside the prompt's own event loop, as a user's input would.
    connect(&window.shell().editor(), &DesktopEditor::inputRequested, this, &PromptDriver::next,
            Qt::QueuedConnection);
}

PromptDriver& PromptDriver::then(std::function<void()> step) {
    m_steps.push_back(std::move(step));
    return *this;
}

PromptDriver& PromptDriver::type(const QString& text) {
    return then([this, text] { typeLine(m_window, text); });
}

PromptDriver& PromptDriver::escape() {
    return then([this] { pressEscape(m_window); });
}

PromptDriver& PromptDriver::click(const AcGePoint3d& point) {
    return then([this, point] { clickAt(m_window, point); });
}

void PromptDriver::next(const QString& prompt) {
    m_prompts.append(prompt);
    if (m_steps.empty()) return;
    auto step = std::move(m_steps.front());
    m_steps.pop_front();
    step();
}

bool runUntilIdle(MainWindow& window, const std::function<void()>& start) {
    QSignalSpy idle(&window.shell(), &DesktopShell::idle);
    start();
    return idle.wait(kIdleTimeoutMs);
}

bool runCommandLine(MainWindow& window, const QString& line) {
    return runUntilIdle(window, [&] { typeLine(window, line); });
}

std::unique_ptr<MainWindow> makeWindow() {
    auto window = std::make_unique<MainWindow>();
    window->resize(800, 600);
    window->show();
    window->shell().editor().setVar(L"FILEDIA", resbuf::shortValue(0));
    return window;
}
