// The main window's layout and what ties its widgets to the shell.
#include "host/desktop/shell/mainwindow.h"

#include <QCloseEvent>
#include <QFileInfo>
#include <QFontDatabase>
#include <QLabel>
#include <QMenuBar>
#include <QSignalBlocker>
#include <QSplitter>
#include <QStatusBar>
#include <QTabBar>
#include <QTabWidget>
#include <QTimer>

#include "host/desktop/services/qthostdialogs.h"
#include "host/desktop/services/qtwindowservices.h"
#include "host/desktop/shell/commandline.h"
#include "host/desktop/shell/desktopshell.h"
#include "host/desktop/shell/mainmenus.h"
#include "host/desktop/shell/viewsurface.h"
#include "host/desktop/view/drawingview.h"

namespace {

QString coordinates(double x, double y) {
    return QStringLiteral("%1, %2").arg(x, 0, 'f', 4).arg(y, 0, 'f', 4);
}

}  // namespace

MainWindow::MainWindow(const std::filesystem::path& recentDrawingsFile, QWidget* parent)
    : QMainWindow(parent),
      m_tabs(new QTabWidget),
      m_commandLine(new CommandLine),
      m_cursorPosition(new QLabel),
      m_recentDrawings(recentDrawingsFile) {
    m_tabs->setDocumentMode(true);
    m_tabs->setTabsClosable(true);
    m_tabs->setFocusPolicy(Qt::NoFocus);
    m_tabs->tabBar()->setFocusPolicy(Qt::NoFocus);
    auto* splitter = new QSplitter(Qt::Vertical, this);
    splitter->addWidget(m_tabs);
    splitter->addWidget(m_commandLine);
    splitter->setStretchFactor(0, 1);
    splitter->setStretchFactor(1, 0);
    splitter->setChildrenCollapsible(false);
    setCentralWidget(splitter);
    const int lineHeight = m_commandLine->fontMetrics().lineSpacing();
    splitter->setSizes({600, 8 * lineHeight});

    m_cursorPosition->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    m_cursorPosition->setText(coordinates(0.0, 0.0));
    statusBar()->addPermanentWidget(m_cursorPosition);
    resize(1200, 800);

    m_windowServices = std::make_unique<QtWindowServices>(this);
    m_shell = std::make_unique<DesktopShell>(
        *m_commandLine, [this](DrawingSession& drawing) { return addDrawingTab(drawing); });
    m_shell->setDialogParent(this);
    DesktopShell& shell = *m_shell;
    // The menus act on the shell; the widgets under the menu bar may change around them.
    m_menus = new MainMenus(*menuBar(), shell, m_recentDrawings, this);
    shell.editor().setFileDialog([this](const QString& title, const QString& defaultName,
                                        const QString& extension, int flags, QString& path) {
        std::wstring chosen;
        const int status = runFileDialog(this, title.toStdWString(), defaultName.toStdWString(),
                                         extension.toStdWString(), flags, chosen);
        path = QString::fromStdWString(chosen);
        return status;
    });
    shell.editor().setAlertBox(
        [this](const QString& message) { showAlertBox(this, message.toStdWString()); });
    connect(m_commandLine, &CommandLine::submitted, &shell, &DesktopShell::submitLine);
    connect(m_commandLine, &CommandLine::cancelled, &shell, &DesktopShell::cancel);
    connect(&shell.editor(), &DesktopEditor::cursorPositionChanged, this,
            [this](double x, double y) { m_cursorPosition->setText(coordinates(x, y)); });
    connect(m_tabs, &QTabWidget::currentChanged, this, &MainWindow::tabChosen);
    // Closing a tab is CLOSE on its drawing, with the question about its changes.
    connect(m_tabs, &QTabWidget::tabCloseRequested, this, [this](int index) {
        if (m_shell->activateDrawing(static_cast<std::size_t>(index)))
            m_shell->runMacro({QStringLiteral("_CLOSE")});
    });
    connect(&shell, &DesktopShell::drawingChanged, this, &MainWindow::updateTitles);
    connect(&shell, &DesktopShell::quitRequested, this, [this] {
        m_closeConfirmed = true;
        close();
    });
    updateTitles();
    m_commandLine->setFocus();
}

MainWindow::~MainWindow() = default;

// Every surface the shell holds was made here, by addDrawingTab().
ViewSurface& MainWindow::surface() { return static_cast<ViewSurface&>(m_shell->surface()); }

DrawingView& MainWindow::view() { return surface().view(); }

std::unique_ptr<DrawingSurface> MainWindow::addDrawingTab(DrawingSession& drawing) {
    auto* view = new DrawingView;
    // Keys typed over the drawing go to the command line, as in a CAD program.
    view->setFocusProxy(&m_commandLine->input());
    {
        // The shell makes the drawing active itself once its surface exists.
        const QSignalBlocker quiet(m_tabs);
        m_tabs->addTab(view, QString::fromStdWString(drawing.drawingName()));
    }
    auto surface = std::make_unique<ViewSurface>(view);
    surface->setDocument(&drawing.document());
    connect(view, &DrawingView::cursorMoved, this, [this](QPointF p) {
        m_shell->editor().cursorMoved({p.x(), p.y(), 0.0});
    });
    connect(view, &DrawingView::pointClicked, this,
            [this](QPointF p, Qt::MouseButton button, Qt::KeyboardModifiers) {
                if (button == Qt::LeftButton) {
                    m_shell->editor().pointPicked({p.x(), p.y(), 0.0});
                } else if (button == Qt::RightButton && m_shell->editor().isPrompting()) {
                    // The right button is Enter while a prompt waits.
                    m_shell->submitLine(QString());
                }
            });
    return surface;
}

void MainWindow::tabChosen(int index) {
    // A tab going with its drawing moves the current one: the shell chooses the next drawing.
    if (index < 0 || m_shell == nullptr ||
        m_tabs->count() != static_cast<int>(m_shell->drawings().count()))
        return;
    // While a command runs the drawing stays where it is: the tab goes back.
    if (!m_shell->activateDrawing(static_cast<std::size_t>(index)))
        QTimer::singleShot(0, this, &MainWindow::updateTitles);
}

void MainWindow::updateTitles() {
    const OpenDrawings& drawings = m_shell->drawings();
    const QSignalBlocker quiet(m_tabs);
    for (std::size_t i = 0; i < drawings.count() && int(i) < m_tabs->count(); ++i) {
        const DrawingSession& drawing = drawings.at(i);
        const QString name = QString::fromStdWString(drawing.drawingName());
        m_tabs->setTabText(int(i), drawing.isModified() ? name + QLatin1Char('*') : name);
        m_tabs->setTabToolTip(
            int(i), drawing.hasFile() ? QString::fromStdString(drawing.document().path().string())
                                      : QString());
    }
    m_tabs->setCurrentIndex(int(drawings.activeIndex()));
    setWindowTitle(QStringLiteral("%1[*] - Tarnwick CAD")
                       .arg(QString::fromStdWString(m_shell->drawing().drawingName())));
    setWindowModified(m_shell->drawing().isModified());
}

void MainWindow::closeEvent(QCloseEvent* event) {
    if (m_shell->editor().isPrompting() && !m_shell->isQuitting()) {
        // A command is waiting for input: end it first, the window stays.
        m_shell->editor().cancelAll();
        event->ignore();
        return;
    }
    m_shell->editor().stopScript();
    if (!m_closeConfirmed && !m_shell->confirmDiscardAll()) {
        event->ignore();
        return;
    }
    event->accept();
}
