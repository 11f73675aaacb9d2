// The price-list editor with a 100,000-row list, offscreen, against a plain QTableView over a
// QStandardItemModel given the same rows: opening the list until its first screen is painted,
// sorting it by price, and saving it.
#include <benchmark/benchmark.h>

#include <QApplication>
#include <QFile>
#include <QPushButton>
#include <QStandardItemModel>
#include <QTableView>
#include <QTest>
#include <QTextStream>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <string>

#include "grid/CUGTopHdg.h"
#include "host/scripted/scriptededitor.h"
#include "pricelist/BlockPriceDialog.h"
#include "resources/BomTemplate.h"
#include "resources/DialogBuilder.h"
#include "resources/ModulePath.h"

namespace {

constexpr long kRows = 100000;

// A list of kRows rows in a folder of its own: "BLOCK-nnnnn|price|description".
const std::filesystem::path& ListFolder() {
    static const std::filesystem::path folder = [] {
        const auto path = std::filesystem::temp_directory_path() / "tarnwick-price-bench";
        std::filesystem::create_directories(path);
        unsigned seed = 1;
        auto next = [&seed] {
            seed = seed * 1103515245u + 12345u;
            return (seed >> 8) & 0xFFFFFF;
        };
        std::FILE* file = std::fopen((path / "big.prc").c_str(), "w");
        for (long row = 0; row < kRows; ++row) {
            std::fprintf(file, "BLOCK-%06ld|%u.%02u|Steel door %u mm, supplier %u\n", row,
                         next() % 5000, next() % 100, 600 + next() % 1400, next() % 40);
        }
        std::fclose(file);
        return path;
    }();
    return folder;
}

std::wstring ListPath() { return (ListFolder() / "big.prc").wstring(); }

// The dialog as the command shows it, with the list opened and painted.
struct Editor {
    ScriptedEditor host;
    std::unique_ptr<BlockPriceDialog> dialog;

    Editor() {
        modulePath = (ListFolder() / "Tarnwick.arx").wstring();
        dialog = std::make_unique<BlockPriceDialog>();
        dialog->show();
        QApplication::processEvents();
    }
    void Open() {
        if (!dialog->OpenList(ListPath())) std::abort();
        QApplication::processEvents();
    }
    void ClickPriceHeading() {
        MyCug& grid = dialog->Grid();
        const QRect cell = grid.GetCellRect(1, 0);
        QTest::mouseClick(grid.GetTopHdgWindow(), Qt::LeftButton, Qt::NoModifier,
                          QPoint(cell.center().x(), grid.GetTopHdgWindow()->height() / 2));
        QApplication::processEvents();
    }
};

void BM_DialogOpen(benchmark::State& state) {
    ListFolder();
    for (auto _ : state) {
        state.PauseTiming();
        auto editor = std::make_unique<Editor>();
        state.ResumeTiming();
        editor->Open();
        state.PauseTiming();
        if (editor->dialog->Grid().GetNumberRows() != kRows) std::abort();
        editor.reset();
        state.ResumeTiming();
    }
}

void BM_DialogSortByPrice(benchmark::State& state) {
    ListFolder();
    for (auto _ : state) {
        state.PauseTiming();
        auto editor = std::make_unique<Editor>();
        editor->Open();
        editor->ClickPriceHeading();  // Price becomes the sort column, ascending
        editor->Open();               // back to the file's order
        state.ResumeTiming();
        editor->ClickPriceHeading();  // descending, from the file's order
        state.PauseTiming();
        editor.reset();
        state.ResumeTiming();
    }
}

void BM_DialogSave(benchmark::State& state) {
    ListFolder();
    Editor editor;
    editor.Open();
    QPushButton* save = qobject_cast<QPushButton*>(GetDlgItem(*editor.dialog, IDC_PRICE_SAVE));
    for (auto _ : state) {
        state.PauseTiming();
        editor.dialog->Grid().SetModified(1);
        save->setEnabled(true);
        state.ResumeTiming();
        QTest::mouseClick(save, Qt::LeftButton);
        state.PauseTiming();
        if (editor.dialog->Grid().IsModified()) std::abort();
        state.ResumeTiming();
    }
}

// The same rows the plain Qt way: read with QFile, split, items into a model, a view shown.
struct Table {
    QStandardItemModel model;
    QTableView view;
    Table() : model(0, 3) { view.resize(700, 400); }
};

void LoadTable(Table& table) {
    QFile file(QString::fromStdWString(ListPath()));
    if (!file.open(QIODevice::ReadOnly)) std::abort();
    const QStringList lines = QString::fromUtf8(file.readAll()).split(QLatin1Char('\n'));
    table.model.setRowCount(static_cast<int>(lines.size()) - 1);
    for (int row = 0; row + 1 < lines.size(); ++row) {
        const QStringList fields = lines[row].split(QLatin1Char('|'));
        table.model.setItem(row, 0, new QStandardItem(fields.value(0)));
        auto* price = new QStandardItem;
        price->setData(fields.value(1).toDouble(), Qt::DisplayRole);
        table.model.setItem(row, 1, price);
        table.model.setItem(row, 2, new QStandardItem(fields.value(2)));
    }
    table.view.setModel(&table.model);
    table.view.show();
    QApplication::processEvents();
}

void BM_TableViewOpen(benchmark::State& state) {
    ListFolder();
    for (auto _ : state) {
        state.PauseTiming();
        auto table = std::make_unique<Table>();
        state.ResumeTiming();
        LoadTable(*table);
        state.PauseTiming();
        table.reset();
        state.ResumeTiming();
    }
}

void BM_TableViewSortByPrice(benchmark::State& state) {
    ListFolder();
    for (auto _ : state) {
        state.PauseTiming();
        auto table = std::make_unique<Table>();
        LoadTable(*table);
        state.ResumeTiming();
        table->model.sort(1, Qt::DescendingOrder);
        QApplication::processEvents();
        state.PauseTiming();
        table.reset();
        state.ResumeTiming();
    }
}

void BM_TableViewSave(benchmark::State& state) {
    ListFolder();
    Table table;
    LoadTable(table);
    const QString path = QString::fromStdWString((ListFolder() / "table.prc").wstring());
    for (auto _ : state) {
        QFile file(path);
        if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate)) std::abort();
        QTextStream out(&file);
        for (int row = 0; row < table.model.rowCount(); ++row) {
            out << table.model.item(row, 0)->text() << '|' << table.model.item(row, 1)->text() << '|'
                << table.model.item(row, 2)->text() << '\n';
        }
    }
}

BENCHMARK(BM_DialogOpen)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_TableViewOpen)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_DialogSortByPrice)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_TableViewSortByPrice)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_DialogSave)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_TableViewSave)->Unit(benchmark::kMillisecond);

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
