// How the costs of the core of the front ends grow: with titles, files, symbols and what is
// typed. Reading and converting the same bytes stands beside them as what must be paid anyway.
#include <benchmark/benchmark.h>

#include <chrono>
#include <string>
#include <thread>

#include "bench/scratch_sets.h"
#include "picker/check.h"
#include "picker/editing.h"
#include "picker/failure.h"
#include "picker/file_bytes.h"
#include "picker/search/search.h"
#include "picker/set_formats.h"
#include "picker/set_import.h"
#include "picker/snapshot.h"
#include "picker/symbol_places.h"

namespace {

using namespace kigou;

void read_and_convert(benchmark::State &state) {
    const Folders folders;
    const std::string path = folders.put("a.kig", set_of_titles("例", state.range(0)));
    for (auto _ : state) benchmark::DoNotOptimize(text_form(read_file(path).bytes));
    state.SetComplexityN(state.range(0));
}

void snapshot(benchmark::State &state) {
    const Folders folders;
    const std::string path = folders.put("a.kig", set_of_titles("例", state.range(0)));
    for (auto _ : state) benchmark::DoNotOptimize(Snapshot(path).size());
    state.SetComplexityN(state.range(0));
}

void check(benchmark::State &state) {
    const Folders folders;
    const std::string path = folders.put("a.kig", set_of_titles("例", state.range(0)));
    for (auto _ : state) {
        benchmark::DoNotOptimize(check_symbol_file(read_file(path).bytes).findings.size());
    }
    state.SetComplexityN(state.range(0));
}

/** A new set of so many titles out of an export, saved. */
void import(benchmark::State &state) {
    const std::string text = set_of_titles("例", state.range(0));
    for (auto _ : state) {
        const Folders folders;
        LeftOutList left_out;
        const auto *bytes = reinterpret_cast<const unsigned char *>(text.data());
        const SymbolSet set = read_set({bytes, text.size()}, Format::text, left_out);
        Edit edit(folders.directories(), {}, {}, true);
        edit.create(typed_title("例"));
        import_set(edit, set, left_out);
        if (!edit.finish().saved) state.SkipWithError("not saved");
    }
    state.SetComplexityN(state.range(0));
}

/** Where a symbol stands, in so many files of 60 titles each. */
void places_in_files(benchmark::State &state) {
    const Folders folders;
    for (std::int64_t i = 0; i < state.range(0); ++i) {
        folders.put(std::to_string(i) + ".kig", set_of_titles("例" + std::to_string(i), 60));
    }
    for (auto _ : state) {
        const SymbolPlaces places =
            places_of({typed_title("◇").sjis}, find_sets(folders.directories()).sets);
        if (places.paths[0].size() != 60 * static_cast<std::size_t>(state.range(0))) {
            state.SkipWithError("not all were found");
        }
    }
    state.SetComplexityN(state.range(0));
}

/** Where a symbol stands in a file with one title of so many symbols. */
void places_in_symbols(benchmark::State &state) {
    const Folders folders;
    std::string symbols;
    for (std::int64_t i = 0; i < state.range(0); ++i) symbols += "★";
    folders.put("a.kig", "〈記号〉\n名称=例\n［星］\n" + rule + symbols + "→\n" + rule);
    for (auto _ : state) {
        const SymbolPlaces places =
            places_of({typed_title("→").sjis}, find_sets(folders.directories()).sets);
        if (places.paths[0].size() != 1) state.SkipWithError("not found");
    }
    state.SetComplexityN(state.range(0));
}

/** So many bytes of which none can be a symbol. */
void refused_characters(benchmark::State &state) {
    const std::string piece(65536, '\0');
    for (auto _ : state) {
        TypedSymbols typed(Reading::escaped);
        for (std::int64_t i = 0; i < state.range(0); i += 65536) typed.add_text(piece);
        try {
            typed.finish();
            state.SkipWithError("not refused");
        } catch (const Failure &) {
        }
    }
    state.SetComplexityN(state.range(0));
}

/** Sets with so many symbols in titles of ten, 200 a file: 1,000,000 in 5,000 files at most. */
void put_sets(const Folders &folders, std::int64_t symbols) {
    constexpr std::int64_t titles_a_file = 20;
    for (std::int64_t i = 0; i < symbols / (10 * titles_a_file); ++i) {
        folders.put(std::to_string(i) + ".kig",
                    set_of_titles("例" + std::to_string(i), titles_a_file));
    }
}

/** The index of all sets, from nothing. */
void index_sets(benchmark::State &state) {
    const Folders folders;
    put_sets(folders, state.range(0));
    for (auto _ : state) {
        SearchIndex index;
        index.refresh(find_sets(folders.directories()));
        benchmark::DoNotOptimize(index.size());
    }
    state.SetComplexityN(state.range(0));
}

/** The same where nothing was changed since. */
void index_again(benchmark::State &state) {
    const Folders folders;
    put_sets(folders, state.range(0));
    std::this_thread::sleep_for(std::chrono::seconds(2)); // younger files are read again
    SearchIndex index;
    index.refresh(find_sets(folders.directories()));
    for (auto _ : state) index.refresh(find_sets(folders.directories()));
    state.SetComplexityN(state.range(0));
}

/** What is typed: a reading, romaji, the start of all titles, a code, a symbol, a slip. */
constexpr const char *typed[] = {"やじるし", "yaji", "題", "1-78", "★", "yajirusu"};

void search_sets(benchmark::State &state) {
    const Folders folders;
    put_sets(folders, state.range(0));
    SearchIndex index;
    index.refresh(find_sets(folders.directories()));
    const char *const text = typed[state.range(1)];
    state.SetLabel(text);
    for (auto _ : state) benchmark::DoNotOptimize(search(index, text).found.size());
}

void sizes(benchmark::internal::Benchmark *bench, std::int64_t from, std::int64_t to) {
    bench->RangeMultiplier(2)->Range(from, to)->Complexity()->Unit(benchmark::kMillisecond);
}

BENCHMARK(read_and_convert)->Apply([](auto *bench) { sizes(bench, 12500, 100000); });
BENCHMARK(snapshot)->Apply([](auto *bench) { sizes(bench, 12500, 100000); });
BENCHMARK(check)->Apply([](auto *bench) { sizes(bench, 12500, 100000); });
BENCHMARK(import)->Apply([](auto *bench) { sizes(bench, 1250, 10000); });
BENCHMARK(places_in_files)->Apply([](auto *bench) { sizes(bench, 640, 5120); });
BENCHMARK(places_in_symbols)->Apply([](auto *bench) { sizes(bench, 4000, 32000); });
BENCHMARK(index_sets)->Apply([](auto *bench) { sizes(bench, 10000, 1000000); });
BENCHMARK(index_again)->Apply([](auto *bench) { sizes(bench, 10000, 1000000); });
BENCHMARK(search_sets)
    ->ArgsProduct({{10000, 100000, 1000000}, {0, 1, 2, 3, 4, 5}})
    ->Unit(benchmark::kMillisecond);
BENCHMARK(refused_characters)->Apply([](auto *bench) { sizes(bench, 1 << 20, 8 << 20); });

} // namespace

BENCHMARK_MAIN();
