// Whole console commands on a large drawing against the raw name scan, measured in the same run:
// each command and the scan take turns, and every figure is a median of the pairs. CPU time and
// wall time come from the kernel's accounting of each finished process, peak memory from its
// high-water mark, beside the file's size.
//
// Usage: command_bench [DRAWING.dxf ...] [--runs N]
//        (default: bench/data/references-1m.dxf, and the 3M and binary drawings when present)
#include <fcntl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

namespace {

struct Run {
    double cpu = 0.0;   // user and system seconds
    double wall = 0.0;  // seconds
    double peakMb = 0.0;
};

// Runs the command with its output thrown away; nothing but the kernel's figures are kept.
Run runOnce(const std::vector<std::string>& command) {
    const auto start = std::chrono::steady_clock::now();
    const pid_t child = ::fork();
    if (child == 0) {
        const int null = ::open("/dev/null", O_WRONLY);
        ::dup2(null, 1);
        ::dup2(null, 2);
        std::vector<char*> argv;
        for (const std::string& argument : command) argv.push_back(const_cast<char*>(argument.c_str()));
        argv.push_back(nullptr);
        ::execvp(argv[0], argv.data());
        ::_exit(127);
    }
    int status = 0;
    rusage usage{};
    ::wait4(child, &status, 0, &usage);
    const auto end = std::chrono::steady_clock::now();
    auto seconds = [](const timeval& t) { return static_cast<double>(t.tv_sec) + t.tv_usec / 1e6; };
    if (!WIFEXITED(status) || WEXITSTATUS(status) == 127)
        std::fprintf(stderr, "command_bench: %s did not run\n", command.front().c_str());
    return Run{seconds(usage.ru_utime) + seconds(usage.ru_stime),
               std::chrono::duration<double>(end - start).count(),
               static_cast<double>(usage.ru_maxrss) / 1024.0};
}

double median(std::vector<double> values) {
    std::sort(values.begin(), values.end());
    return values.empty() ? 0.0 : values[values.size() / 2];
}

struct Paired {
    double cpu = 0.0, wall = 0.0, peakMb = 0.0;
    double cpuRatio = 0.0, wallRatio = 0.0;  // to the scan, pair by pair
};

// The command and the scan in turn, after one run of each that is not counted.
Paired paired(const std::vector<std::string>& command, const std::vector<std::string>& scan,
              int runs) {
    runOnce(command);
    runOnce(scan);
    std::vector<double> cpu, wall, peak, cpuRatio, wallRatio;
    for (int i = 0; i < runs; ++i) {
        const Run a = runOnce(command);
        const Run b = runOnce(scan);
        cpu.push_back(a.cpu);
        wall.push_back(a.wall);
        peak.push_back(a.peakMb);
        cpuRatio.push_back(a.cpu / b.cpu);
        wallRatio.push_back(a.wall / b.wall);
    }
    return Paired{median(cpu), median(wall), median(peak), median(cpuRatio), median(wallRatio)};
}

void report(const std::string& name, const Paired& figures, double fileMb) {
    std::printf("| %-34s | %6.3f | %5.2fx | %6.3f | %5.2fx | %7.1f | %5.2fx |\n", name.c_str(),
                figures.cpu, figures.cpuRatio, figures.wall, figures.wallRatio, figures.peakMb,
                figures.peakMb / fileMb);
}

std::string sibling(const char* self, const std::string& relative) {
    return (std::filesystem::path(self).parent_path() / relative).string();
}

}  // namespace

int main(int argc, char** argv) {
    int runs = 5;
    std::vector<std::string> drawings;
    for (int i = 1; i < argc; ++i) {
        const std::string argument = argv[i];
        if (argument == "--runs" && i + 1 < argc) {
            runs = std::max(1, std::atoi(argv[++i]));
        } else {
            drawings.push_back(argument);
        }
    }
    if (drawings.empty()) {
        for (const char* name : {"references-1m.dxf", "references-3m.dxf", "references-1m-binary.dxf"}) {
            const std::string path = std::string(TARNWICK_BENCH_DATA) + "/" + name;
            if (std::filesystem::exists(path)) drawings.push_back(path);
        }
    }
    const std::string tarnwick = sibling(argv[0], "../host/console/tarnwick");
    const std::string scanner = sibling(argv[0], "raw_name_scan");
    const std::filesystem::path scratch =
        std::filesystem::temp_directory_path() / ("command-bench-" + std::to_string(::getpid()));
    std::filesystem::create_directories(scratch);
    const std::string prices = (scratch / "prices.prc").string();
    std::ofstream(prices) << "BLOCK001|10.00|first\nBLOCK002|20.00|second\n";
    const std::string out = (scratch / "out.dxf").string();
    const bool withoutSync = std::system("command -v eatmydata > /dev/null 2>&1") == 0;

    std::printf("Medians of %d pairs; ratios are to the raw name scan of the same file, pair by "
                "pair; peak memory is beside the file's size.\n\n", runs);
    for (const std::string& drawing : drawings) {
        const double fileMb =
            static_cast<double>(std::filesystem::file_size(drawing)) / (1024.0 * 1024.0);
        std::printf("%s (%.1f MiB)\n\n", drawing.c_str(), fileMb);
        std::ifstream head(drawing, std::ios::binary);
        std::string sentinel(18, '\0');
        head.read(sentinel.data(), static_cast<std::streamsize>(sentinel.size()));
        if (sentinel == "AutoCAD Binary DXF")
            std::printf("Binary: the raw scan reads ASCII only, so its ratios say nothing here; set "
                        "the CPU column beside the ASCII drawing of the same content.\n\n");
        std::printf("| %-34s | cpu s  | cpu   | wall s | wall  | peak MiB| peak  |\n", "command");
        std::printf("|%s|--------|-------|--------|-------|---------|-------|\n",
                    std::string(36, '-').c_str());
        const std::vector<std::string> scan{scanner, drawing};
        report("raw name scan", paired(scan, scan, runs), fileMb);
        const Paired bom = paired({tarnwick, "bom", drawing, "--prices", prices}, scan, runs);
        report("bom", bom, fileMb);
        report("check", paired({tarnwick, "check", drawing, "--prices", prices}, scan, runs), fileMb);
        report("info", paired({tarnwick, "info", drawing}, scan, runs), fileMb);
        const std::vector<std::string> save{tarnwick, "bom",   drawing, "--prices", prices,
                                            "--table-at", "0,0", "-o",   out};
        const Paired saved = paired(save, scan, runs);
        report("bom --table-at 0,0 -o OUT", saved, fileMb);
        const double scanCpu = saved.cpu / saved.cpuRatio;
        std::printf("\nThe save's own part (table and write, over bom): %.3f s CPU, %.2fx the scan; "
                    "%.3f s wall with the final fsync\n",
                    saved.cpu - bom.cpu, (saved.cpu - bom.cpu) / scanCpu, saved.wall - bom.wall);
        if (withoutSync) {
            std::vector<std::string> unsynced{"eatmydata"};
            unsynced.insert(unsynced.end(), save.begin(), save.end());
            const Paired fast = paired(unsynced, scan, runs);
            std::printf("without fsync (eatmydata): %.3f s CPU, %.3f s wall\n",
                        fast.cpu - bom.cpu, fast.wall - bom.wall);
        }
        std::printf("\n");
    }
    std::filesystem::remove_all(scratch);
    return 0;
}
