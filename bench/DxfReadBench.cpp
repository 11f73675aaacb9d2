// Reading a large drawing and counting its model-space references by block name: the DXF database
// against a plain scan of the same file that only counts the names after "INSERT" lines.
#include <benchmark/benchmark.h>
#include <sys/resource.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <map>
#include <memory>
#include <string>
#include <unordered_map>

#include "host/dxf/dxfdocument.h"

namespace {

std::filesystem::path drawingPath() {
    const char* path = std::getenv("TARNWICK_BENCH_DRAWING");
    return path != nullptr ? path : TARNWICK_BENCH_DRAWING;
}

// Peak resident memory of the whole process so far, beside the file's size.
void reportMemory(benchmark::State& state) {
    rusage usage{};
    ::getrusage(RUSAGE_SELF, &usage);
    const double peak = static_cast<double>(usage.ru_maxrss) * 1024.0;
    const double size = static_cast<double>(std::filesystem::file_size(drawingPath()));
    state.counters["file_MB"] = size / 1e6;
    state.counters["peak_rss_MB"] = peak / 1e6;
    state.counters["peak_per_file"] = peak / size;
}

using Counts = std::map<std::string, long>;

// The baseline: the file read whole, then its lines walked in pairs; after "0 INSERT" the next
// code 2 is the block name. No checks, no structure, nothing kept but the counts.
Counts plainScan(const std::filesystem::path& path) {
    std::unique_ptr<std::FILE, int (*)(std::FILE*)> file(std::fopen(path.c_str(), "rb"),
                                                         std::fclose);
    if (!file) return {};
    const auto size = static_cast<std::size_t>(std::filesystem::file_size(path));
    auto data = std::make_unique_for_overwrite<char[]>(size);
    if (std::fread(data.get(), 1, size, file.get()) != size) return {};
    std::unordered_map<std::string_view, long> counts;
    const char* p = data.get();
    const char* const end = p + size;
    bool afterInsert = false;
    while (p < end) {
        const auto* codeEnd =
            static_cast<const char*>(std::memchr(p, '\n', static_cast<std::size_t>(end - p)));
        if (codeEnd == nullptr) break;
        const char* value = codeEnd + 1;
        const auto* valueEnd = static_cast<const char*>(
            std::memchr(value, '\n', static_cast<std::size_t>(end - value)));
        if (valueEnd == nullptr) valueEnd = end;
        std::string_view text(value, static_cast<std::size_t>(valueEnd - value));
        if (!text.empty() && text.back() == '\r') text.remove_suffix(1);
        const int code = std::atoi(p);
        if (code == 0) {
            afterInsert = text == "INSERT";
        } else if (code == 2 && afterInsert) {
            ++counts[text];
            afterInsert = false;
        }
        p = valueEnd + 1;
    }
    return Counts(counts.begin(), counts.end());
}

Counts readAndCount(const std::filesystem::path& path, std::string& error) {
    auto document = DxfDocument::readFile(path);
    if (!document.isOk()) {
        error = document.errorString();
        return {};
    }
    std::unordered_map<std::wstring_view, long> counts;
    for (const DxfReference& reference : document.value()->blockReferences(DxfSpace::Model))
        ++counts[reference.blockName];
    Counts named;
    for (const auto& [name, count] : counts) named[std::string(name.begin(), name.end())] = count;
    return named;
}

void reportCounts(benchmark::State& state, const Counts& counts) {
    long total = 0;
    for (const auto& [name, count] : counts) total += count;
    state.counters["references"] = static_cast<double>(total);
    state.counters["names"] = static_cast<double>(counts.size());
}

void DxfDocumentReadAndCount(benchmark::State& state) {
    Counts counts;
    std::string error;
    for (auto _ : state) {
        counts = readAndCount(drawingPath(), error);
        if (!error.empty()) {
            state.SkipWithError(error.c_str());
            return;
        }
    }
    reportMemory(state);
    reportCounts(state, counts);
    // Both ways must count the same, or the comparison means nothing.
    if (counts != plainScan(drawingPath()))
        state.SkipWithError("the counts differ from the plain scan");
}

void PlainScanBaseline(benchmark::State& state) {
    Counts counts;
    for (auto _ : state) counts = plainScan(drawingPath());
    if (counts.empty()) state.SkipWithError(("cannot read " + drawingPath().string()).c_str());
    reportCounts(state, counts);
}

// Registered first, so that its peak memory is not the baseline's.
BENCHMARK(DxfDocumentReadAndCount)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(PlainScanBaseline)->Unit(benchmark::kMillisecond)->UseRealTime();

}  // namespace

BENCHMARK_MAIN();
