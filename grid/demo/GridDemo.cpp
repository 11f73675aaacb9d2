// griddemo: the grid control in a window, a parts list to sort, tick and pick from. With
// --screenshot FILE it saves a picture of the window instead of waiting for the user.
#include <QApplication>
#include <QCommandLineParser>
#include <QKeyEvent>
#include <QTimer>
#include <QVBoxLayout>
#include <QWidget>

#include "grid/CUGGrid.h"
#include "grid/demo/DemoGrid.h"

int main(int argc, char** argv) {
    QApplication app(argc, argv);
    QApplication::setApplicationName("griddemo");
    QCommandLineParser parser;
    parser.setApplicationDescription("The Tarnwick grid control with 1,000 rows.");
    parser.addHelpOption();
    const QCommandLineOption screenshot("screenshot", "Save a picture of the window to <file> and quit.",
                                        "file");
    parser.addOption(screenshot);
    parser.process(app);

    QWidget window;
    window.setWindowTitle("Tarnwick grid control");
    auto* layout = new QVBoxLayout(&window);
    layout->setContentsMargins(10, 10, 10, 10);
    DemoGrid grid;
    grid.CreateGrid(WS_VISIBLE | WS_BORDER, QRect(0, 0, 690, 420), &window, 1);
    layout->addWidget(&grid);
    window.resize(710, 440);
    window.show();

    if (parser.isSet(screenshot)) {
        const QString file = parser.value(screenshot);
        // The picture shows a sorted column, a ticked and an empty box, and an open drop list.
        grid.SortColumn(4);
        grid.GotoCell(2, 3);
        QTimer::singleShot(200, &window, [&] {
            QKeyEvent open(QEvent::KeyPress, Qt::Key_Down, Qt::ControlModifier);
            QApplication::sendEvent(grid.GetGridWindow(), &open);
        });
        QTimer::singleShot(500, &window, [&] {
            const bool saved = window.grab().save(file);
            QApplication::exit(saved ? 0 : 1);
        });
    }
    return QApplication::exec();
}
