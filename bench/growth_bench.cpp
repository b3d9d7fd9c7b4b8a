// How the costs of the library grow: with the titles of a file, and with the files of a
// directory.
//
// A file of n titles is a forest of top-level titles with nine titles each, three symbols in
// every block, and one chain of nine titles at its end, whose last is the deepest title.
#include <benchmark/benchmark.h>

#include <string>
#include <vector>

#include "bench/host.h"

namespace {

/** Runs one command over and over on an open file of state.range(0) titles. */
template <typename Prepare>
void on_open_file(benchmark::State &state, int command, const std::string &string1,
                  Prepare prepare) {
    const Directory directory;
    const auto titles = static_cast<int>(state.range(0));
    directory.put("f.kig", file_of(titles));
    Host host;
    host.run(ACC_VKEY_FILE_OPEN, "F", directory.path());
    for (auto _ : state) {
        prepare(host);
        host.run(command, string1);
    }
    state.counters["cut_short"] = host.record.cchMessage != 0;
    host.run(ACC_VKEY_FILE_CLOSE);
    state.SetComplexityN(titles);
}

void open_and_close(benchmark::State &state) {
    const Directory directory;
    const auto titles = static_cast<int>(state.range(0));
    directory.put("f.kig", file_of(titles));
    Host host;
    for (auto _ : state) {
        host.run(ACC_VKEY_FILE_OPEN, "F", directory.path());
        host.run(ACC_VKEY_FILE_CLOSE);
    }
    state.SetComplexityN(titles);
}

void show_list_1(benchmark::State &state) {
    on_open_file(state, ACC_VKEY_SET_POSITION, "F",
                 [](Host &host) { host.record.wCurrentList = 1; });
}

void position_on_deepest(benchmark::State &state) {
    on_open_file(state, ACC_VKEY_SET_POSITION, "F" + separator_sjis + joined(chain, separator_sjis),
                 [](Host &host) { host.record.wCurrentList = 10; });
}

void tree_titles(benchmark::State &state) {
    on_open_file(state, ACC_VKEY_TREE_TITLES, "", [](Host &) {});
}

/** The file titles of a directory of state.range(0) symbol files. */
void catalogue(benchmark::State &state) {
    const Directory directory;
    const auto files = static_cast<int>(state.range(0));
    const std::string blocks = block("a") + block("b");
    for (int i = 0; i < files; ++i) {
        std::string content = head;
        content += std::to_string(i) + '\n';
        directory.put(std::to_string(i) + ".kig", content + blocks);
    }
    Host host;
    host.run(ACC_VKEY_FILE_OPEN, "0", directory.path());
    for (auto _ : state) host.run(ACC_VKEY_FILE_TITLES);
    host.run(ACC_VKEY_FILE_CLOSE);
    state.SetComplexityN(files);
}

void by_titles(benchmark::internal::Benchmark *benchmark) {
    for (int titles = 1000; titles <= 32000; titles *= 2) benchmark->Arg(titles);
    benchmark->Unit(benchmark::kMicrosecond);
}

void by_files(benchmark::internal::Benchmark *benchmark) {
    for (int files = 100; files <= 3200; files *= 2) benchmark->Arg(files);
    benchmark->Unit(benchmark::kMicrosecond);
}

BENCHMARK(open_and_close)->Apply(by_titles)->Complexity(benchmark::oNLogN);
BENCHMARK(show_list_1)->Apply(by_titles)->Complexity(benchmark::oNLogN);
BENCHMARK(position_on_deepest)->Apply(by_titles)->Complexity(benchmark::oNLogN);
BENCHMARK(tree_titles)->Apply(by_titles); // level once lpchDisplay is full
BENCHMARK(catalogue)->Apply(by_files)->Complexity(benchmark::oN);

} // namespace

int main(int argc, char **argv) {
    benchmark::AddCustomContext("compiler", ACC_COMPILER);
    benchmark::AddCustomContext("flags", ACC_FLAGS);
    benchmark::AddCustomContext("file of 1000 titles, bytes", std::to_string(file_of(1000).size()));
    benchmark::AddCustomContext("file of 32000 titles, bytes",
                                std::to_string(file_of(32000).size()));
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
}
