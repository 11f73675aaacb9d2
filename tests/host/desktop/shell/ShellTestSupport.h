// What the shell's tests share: a main window, and a driver that answers each prompt with real key
// and mouse events at the moment the prompt starts to wait.
#pragma once

#include <gtest/gtest.h>

#include <QAction>
#include <QMenu>
#include <QObject>
#include <QPointF>
#include <QString>
#include <QTimer>
#include <deque>
#include <filesystem>
#include <functional>
#include <memory>

#include "host/desktop/shell/commandline.h"
#include "host/desktop/shell/desktopshell.h"
#include "host/desktop/shell/mainmenus.h"
#include "host/desktop/shell/mainwindow.h"
#include "host/desktop/shell/viewsurface.h"
#include "host/desktop/view/drawingview.h"

class QPushButton;

inline const std::filesystem::path kSourceDir = TARNWICK_SOURCE_DIR;
inline const std::filesystem::path kTestModules = TARNWICK_TEST_MODULES;
inline const std::filesystem::path kFloorPlan = kSourceDir / "examples" / "floorplan.dxf";

// The view's pixel that shows a drawing point, and the drawing point that pixel stands for.
QPoint widgetPoint(MainWindow& window, const AcGePoint3d& drawingPoint);
AcGePoint3d onPixel(MainWindow& window, const AcGePoint3d& drawingPoint);
// The editor's vectors the view shows now.
std::size_t vectorCount(MainWindow& window);

// Real events into the window's widgets.
void typeLine(MainWindow& window, const QString& text);  // the text, then Enter
void pressEscape(MainWindow& window);
void pressKey(MainWindow& window, Qt::Key key);
void moveMouse(MainWindow& window, const AcGePoint3d& drawingPoint);
void clickAt(MainWindow& window, const AcGePoint3d& drawingPoint);

// A menu's item by its text without the local name that follows a tab; null when it has none.
QAction* menuItem(QMenu& menu, const QString& text);
// Its items' texts, local names included.
QStringList menuItemTexts(QMenu& menu);

QString qpath(const std::filesystem::path& file);

// Runs the action once on the next modal dialog of the type, as soon as it shows.
class DialogStep final {
public:
    DialogStep(const char* className, std::function<void(QWidget&)> action);
    bool fired() const { return m_fired; }

private:
    void poll();

    const char* m_className;
    std::function<void(QWidget&)> m_action;
    QTimer m_timer;
    bool m_fired = false;
};

// The file's path pasted into the host's file dialog, then Enter. (Typed a key at a time, the
// dialog completes the name as soon as it is unique, and the rest of the keys would add to it.)
void enterFileName(QWidget& dialog, const std::filesystem::path& file);
// A push button of a dialog by its text, "&" included; null when there is none.
QPushButton* button(QWidget& dialog, const QString& text);
void clickButton(QWidget& dialog, const QString& text);

// Screenshots for the README when TARNWICK_SCREENSHOTS names a folder: the window's own pixels, or
// the screen where it lies, open menus and dialogs included.
void screenshot(MainWindow& window, const char* name, bool withPopups = false);

// Plays one step each time the editor starts to wait for the user.
class PromptDriver final : public QObject {
    Q_OBJECT
public:
    explicit PromptDriver(MainWindow& window);
    PromptDriver& then(std::function<void()> step);
    PromptDriver& type(const QString& text);
    PromptDriver& escape();
    PromptDriver& click(const AcGePoint3d& point);
    bool finished() const { return m_steps.empty(); }
    const QStringList& prompts() const { return m_prompts; }

private:
    void next(const QString& prompt);

    MainWindow& m_window;
    std::deque<std::function<void()>> m_steps;
    QStringList m_prompts;
};

// Starts something and returns once the shell is idle again (false when it is not within the
// time limit).
bool runUntilIdle(MainWindow& window, const std::function<void()>& start);
// Types a command at the command prompt and waits until the shell is idle again.
bool runCommandLine(MainWindow& window, const QString& line);

// A main window with FILEDIA 0, so that files are asked for on the command line.
std::unique_ptr<MainWindow> makeWindow();

// Such a window and its prompt driver; what a test gives the driver must all be used.
class ShellTest : public ::testing::Test {
protected:
    void SetUp() override {
        m_window = makeWindow();
        m_driver = std::make_unique<PromptDriver>(*m_window);
    }
    void TearDown() override { EXPECT_TRUE(m_driver->finished()) << "input left over"; }

    QString history() const { return m_window->commandLine().history(); }
    DesktopShell& shell() { return m_window->shell(); }
    void open(const std::filesystem::path& drawing) {
        ASSERT_TRUE(shell().openDrawing(QString::fromStdString(drawing.string())));
    }
    void openFloorPlan() { open(kFloorPlan); }

    std::unique_ptr<MainWindow> m_window;
    std::unique_ptr<PromptDriver> m_driver;
};
