// Counting several drawings for one bill of materials, on one thread and on two: 4 drawings of
// 250,000 references each, read, counted by name and counted into the module's rows.
#include <benchmark/benchmark.h>

#include <string>
#include <vector>

#include "bom/BomCalculation.h"
#include "host/console/billofmaterials.h"
#include "host/console/drawingbatch.h"

namespace {

std::vector<std::string> drawings() {
    std::vector<std::string> paths;
    for (int i = 1; i <= 4; ++i)
        paths.push_back(std::string(TARNWICK_BENCH_BATCH) + "/references-250k-" + std::to_string(i) + ".dxf");
    return paths;
}

void BatchCount(benchmark::State& state) {
    BatchOptions options;
    options.jobs = static_cast<unsigned>(state.range(0));
    options.showProgress = false;
    std::int64_t references = 0;
    for (auto _ : state) {
        std::vector<CountedDrawing> counted = countDrawings(drawings(), options);
        for (const auto& drawing : counted) {
            if (!drawing.error.empty()) {
                state.SkipWithError(drawing.error.c_str());
                return;
            }
        }
        BomCalculation calculation;
        auto bill = countBillOfMaterials(calculation, counted);
        if (!bill.isOk()) {
            state.SkipWithError(bill.errorString().c_str());
            return;
        }
        references = 0;
        for (const auto& row : calculation.Results()) references += row.quantity;
    }
    state.counters["references"] = static_cast<double>(references);
}

BENCHMARK(BatchCount)->Arg(1)->Arg(2)->ArgName("jobs")->Unit(benchmark::kMillisecond)->UseRealTime();

}  // namespace

BENCHMARK_MAIN();
