// What the end-to-end tests share: Tarnwick.arx loaded from a folder of the test's own (where it
// keeps its settings, beside the example plan and list copied there) into a shown main window,
// and a prompt driver for real events.
#pragma once

#include <gtest/gtest.h>

#include <QTest>
#include <filesystem>
#include <memory>

#include "tests/TempFolder.h"
#include "tests/host/desktop/shell/ShellTestSupport.h"

inline const std::filesystem::path kArx = TARNWICK_ARX_PATH;
inline const std::filesystem::path kPrices = kSourceDir / "examples" / "prices.prc";

class ModuleHostTest : public ::testing::Test {
protected:
    void SetUp() override {
        std::filesystem::copy_file(kArx, m_folder.path("Tarnwick.arx"));
        std::filesystem::copy_file(kFloorPlan, m_folder.path("floorplan.dxf"));
        std::filesystem::copy_file(kPrices, m_folder.path("prices.prc"));
        m_window = std::make_unique<MainWindow>();
        m_window->resize(1200, 860);
        m_window->show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(m_window.get()));
        m_driver = std::make_unique<PromptDriver>(*m_window);
        ASSERT_TRUE(shell().loadModule(QString::fromStdString(m_folder.path("Tarnwick.arx"))));
    }
    void TearDown() override { EXPECT_TRUE(m_driver->finished()) << "input left over"; }

    DesktopShell& shell() { return m_window->shell(); }
    QString history() { return m_window->commandLine().history(); }

    TempFolder m_folder;
    std::unique_ptr<MainWindow> m_window;
    std::unique_ptr<PromptDriver> m_driver;
};
