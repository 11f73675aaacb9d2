// A save of a large drawing stopped by a signal at moments spread over the run: the target is the
// old file or the new one, whole, and nothing else is left in its folder.
#include <gtest/gtest.h>

#include <chrono>
#include <csignal>
#include <filesystem>
#include <thread>

#include "tests/host/DrawingFixture.h"
#include "tests/host/console/ConsoleFixture.h"

namespace {

using Clock = std::chrono::steady_clock;

class ConsoleInterruptedSaveTest : public ConsoleTest {
protected:
    void SetUp() override {
        ConsoleTest::SetUp();
        m_folder.write("large.dxf", fixtureBytes(fixtureOfManyReferences(400'000)));
        std::filesystem::create_directory(m_folder.path("target"));
    }
    std::vector<std::string> saveTo(const std::string& target) const {
        return {"bom",        m_folder.path("large.dxf"),
                "--prices",   m_folder.path("prices.prc"),
                "--table-at", "0,0",
                "-o",         target};
    }
};

TEST_F(ConsoleInterruptedSaveTest, LeavesTheOldTargetOrTheNewOneAndNothingElse) {
    // The new drawing, saved without interruption; the time it takes spreads the moments to stop
    // it.
    const auto started = Clock::now();
    const ProcessResult whole = tarnwick(saveTo(m_folder.path("new.dxf")));
    const auto duration = Clock::now() - started;
    ASSERT_EQ(whole.exitCode, 0) << whole.err;
    const std::string newBytes = m_folder.read("new.dxf");
    const ProcessResult read = checkDrawing("new.dxf", {"QTB0001", "--", "QTB0001", "0", "0", "1"});
    EXPECT_EQ(read.out, "ok\n") << read.err;

    const std::string oldBytes = m_folder.read("floorplan.dxf");
    const std::string target = m_folder.path("target/plan.dxf");
    int endedNew = 0;
    int endedOld = 0;
    for (const int signal : {SIGKILL, SIGTERM, SIGINT}) {
        for (int moment = 0; moment < 10; ++moment) {
            m_folder.write("target/plan.dxf", oldBytes);
            StartedProcess save(TARNWICK_EXECUTABLE, saveTo(target));
            std::this_thread::sleep_for(duration * (moment + 0.5) / 10);
            save.signal(signal);
            const ProcessResult result = save.wait();
            SCOPED_TRACE("signal " + std::to_string(signal) + " at moment " +
                         std::to_string(moment) + ", exit " + std::to_string(result.exitCode));
            EXPECT_EQ(m_folder.entries("target"), std::vector<std::string>{"plan.dxf"});
            const std::string found = m_folder.read("target/plan.dxf");
            EXPECT_TRUE(found == oldBytes || found == newBytes) << found.size() << " bytes";
            (found == newBytes ? endedNew : endedOld) += 1;
        }
    }
    RecordProperty("ended_new", endedNew);
    RecordProperty("ended_old", endedOld);
}

}  // namespace
