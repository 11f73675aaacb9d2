// What the tests of `tarnwick` run as a program share: the example drawing and price list copied
// into a folder of the test's own, and the program run on the files there.
#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <map>
#include <string>
#include <vector>

#include "tests/RunProcess.h"
#include "tests/TempFolder.h"

class ConsoleTest : public ::testing::Test {
protected:
    void SetUp() override {
        for (const char* name : {"floorplan.dxf", "prices.prc"}) {
            std::filesystem::copy_file(std::string(TARNWICK_SOURCE_DIR) + "/examples/" + name,
                                       m_folder.path(name));
        }
    }

    // The text with a leading "@" standing for the folder.
    std::string at(const std::string& text) const {
        return text.starts_with("@") ? m_folder.path(text.substr(1)) : text;
    }
    ProcessResult tarnwick(std::vector<std::string> arguments,
                           const ProcessSetup& setup = {}) const {
        for (std::string& argument : arguments) argument = at(argument);
        return runProcess(TARNWICK_EXECUTABLE, arguments, setup);
    }
    // `tarnwick bom` of the drawings with the example list, then the other arguments.
    ProcessResult bom(const std::vector<std::string>& drawings,
                      const std::vector<std::string>& more) const {
        std::vector<std::string> arguments{"bom"};
        for (const std::string& drawing : drawings) arguments.push_back("@" + drawing);
        arguments.insert(arguments.end(), {"--prices", "@prices.prc"});
        arguments.insert(arguments.end(), more.begin(), more.end());
        return tarnwick(arguments);
    }
    // check_drawing.py (ezdxf) on a drawing of the folder: its output is "ok" when the drawing
    // passes the audit and holds these table blocks, "--", and these references "NAME X Y SCALE".
    ProcessResult checkDrawing(const std::string& name, std::vector<std::string> expected) const {
        expected.insert(expected.begin(),
                        {std::string(TARNWICK_SOURCE_DIR) + "/tests/host/console/check_drawing.py",
                         m_folder.path(name)});
        return runProcess("/usr/bin/python3", expected);
    }
    // Each entry of the folder with what it holds: a link's target, a small file's bytes, a large
    // file's size and time of change (reading it whole would cost more than the program under
    // test).
    std::map<std::string, std::string> snapshot() const {
        std::map<std::string, std::string> entries;
        for (const auto& entry : std::filesystem::directory_iterator(m_folder.path(""))) {
            const std::string name = entry.path().filename().string();
            if (entry.is_symlink()) {
                entries[name] = "-> " + std::filesystem::read_symlink(entry.path()).string();
            } else if (entry.is_regular_file() && entry.file_size() < (1U << 20)) {
                entries[name] = m_folder.read(name);
            } else {
                const auto changed = std::filesystem::last_write_time(entry.path());
                entries[name] = std::to_string(entry.is_regular_file() ? entry.file_size() : 0) +
                                " bytes, changed " +
                                std::to_string(changed.time_since_epoch().count());
            }
        }
        return entries;
    }

    TempFolder m_folder;
};
