// The main window's layout and what ties its widgets to the shell.
#include "host/desktop/shell/mainwindow.h"

#include <QCloseEvent>
#include <QFileInfo>
#include <QFontDatabase>
#include <QLabel>
#include <QMenuBar>
#include <QSplitter>
#include <QStatusBar>
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
      m_view(new DrawingView),
      m_surface(std::make_unique<ViewSurface>(*m_view)),
      m_commandLine(new CommandLine),
      m_cursorPosition(new QLabel),
      m_recentDrawings(recentDrawingsFile) {
    auto* splitter = new QSplitter(Qt::Vertical, this);
    splitter->addWidget(m_view);
    splitter->addWidget(m_commandLine);
    splitter->setStretchFactor(0, 1);
    splitter->setStretchFactor(1, 0);
    splitter->setChildrenCollapsible(false);
    setCentralWidget(splitter);
    const int lineHeight = m_commandLine->fontMetrics().lineSpacing();
    splitter->setSizes({600, 8 * lineHeight});
    // Keys typed over the drawing go to the command line, as in a CAD program.
    m_view->setFocusProxy(&m_commandLine->input());

    m_cursorPosition->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    m_cursorPosition->setText(coordinates(0.0, 0.0));
    statusBar()->addPermanentWidget(m_cursorPosition);
    resize(1200, 800);

    m_windowServices = std::make_unique<QtWindowServices>(this);
    m_shell = std::make_unique<DesktopShell>(*m_commandLine, *m_surface);
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
    connect(m_view, &DrawingView::cursorMoved, &shell, [&shell](QPointF p) {
        shell.editor().cursorMoved({p.x(), p.y(), 0.0});
    });
    connect(m_view, &DrawingView::pointClicked, &shell,
            [&shell](QPointF p, Qt::MouseButton button, Qt::KeyboardModifiers) {
                if (button == Qt::LeftButton) {
                    shell.editor().pointPicked({p.x(), p.y(), 0.0});
                } else if (button == Qt::RightButton && shell.editor().isPrompting()) {
                    // The right button is Enter while a prompt waits.
                    shell.submitLine(QString());
                }
            });
    connect(&shell.editor(), &DesktopEditor::cursorPositionChanged, this,
            [this](double x, double y) { m_cursorPosition->setText(coordinates(x, y)); });
    connect(&shell, &DesktopShell::drawingChanged, this, &MainWindow::updateTitle);
    connect(&shell, &DesktopShell::quitRequested, this, [this] {
        m_closeConfirmed = true;
        close();
    });
    updateTitle();
    m_commandLine->setFocus();
}

MainWindow::~MainWindow() = default;

void MainWindow::updateTitle() {
    const QString name = QString::fromStdWString(m_shell->drawing().drawingName());
    setWindowTitle(QStringLiteral("%1[*] - Tarnwick CAD").arg(name));
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
    if (!m_closeConfirmed && !m_shell->confirmDiscard()) {
        event->ignore();
        return;
    }
    event->accept();
}
