// The calculation dialog on a big bill, offscreen: 10,000 distinct block names and 1,000,000
// references counted against a list that prices 9,000 of them, the grid filled from the rows, then
// sorted by a heading click on each column. Each figure includes the repaint that follows.
#include <benchmark/benchmark.h>

#include <QApplication>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string>
#include <vector>

#include "bom/CalcPriceDialog.h"
#include "bom/CalcPriceState.h"
#include "host/scripted/memorydatabase.h"
#include "host/scripted/scriptededitor.h"
#include "text/TextFile.h"

namespace {

constexpr int kNames = 10000;
constexpr int kPricedNames = 9000;
constexpr int kReferences = 1000000;

std::wstring BlockName(int index) { return L"Block-" + std::to_wstring(index); }

// The drawing, the list and an editor that answers every selection with all the references.
struct BigBill {
    BigBill() {
        std::vector<AcDbObjectId> blocks;
        for (int i = 0; i < kNames; ++i) blocks.push_back(database.addBlock(BlockName(i)));
        // Scattered over the names, a hundred references each.
        for (int i = 0; i < kReferences; ++i) {
            AcDbBlockReference reference;
            reference.blockTableRecord = blocks[static_cast<std::size_t>((i * 7919L) % kNames)];
            AcDbObjectId id;
            database.insertBlockReference(reference, id);
            references.push_back(id);
        }
        std::wstring list;
        unsigned seed = 11;
        for (int i = 0; i < kPricedNames; ++i) {
            seed = seed * 1103515245u + 12345u;
            const int cents = static_cast<int>((seed >> 8) % 250000);
            list += BlockName((i * 13) % kNames) + L"|" + std::to_wstring(cents / 100) + L"." +
                    std::to_wstring(cents % 100) + L"|" +
                    (i % 10 == 0 ? L"" : L"Part " + std::to_wstring(seed % 5000)) + L"\n";
        }
        listPath = L"/tmp/tarnwick-bench-" + std::to_wstring(::getpid()) + L".prc";
        if (const FileStatus written = WriteTextFile(listPath, list, TextFormat{}); !written.isOk()) {
            std::fprintf(stderr, "%s\n", written.errorString().c_str());
            std::exit(1);
        }
        acdbHostApplicationServices()->setWorkingDatabase(&database);
    }
    ~BigBill() { std::remove(NativePath(listPath).c_str()); }

    // A dialog as the command shows it: the list loaded and the references counted.
    std::unique_ptr<CalcPriceDialog> CountedDialog() {
        auto dialog = std::make_unique<CalcPriceDialog>();
        dialog->LoadPriceList(listPath);
        editor.answerSelection(RTNORM, references);
        dialog->CountSelection();
        editor.clearCalls();
        return dialog;
    }

    MemoryDatabase database;
    ScriptedEditor editor;
    std::vector<AcDbObjectId> references;
    std::wstring listPath;
};

BigBill& Bill() {
    static BigBill bill;
    return bill;
}

void BM_CountReferences(benchmark::State& state) {
    BigBill& bill = Bill();
    CalcPriceDialog dialog;
    for (auto _ : state) {
        state.PauseTiming();
        dialog.LoadPriceList(bill.listPath);
        bill.editor.answerSelection(RTNORM, bill.references);
        state.ResumeTiming();
        benchmark::DoNotOptimize(dialog.CountSelection());
    }
    state.counters["references"] = kReferences;
    state.counters["rows"] = static_cast<double>(dialog.Calculation().Results().size());
}
BENCHMARK(BM_CountReferences)->Unit(benchmark::kMillisecond);

void BM_FillGrid(benchmark::State& state) {
    const auto dialog = Bill().CountedDialog();
    dialog->OnInitDialog();
    dialog->show();
    QApplication::processEvents();
    for (auto _ : state) {
        dialog->Grid().FillFromResults(dialog->Calculation().Results());
        QApplication::processEvents();
    }
    state.counters["rows"] = static_cast<double>(dialog->Grid().GetNumberRows());
}
BENCHMARK(BM_FillGrid)->Unit(benchmark::kMillisecond);

// A heading click on the column, on the rows in the order counting left them.
void BM_SortByHeading(benchmark::State& state) {
    const int col = static_cast<int>(state.range(0));
    const auto dialog = Bill().CountedDialog();
    dialog->OnInitDialog();
    dialog->show();
    MyCug2& grid = dialog->Grid();
    for (auto _ : state) {
        state.PauseTiming();
        grid.FillFromResults(dialog->Calculation().Results());
        QApplication::processEvents();
        state.ResumeTiming();
        grid.OnTopHdgLeftClick(col, -1, 1, QRect(), QPoint(), 0);
        QApplication::processEvents();
    }
    state.SetLabel(
        QString::fromWCharArray(BomColumnTitles[static_cast<std::size_t>(col)]).toStdString());
}
BENCHMARK(BM_SortByHeading)->DenseRange(0, kBomColumnCount - 1)->Unit(benchmark::kMillisecond);

}  // namespace

int main(int argc, char** argv) {
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
