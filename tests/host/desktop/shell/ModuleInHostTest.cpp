// Tarnwick.arx in the desktop host as a CAD program runs a module, with real key and mouse events:
// "Attach New" hands the drawing to the selection and gets the dialog back; several drawings, each
// counted and given its table, closed with a question about their changes, their records dropped
// with them; the dialogs' Alt keys pressed from the grid.
#include <gtest/gtest.h>

#include <QApplication>
#include <QFile>
#include <QFileDialog>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QTabBar>
#include <QTabWidget>
#include <QTest>
#include <QTimer>
#include <algorithm>
#include <filesystem>
#include <functional>
#include <memory>

#include "host/api/acapdocmanager.h"
#include "tests/host/desktop/shell/ModuleHostTest.h"
#include "tests/host/dxf/DxfTestSupport.h"

namespace {

// The plan's whole extent, and a window over the open office's desks and chairs only.
constexpr AcGePoint3d kPlanFrom{-1, -1, 0};
constexpr AcGePoint3d kPlanTo{21, 13, 0};
constexpr AcGePoint3d kDesksFrom{1, 2, 0};
constexpr AcGePoint3d kDesksTo{11, 9, 0};

// At "Select objects:": a click on nothing, a click at the other corner (a window, to the right),
// and Enter at the next "Select objects:".
void selectWindow(MainWindow& window, PromptDriver& driver, AcGePoint3d from, AcGePoint3d to,
                  std::function<void()> beforeEnter = {}) {
    driver.then([&window, from] { clickAt(window, onPixel(window, from)); })
        .then([&window, to] { clickAt(window, onPixel(window, to)); })
        .then([&window, beforeEnter] {
            if (beforeEnter) beforeEnter();
            typeLine(window, QString());
        });
}

// The report's lines with each run of blanks made one.
QStringList reportLines(const std::string& path) {
    QFile file(QString::fromStdString(path));
    if (!file.open(QIODevice::ReadOnly)) return {};
    QStringList lines;
    for (const QString& line : QString::fromUtf8(file.readAll()).split(QLatin1Char('\n')))
        lines << line.simplified();
    return lines;
}

// The offscreen platform gives the activation back to the main window when a nested dialog
// closes, where a window system gives it back to the dialog under it; the keys need it there.
bool activate(QWidget& dialog) {
    dialog.activateWindow();
    return QTest::qWaitForWindowActive(&dialog);
}

QWidget* gridCells(QWidget& dialog) {
    for (QWidget* child : dialog.findChildren<QWidget*>()) {
        if (QByteArray(child->metaObject()->className()) == "CUGGrid") return child;
    }
    return nullptr;
}

// The block names of a drawing's model-space references that are price tables.
std::vector<std::wstring> tables(const DrawingSession& drawing) {
    std::vector<std::wstring> names;
    for (const DxfReference& reference : drawing.document().blockReferences(DxfSpace::Model)) {
        if (reference.blockName.starts_with(L"QTB")) names.emplace_back(reference.blockName);
    }
    return names;
}

// While it lives, answers every message box with No (noting its text) and closes every file
// dialog with Esc (noting its title).
class ModalAnswers final {
public:
    ModalAnswers(QStringList& questions, QStringList& fileTitles)
        : m_questions(questions), m_fileTitles(fileTitles) {
        m_timer.setInterval(5);
        QObject::connect(&m_timer, &QTimer::timeout, [this] { poll(); });
        m_timer.start();
    }

private:
    void poll() {
        QWidget* modal = QApplication::activeModalWidget();
        if (modal == nullptr || !modal->isVisible()) return;
        if (auto* box = qobject_cast<QMessageBox*>(modal)) {
            m_questions << box->text();
            QTest::mouseClick(box->button(QMessageBox::No), Qt::LeftButton);
        } else if (auto* files = qobject_cast<QFileDialog*>(modal)) {
            m_fileTitles << files->windowTitle();
            QTest::keyClick(files, Qt::Key_Escape);
        }
    }

