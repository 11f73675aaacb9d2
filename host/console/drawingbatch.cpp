// Reading and counting drawings on a few threads.
#include "host/console/drawingbatch.h"

#include <sys/stat.h>

#include <algorithm>
#include <atomic>
#include <cstdio>
#include <mutex>
#include <system_error>
#include <thread>

#include "bom/TableSource.h"
#include "host/console/drawingsession.h"
#include "host/console/messages.h"
#include "host/console/progressline.h"

namespace {

// One progress line for the whole batch, fed from every thread.
class BatchProgress {
public:
    BatchProgress(const std::vector<std::string>& paths, bool show)
        : m_line(paths.size() == 1 ? "reading " + paths.front()
                                   : "reading " + std::to_string(paths.size()) + " drawings"),
          m_done(paths.size()),
          m_show(show) {
        for (const auto& path : paths) {
            struct stat info {};
            if (::stat(path.c_str(), &info) == 0)
                m_total += static_cast<std::uint64_t>(info.st_size);
        }
    }

    void update(std::size_t drawing, std::uint64_t done) {
        if (!m_show) return;
        const std::lock_guard lock(m_mutex);
        m_done[drawing] = done;
        std::uint64_t sum = 0;
        for (const auto part : m_done) sum += part;
        m_line.update(sum, m_total);
    }

private:
    ProgressLine m_line;
    std::vector<std::uint64_t> m_done;
    std::uint64_t m_total = 0;
    bool m_show;
    std::mutex m_mutex;
};

void countOne(CountedDrawing& drawing, std::size_t index, const BatchOptions& options,
              BatchProgress& progress) {
    if (const std::string reason = unreadableReason(drawing.path); !reason.empty()) {
        drawing.error = drawing.path + ": " + reason;
        return;
    }
    auto read = readDrawing(
        drawing.path, [&](std::uint64_t done, std::uint64_t) { progress.update(index, done); },
        options.reading);
    if (!read.isOk()) {
        drawing.error = read.errorString();
        return;
    }
    std::unique_ptr<DxfDocument> document = read.takeValue();
    drawing.repairs = document->repairs();
    // The module's price tables are no items of a bill of materials.
    TallyOptions tallyOptions = options.tally;
    tallyOptions.leaveOut = [&document](AcDbObjectId block) {
        return IsPriceTable(*document, block);
    };
    if (options.layouts) {
        auto spaces = tallySpaces(*document, drawing.path, tallyOptions);
        if (!spaces.isOk()) {
            drawing.error = spaces.errorString();
            return;
        }
        drawing.spaces = spaces.takeValue();
        drawing.tally = mergeTallies(drawing.spaces);
    } else {
        auto tally = tallyDrawing(*document, drawing.path, tallyOptions);
        if (!tally.isOk()) {
            drawing.error = tally.errorString();
            return;
        }
        drawing.tally = tally.takeValue();
    }
    if (options.keepDocuments) drawing.document = std::move(document);
}

}  // namespace

unsigned defaultJobs() { return std::max(1u, std::thread::hardware_concurrency()); }

std::vector<CountedDrawing> countDrawings(const std::vector<std::string>& paths,
                                          const BatchOptions& options) {
    std::vector<CountedDrawing> drawings(paths.size());
    for (std::size_t i = 0; i < paths.size(); ++i) drawings[i].path = paths[i];
    BatchProgress progress(paths, options.showProgress);
    std::atomic<std::size_t> next{0};
    auto work = [&] {
        for (std::size_t i = next++; i < drawings.size(); i = next++) {
            try {
                countOne(drawings[i], i, options, progress);
            } catch (const std::bad_alloc&) {
                drawings[i].error = drawings[i].path + ": not enough memory to count it";
                drawings[i].document.reset();
            } catch (const std::exception& e) {
                drawings[i].error = drawings[i].path + ": " + e.what();
                drawings[i].document.reset();
            }
        }
    };
    // This thread is one of the workers; a thread the system refuses leaves its share to the
    // others.
    const std::size_t threads = std::min<std::size_t>(std::max(1u, options.jobs), drawings.size());
    std::vector<std::jthread> workers;
    try {
        for (std::size_t t = 1; t < threads; ++t) workers.emplace_back(work);
    } catch (const std::system_error&) {
    }
    work();
    workers.clear();  // joins
    for (const CountedDrawing& drawing : drawings) {
        for (const std::string& repair : drawing.repairs)
            std::fprintf(stderr, "%s\n", repair.c_str());
    }
    return drawings;
}
