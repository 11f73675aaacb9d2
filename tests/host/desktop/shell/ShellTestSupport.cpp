// Real events for the shell's tests.
#include "tests/host/desktop/shell/ShellTestSupport.h"

#include <QApplication>
#include <QClipboard>
#include <QLineEdit>
#include <QPushButton>
#include <QScreen>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>

namespace {

constexpr int kIdleTimeoutMs = 20000;

}  // namespace

QString qpath(const std::filesystem::path& file) { return QString::fromStdString(file.string()); }

DialogStep::DialogStep(const char* className, std::function<void(QWidget&)> action)
    : m_className(className), m_action(std::move(action)) {
    m_timer.setInterval(5);
    QObject::connect(&m_timer, &QTimer::timeout, [this] { poll(); });
    m_timer.start();
}

void DialogStep::poll() {
    QWidget* dialog = QApplication::activeModalWidget();
    if (dialog == nullptr || !dialog->isVisible() || !dialog->inherits(m_className)) return;
    m_timer.stop();
    m_fired = true;
    m_action(*dialog);
}

void enterFileName(QWidget& dialog, const std::filesystem::path& file) {
    auto* name = dialog.findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
    ASSERT_NE(name, nullptr);
    name->setFocus();
    QApplication::clipboard()->setText(qpath(file));
    QTest::keyClick(name, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClick(name, Qt::Key_V, Qt::ControlModifier);
    // The dialog goes to the file's folder and keeps the name.
    ASSERT_TRUE(qpath(file).endsWith(name->text())) << name->text().toStdString();
    QTest::keyClick(name, Qt::Key_Return);
}

QPushButton* button(QWidget& dialog, const QString& text) {
    for (QPushButton* candidate : dialog.findChildren<QPushButton*>()) {
        if (candidate->text() == text) return candidate;
    }
    return nullptr;
}

void clickButton(QWidget& dialog, const QString& text) {
    QPushButton* target = button(dialog, text);
    ASSERT_NE(target, nullptr) << text.toStdString();
    QTest::mouseClick(target, Qt::LeftButton);
}

void screenshot(MainWindow& window, const char* name, bool withPopups) {
    const QString folder = qEnvironmentVariable("TARNWICK_SCREENSHOTS");
    if (folder.isEmpty()) return;
    QTest::qWait(200);
    const QRect frame = window.frameGeometry();
    const QPixmap pixels = withPopups ? window.screen()->grabWindow(0, frame.x(), frame.y(),
                                                                    frame.width(), frame.height())
                                      : window.grab();
    pixels.save(folder + QLatin1Char('/') + QLatin1String(name));
}

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
