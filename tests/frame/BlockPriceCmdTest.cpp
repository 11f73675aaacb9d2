// The price-list command runs the editor modally over the host's main window.
#include <gtest/gtest.h>

#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <QWidget>

#include "frame/BlockPriceCmd.h"
#include "frame/LibraryEntry.h"
#include "host/api/acapwindow.h"
#include "pricelist/BlockPriceDialog.h"
#include "resources/BomTemplate.h"
#include "resources/DialogBuilder.h"
#include "resources/ModulePath.h"
#include "tests/TempFolder.h"

namespace {

class MainWindowServices final : public AcApWindowServices {
public:
    explicit MainWindowServices(QWidget* window) : m_window(window), m_previous(acapSetWindowServices(this)) {}
    ~MainWindowServices() override { acapSetWindowServices(m_previous); }
    MainWindowServices(const MainWindowServices&) = delete;
    MainWindowServices& operator=(const MainWindowServices&) = delete;
    void* mainWindow() override { return m_window; }
    int messageBox(const std::wstring&, unsigned) override { return IDCANCEL; }
    void beep(unsigned, unsigned) override {}

private:
    QWidget* m_window;
    AcApWindowServices* m_previous;
};

TEST(BlockPriceCmd, RunsTheEditorModallyOverTheMainWindowUntilItIsClosed) {
    TempFolder folder;
    modulePath = folder.wpath("Tarnwick.arx");
    QWidget mainWindow;
    mainWindow.show();
    MainWindowServices services(&mainWindow);
    const int hostResources = 0;
    const int moduleResources = 0;
    AfxSetResourceHandle(&hostResources);
    ExtensionModule.moduleResource = &moduleResources;

    bool sawDialog = false;
    QTimer::singleShot(0, [&] {
        BlockPriceDialog* dialog = blockPriceDialog;
        ASSERT_NE(dialog, nullptr);
        sawDialog = true;
        EXPECT_EQ(AfxGetResourceHandle(), &moduleResources);
        EXPECT_TRUE(dialog->isVisible());
        EXPECT_TRUE(dialog->isModal());
        EXPECT_EQ(dialog->parentWidget(), &mainWindow);
        QTest::mouseClick(qobject_cast<QPushButton*>(GetDlgItem(*dialog, IDC_PRICE_CLOSE)),
                          Qt::LeftButton);
    });
    BlockPriceCmd();
    EXPECT_TRUE(sawDialog);
    EXPECT_EQ(blockPriceDialog, nullptr);
    EXPECT_EQ(AfxGetResourceHandle(), &hostResources);
    ExtensionModule.moduleResource = nullptr;
    AfxSetResourceHandle(nullptr);
    modulePath.clear();
}

}  // namespace
