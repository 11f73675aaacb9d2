// The grid control and QTableView over a QStandardItemModel doing the same work in one run:
// filling 100,000 rows of 5 text columns, sorting them by a numeric column, painting the first
// screen into an image. The fill benchmarks count the heap bytes each stored cell costs, at two
// sizes, to show the cost per cell stays the same.
#include <benchmark/benchmark.h>
#include <malloc.h>

#include <QApplication>
#include <QImage>
#include <QPainter>
#include <QStandardItemModel>
#include <QTableView>
#include <memory>
#include <string>
#include <vector>

#include "grid/CUGCtrl.h"

namespace {

constexpr int kCols = 5;
constexpr int kNumericCol = 2;
const QSize kScreen(800, 600);

// The texts of one row; column 2 holds a price, the same number for both contenders.
struct Row {
    std::wstring texts[kCols];
    double price;
};

const std::vector<Row>& Rows(long count) {
    static std::vector<Row> rows;
    if (static_cast<long>(rows.size()) >= count) return rows;
    unsigned seed = 1;
    auto next = [&seed] {
        seed = seed * 1103515245u + 12345u;
        return (seed >> 8) & 0xFFFFFF;
    };
    rows.resize(static_cast<std::size_t>(count));
    for (long r = 0; r < count; ++r) {
        Row& row = rows[static_cast<std::size_t>(r)];
        row.price = static_cast<double>(next() % 100000) / 100.0;
        row.texts[0] = L"BLOCK-" + std::to_wstring(next() % 100000);
        row.texts[1] = L"Steel door " + std::to_wstring(next() % 2000) + L" mm";
        row.texts[2] = std::to_wstring(row.price);
        row.texts[3] = std::to_wstring(next() % 500);
        row.texts[4] = L"Supplier " + std::to_wstring(next() % 40);
    }
    return rows;
}

std::vector<QString> QtTexts(long count) {
    std::vector<QString> texts;
    texts.reserve(static_cast<std::size_t>(count * kCols));
    for (long r = 0; r < count; ++r)
        for (const std::wstring& text : Rows(count)[static_cast<std::size_t>(r)].texts)
            texts.push_back(QString::fromStdWString(text));
    return texts;
}

std::size_t HeapInUse() { return mallinfo2().uordblks; }

std::unique_ptr<CUGCtrl> MakeGrid(long rows) {
    auto grid = std::make_unique<CUGCtrl>();
    grid->CreateGrid(0, QRect(QPoint(0, 0), kScreen), nullptr, 1);
    grid->SetNumberCols(kCols);
    grid->SetNumberRows(rows);
    return grid;
}

void FillGrid(CUGCtrl& grid, long rows, bool numeric) {
    CUGCell number;
    for (long r = 0; r < rows; ++r) {
        const Row& row = Rows(rows)[static_cast<std::size_t>(r)];
        for (int c = 0; c < kCols; ++c) {
            if (numeric && c == kNumericCol) {
                number.SetNumber(row.price);
                grid.SetCell(c, r, &number);
            } else {
                grid.QuickSetText(c, r, row.texts[c]);
            }
        }
    }
}

// The model is filled before the view is attached, Qt's fast way: filled under an attached view,
// every item costs a view update, and 100,000 rows take close to a minute here.
struct Table {
    QStandardItemModel model;
    QTableView view;
    explicit Table(long rows) : model(static_cast<int>(rows), kCols) { view.resize(kScreen); }
    void Attach() { view.setModel(&model); }
};

void FillTable(Table& table, long rows, const std::vector<QString>& texts, bool numeric) {
    for (long r = 0; r < rows; ++r) {
        for (int c = 0; c < kCols; ++c) {
            auto* item = new QStandardItem;
            if (numeric && c == kNumericCol)
                item->setData(Rows(rows)[static_cast<std::size_t>(r)].price, Qt::DisplayRole);
            else
                item->setText(texts[static_cast<std::size_t>(r * kCols + c)]);
            table.model.setItem(static_cast<int>(r), c, item);
        }
    }
}

void BM_GridFill(benchmark::State& state) {
    const long rows = state.range(0);
    Rows(rows);
    double bytesPerCell = 0;
    for (auto _ : state) {
        state.PauseTiming();
        const std::size_t before = HeapInUse();
        auto grid = MakeGrid(rows);
        state.ResumeTiming();
        FillGrid(*grid, rows, false);
        state.PauseTiming();
        bytesPerCell = static_cast<double>(HeapInUse() - before) / static_cast<double>(rows * kCols);
        grid.reset();
        state.ResumeTiming();
    }
    state.counters["bytes_per_cell"] = bytesPerCell;
}

void BM_TableViewFill(benchmark::State& state) {
    const long rows = state.range(0);
    const std::vector<QString> texts = QtTexts(rows);
    double bytesPerCell = 0;
    for (auto _ : state) {
        state.PauseTiming();
        const std::size_t before = HeapInUse();
        auto table = std::make_unique<Table>(rows);
        state.ResumeTiming();
        FillTable(*table, rows, texts, false);
        table->Attach();
        state.PauseTiming();
        bytesPerCell = static_cast<double>(HeapInUse() - before) / static_cast<double>(rows * kCols);
        table.reset();
        state.ResumeTiming();
    }
    state.counters["bytes_per_cell"] = bytesPerCell;
}

void BM_GridSortNumeric(benchmark::State& state) {
    const long rows = state.range(0);
    for (auto _ : state) {
        state.PauseTiming();
        auto grid = MakeGrid(rows);
        FillGrid(*grid, rows, true);
        state.ResumeTiming();
        grid->SortBy(kNumericCol, 1);
        state.PauseTiming();
        grid.reset();
        state.ResumeTiming();
    }
}

void BM_TableViewSortNumeric(benchmark::State& state) {
    const long rows = state.range(0);
    const std::vector<QString> texts = QtTexts(rows);
    for (auto _ : state) {
        state.PauseTiming();
        auto table = std::make_unique<Table>(rows);
        FillTable(*table, rows, texts, true);
        table->Attach();
        state.ResumeTiming();
        table->model.sort(kNumericCol, Qt::AscendingOrder);
        state.PauseTiming();
        table.reset();
        state.ResumeTiming();
    }
}

void BM_GridPaintFirstScreen(benchmark::State& state) {
    const long rows = state.range(0);
    auto grid = MakeGrid(rows);
    FillGrid(*grid, rows, false);
    for (int c = 0; c < kCols; ++c) grid->QuickSetText(c, -1, L"Column " + std::to_wstring(c));
    grid->show();
    QApplication::processEvents();
    QImage image(kScreen, QImage::Format_ARGB32_Premultiplied);
    for (auto _ : state) {
        grid->render(&image);
        benchmark::DoNotOptimize(image.constBits());
    }
}

void BM_TableViewPaintFirstScreen(benchmark::State& state) {
    const long rows = state.range(0);
    Table table(rows);
    FillTable(table, rows, QtTexts(rows), false);
    table.Attach();
    for (int c = 0; c < kCols; ++c) table.model.setHeaderData(c, Qt::Horizontal, QString("Column %1").arg(c));
    table.view.show();
    QApplication::processEvents();
    QImage image(kScreen, QImage::Format_ARGB32_Premultiplied);
    for (auto _ : state) {
        table.view.render(&image);
        benchmark::DoNotOptimize(image.constBits());
    }
}

BENCHMARK(BM_GridFill)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_TableViewFill)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_GridSortNumeric)->Arg(100000)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_TableViewSortNumeric)->Arg(100000)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_GridPaintFirstScreen)->Arg(100000)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_TableViewPaintFirstScreen)->Arg(100000)->Unit(benchmark::kMillisecond);

}  // namespace

int main(int argc, char** argv) {
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