    QStringList& m_questions;
    QStringList& m_fileTitles;
    QTimer m_timer;
};

using AttachNewInHost = ModuleHostTest;

TEST_F(AttachNewInHost, AWindowSelectedWhileTheDialogStandsAsideRecountsTheBill) {
    ASSERT_TRUE(shell().openDrawing(qpath(m_folder.path("floorplan.dxf"))));
    const std::string report = m_folder.path("desks.txt");
    const DialogStep files("QFileDialog", [&](QWidget& dialog) {
        enterFileName(dialog, m_folder.path("prices.prc"));
    });
    std::unique_ptr<DialogStep> bill, attachFiles, reportFiles;
    QWidget* billDialog = nullptr;
    bool asideWhileSelecting = false;
    selectWindow(*m_window, *m_driver, kPlanFrom, kPlanTo, [&] {
        bill = std::make_unique<DialogStep>("QDialog", [&](QWidget& dialog) {
            billDialog = &dialog;
            attachFiles = std::make_unique<DialogStep>("QFileDialog", [&](QWidget& open) {
                enterFileName(open, m_folder.path("prices.prc"));
            });
            // Returns once the selection is made and the bill counted again.
            clickButton(dialog, QStringLiteral("&Attach New"));
            ASSERT_TRUE(QTest::qWaitFor([&dialog] { return dialog.isVisible(); }));
            reportFiles = std::make_unique<DialogStep>(
                "QFileDialog", [&](QWidget& save) { enterFileName(save, report); });
            clickButton(dialog, QStringLiteral("&Save to file"));
            clickButton(dialog, QStringLiteral("&Close"));
        });
    });
    m_driver->then([&] {
        asideWhileSelecting = billDialog != nullptr && !billDialog->isVisible() &&
                              QApplication::activeModalWidget() == nullptr;
        clickAt(*m_window, onPixel(*m_window, kDesksFrom));
    });
    m_driver->then([&] { clickAt(*m_window, onPixel(*m_window, kDesksTo)); }).type(QString());

    ASSERT_TRUE(runCommandLine(*m_window, QStringLiteral("RZBOMC")));
    ASSERT_TRUE(files.fired() && bill && bill->fired() && attachFiles && attachFiles->fired());
    ASSERT_TRUE(reportFiles && reportFiles->fired());
    EXPECT_TRUE(asideWhileSelecting);
    EXPECT_TRUE(history().contains(QStringLiteral(
        "45 found\nSelect objects: \nSelect objects: \nSpecify opposite corner: \n12 found\n"
        "Select objects: \nCommand: ")))
        << history().toStdString();
    EXPECT_FALSE(shell().editor().isPrompting());
    // The bill the report shows is the second count's: the six desks and six chairs only.
    const QStringList lines = reportLines(report);
    EXPECT_TRUE(lines.contains(QStringLiteral("desk 380.00 6 Office desk 160 x 80 2280.00")))
        << lines.join(QLatin1Char('\n')).toStdString();
    EXPECT_TRUE(lines.contains(QStringLiteral("chair 145.00 6 Swivel chair 870.00")));
    EXPECT_TRUE(lines.contains(QStringLiteral("door 450.00 0 Interior door 90 cm 0.00")));
    EXPECT_TRUE(lines.contains(QStringLiteral("Summary: 3150.00")));
}

TEST_F(AttachNewInHost, EscAtTheSelectionCancelsThatInputOnlyAndLeavesNoPromptBehind) {
    ASSERT_TRUE(shell().openDrawing(qpath(m_folder.path("floorplan.dxf"))));
    const DialogStep files("QFileDialog", [&](QWidget& dialog) {
        enterFileName(dialog, m_folder.path("prices.prc"));
    });
    std::unique_ptr<DialogStep> bill, attachFiles;
    bool backAfterEsc = false;
    selectWindow(*m_window, *m_driver, kPlanFrom, kPlanTo, [&] {
        bill = std::make_unique<DialogStep>("QDialog", [&](QWidget& dialog) {
            attachFiles = std::make_unique<DialogStep>("QFileDialog", [&](QWidget& open) {
                enterFileName(open, m_folder.path("prices.prc"));
            });
            clickButton(dialog, QStringLiteral("&Attach New"));
            backAfterEsc = QTest::qWaitFor([&dialog] { return dialog.isVisible(); });
            clickButton(dialog, QStringLiteral("&Close"));
        });
    });
    m_driver->escape();
    ASSERT_TRUE(runCommandLine(*m_window, QStringLiteral("RZBOMC")));
    ASSERT_TRUE(bill && bill->fired() && attachFiles && attachFiles->fired());
    EXPECT_TRUE(backAfterEsc);
    EXPECT_TRUE(history().endsWith(QStringLiteral("Select objects: *Cancel*\nCommand: ")))
        << history().toStdString();
    // The dialog ended through "Close": its settings were written.
    EXPECT_TRUE(std::filesystem::exists(m_folder.path("tarnwick2.set")));
    // A window dragged now is no one's selection.
    const QString before = history();
    clickAt(*m_window, onPixel(*m_window, kPlanFrom));
    clickAt(*m_window, onPixel(*m_window, kPlanTo));
    QTest::qWait(50);
    EXPECT_FALSE(shell().editor().isPrompting());
    EXPECT_TRUE(shell().isIdle());
    EXPECT_EQ(history(), before);
}

using SeveralDrawings = ModuleHostTest;

TEST_F(SeveralDrawings, EachCalculationCountsAndPlacesItsTableInTheDrawingItRanIn) {
    std::filesystem::copy_file(kFloorPlan, m_folder.path("annex.dxf"));
    ASSERT_TRUE(shell().openDrawing(qpath(m_folder.path("floorplan.dxf"))));
    ASSERT_TRUE(shell().openDrawing(qpath(m_folder.path("annex.dxf"))));
    QTabWidget& tabs = m_window->drawingTabs();
    ASSERT_EQ(tabs.count(), 2);
    EXPECT_EQ(tabs.tabText(0), QStringLiteral("floorplan.dxf"));
    EXPECT_EQ(tabs.tabText(1), QStringLiteral("annex.dxf"));
    EXPECT_EQ(shell().drawing().drawingName(), L"annex.dxf");

    // One calculation: the list, a window, "Insert", the corner, RETURN for scale 1.
    const auto calculate = [&](AcGePoint3d from, AcGePoint3d to, const char* screenshotName) {
        const DialogStep files("QFileDialog", [&](QWidget& dialog) {
            enterFileName(dialog, m_folder.path("prices.prc"));
        });
        std::unique_ptr<DialogStep> bill;
        selectWindow(*m_window, *m_driver, from, to, [&] {
            bill = std::make_unique<DialogStep>("QDialog", [&](QWidget& dialog) {
                if (screenshotName != nullptr) screenshot(*m_window, screenshotName, true);
                clickButton(dialog, QStringLiteral("&Insert"));
            });
        });
        m_driver->click(onPixel(*m_window, {0, -1.5, 0})).type(QString());
        ASSERT_TRUE(runCommandLine(*m_window, QStringLiteral("RZBOMC")));
        ASSERT_TRUE(files.fired() && bill && bill->fired());
    };
    calculate(kPlanFrom, kPlanTo, nullptr);
    EXPECT_TRUE(history().contains(QStringLiteral("45 found")));
    // The other tab, clicked: its drawing becomes the one the command line works on.
    QTabBar& bar = *tabs.tabBar();
    QTest::mouseClick(&bar, Qt::LeftButton, {}, bar.tabRect(0).center());
    ASSERT_EQ(shell().drawing().drawingName(), L"floorplan.dxf");
    calculate(kDesksFrom, kDesksTo, "desktop-two-drawings.png");
    EXPECT_TRUE(history().contains(QStringLiteral("12 found")));

    const OpenDrawings& drawings = shell().drawings();
    ASSERT_EQ(drawings.count(), 2u);
    EXPECT_EQ(tables(drawings.at(0)), std::vector<std::wstring>{L"QTB0001"});
    EXPECT_EQ(tables(drawings.at(1)), std::vector<std::wstring>{L"QTB0001"});
    EXPECT_TRUE(drawings.at(0).isModified() && drawings.at(1).isModified());
    EXPECT_EQ(tabs.tabText(0), QStringLiteral("floorplan.dxf*"));
    EXPECT_EQ(m_window->windowTitle(), QStringLiteral("floorplan.dxf[*] - Tarnwick CAD"));
    EXPECT_TRUE(m_window->isWindowModified());
    // Each table holds its own drawing's count: the annex's has the doors, the plan's has none.
    const auto rowsOf = [](const DrawingSession& drawing) {
        AcDbObjectId block;
        std::size_t attributes = 0;
        if (drawing.document().getBlockTableRecordId(L"QTB0001", block) == Acad::eOk)
            attributes = drawing.document().attributePrompts(block).size();
        return attributes;
    };
    EXPECT_GT(rowsOf(drawings.at(1)), rowsOf(drawings.at(0)));
}

TEST_F(SeveralDrawings, ClosingOneWithChangesAsksAndDropsItsRecordsWhichGoAllWithTheModule) {
    const std::size_t reactors = acDocManagerPtr()->reactors().size();
    ASSERT_TRUE(shell().loadModule(qpath(kTestModules / "docrecords.arx")));
    ASSERT_GT(acDocManagerPtr()->reactors().size(), reactors);
    ASSERT_TRUE(shell().openDrawing(qpath(m_folder.path("floorplan.dxf"))));
    ASSERT_TRUE(runCommandLine(*m_window, QStringLiteral("DOCRECORD")));
    ASSERT_TRUE(runCommandLine(*m_window, QStringLiteral("NEW")));
    ASSERT_TRUE(runCommandLine(*m_window, QStringLiteral("DOCRECORD")));
    ASSERT_TRUE(runCommandLine(*m_window, QStringLiteral("DOCRECORDS")));
    EXPECT_TRUE(history().endsWith(QStringLiteral("2 records\nCommand: ")));

    // A change to the plan, then its tab's close button: Cancel keeps it, No closes it unsaved.
    QTabBar& bar = *m_window->drawingTabs().tabBar();
    QTest::mouseClick(&bar, Qt::LeftButton, {}, bar.tabRect(0).center());
    m_driver->type(QStringLiteral("DOOR")).type(QStringLiteral("3,3")).type({}).type({}).type({});
    ASSERT_TRUE(runCommandLine(*m_window, QStringLiteral("INSERT")));
    const auto closeTab = [&](QMessageBox::StandardButton answer) {
        QString question;
        const DialogStep box("QMessageBox", [&](QWidget& dialog) {
            auto& messageBox = static_cast<QMessageBox&>(dialog);
            question = messageBox.text();
            QTest::mouseClick(messageBox.button(answer), Qt::LeftButton);
        });
        QWidget* close = bar.tabButton(0, QTabBar::RightSide);
        EXPECT_NE(close, nullptr);
        if (close != nullptr) {
            EXPECT_TRUE(
                runUntilIdle(*m_window, [close] { QTest::mouseClick(close, Qt::LeftButton); }));
        }
        EXPECT_TRUE(box.fired());
        return question;
    };
    EXPECT_EQ(closeTab(QMessageBox::Cancel), QStringLiteral("Save changes to floorplan.dxf?"));
    EXPECT_EQ(shell().drawings().count(), 2u);
    EXPECT_EQ(closeTab(QMessageBox::No), QStringLiteral("Save changes to floorplan.dxf?"));
    ASSERT_EQ(shell().drawings().count(), 1u);
    EXPECT_EQ(shell().drawing().drawingName(), L"Drawing2.dxf");
    EXPECT_EQ(m_window->drawingTabs().count(), 1);
    EXPECT_EQ(m_folder.read("floorplan.dxf"), readBytes(kFloorPlan));
    ASSERT_TRUE(runCommandLine(*m_window, QStringLiteral("DOCRECORDS")));
    EXPECT_TRUE(history().endsWith(QStringLiteral("1 records\nCommand: ")));

    ASSERT_TRUE(shell().unloadModule(QStringLiteral("docrecords")));
    EXPECT_EQ(acDocManagerPtr()->reactors().size(), reactors);
}

using DialogKeys = ModuleHostTest;

TEST_F(DialogKeys, AltNPressesNewFromTheGridAndItsEditorAndAnAltKeyNoButtonTakesTypesNothing) {
    QString title, edited;
    bool editing = false;
    bool gridFocused = false;
    QStringList questions, fileTitles;
    const DialogStep editor("QDialog", [&](QWidget& dialog) {
        title = dialog.windowTitle();
        const DialogStep open("QFileDialog", [&](QWidget& files) {
            enterFileName(files, m_folder.path("prices.prc"));
        });
        clickButton(dialog, QStringLiteral("&Open"));
        ASSERT_TRUE(activate(dialog));
        QWidget* cells = gridCells(dialog);
        ASSERT_NE(cells, nullptr);
        // From here on: "Save changes" answered No, the "New" file dialog closed with Esc.
        const ModalAnswers answers(questions, fileTitles);
        // A click in the first row's description starts its edit.
        QTest::mouseClick(cells, Qt::LeftButton, {}, QPoint(cells->width() * 3 / 4, 6));
        auto* cellEditor = qobject_cast<QLineEdit*>(dialog.focusWidget());
        ASSERT_NE(cellEditor, nullptr);
        editing = cellEditor->isVisible();
        QTest::keyClick(cellEditor, Qt::Key_X, Qt::AltModifier);
        edited = cellEditor->text();
        QTest::keyClick(cellEditor, Qt::Key_N, Qt::AltModifier);
        ASSERT_TRUE(QTest::qWaitFor([&] { return fileTitles.size() == 1; }));
        // The edit ended as the file dialog took the focus; back in the grid, not editing.
        ASSERT_TRUE(activate(dialog));
        QTest::mouseClick(cells, Qt::LeftButton, {}, QPoint(cells->width() - 4, 6));
        gridFocused = dialog.focusWidget() == cells;
        QTest::keyClick(cells, Qt::Key_N, Qt::AltModifier);
        ASSERT_TRUE(QTest::qWaitFor([&] { return fileTitles.size() == 2; }));
        clickButton(dialog, QStringLiteral("&Close"));
    });
    ASSERT_TRUE(runCommandLine(*m_window, QStringLiteral("RZBOMT")));
    ASSERT_TRUE(editor.fired());
    EXPECT_EQ(title, QStringLiteral("BOM Template"));
    EXPECT_TRUE(editing);
    EXPECT_EQ(edited, QStringLiteral("Interior door 90 cm"));
    EXPECT_TRUE(gridFocused);
    // The edit ended unchanged still counts as one (the list's rule): New and Close ask first.
    const QString question =
        QStringLiteral("Save changes to ") + qpath(m_folder.path("prices.prc"));
    EXPECT_EQ(questions, (QStringList{question, question}));
    EXPECT_EQ(fileTitles, (QStringList{QStringLiteral("New"), QStringLiteral("New")}));
    EXPECT_EQ(m_folder.read("prices.prc"), readBytes(kPrices));
}

TEST_F(DialogKeys, AltAPressesAttachNewFromTheBillsGrid) {
    ASSERT_TRUE(shell().openDrawing(qpath(m_folder.path("floorplan.dxf"))));
    const DialogStep files("QFileDialog", [&](QWidget& dialog) {
        enterFileName(dialog, m_folder.path("prices.prc"));
    });
    std::unique_ptr<DialogStep> bill, attachFiles;
    QString title, attachTitle;
    selectWindow(*m_window, *m_driver, kPlanFrom, kPlanTo, [&] {
        bill = std::make_unique<DialogStep>("QDialog", [&](QWidget& dialog) {
            title = dialog.windowTitle();
            attachFiles = std::make_unique<DialogStep>("QFileDialog", [&](QWidget& open) {
                attachTitle = open.windowTitle();
                QTest::keyClick(&open, Qt::Key_Escape);
            });
            QWidget* cells = gridCells(dialog);
            ASSERT_NE(cells, nullptr);
            ASSERT_TRUE(activate(dialog));
            QTest::mouseClick(cells, Qt::LeftButton, {}, QPoint(8, 6));
            QTest::keyClick(dialog.focusWidget(), Qt::Key_A, Qt::AltModifier);
            // A mnemonic clicks as a key does: the button shows pressed for a moment first.
            ASSERT_TRUE(QTest::qWaitFor([&] { return attachFiles->fired(); }));
            clickButton(dialog, QStringLiteral("&Close"));
        });
    });
    ASSERT_TRUE(runCommandLine(*m_window, QStringLiteral("RZBOMC")));
    ASSERT_TRUE(bill && bill->fired());
    EXPECT_EQ(title, QStringLiteral("BOM Report"));
    ASSERT_TRUE(attachFiles && attachFiles->fired());
    EXPECT_EQ(attachTitle, QStringLiteral("Open"));
}

}  // namespace
