// How the costs of the library grow: with the titles of a file, with the files of a
// directory, with the bytes of a text. The codecs stand beside the platform's iconv.
//
// A file of n titles is a forest of top-level titles with nine titles each, three symbols in
// every block, and one chain of nine titles at its end, whose last is the deepest title.
#include <benchmark/benchmark.h>
#include <iconv.h>
#include <stdlib.h>

#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string>
#include <vector>

#include "accsym.h"
#include "common/acccom.h"

namespace {

namespace fs = std::filesystem;

/** A scratch directory for files and for the working temp file. */
class Directory {
  public:
    Directory() {
        std::string name = (fs::temp_directory_path() / "accsym-bench-XXXXXX").string();
        if (!mkdtemp(name.data())) throw std::runtime_error("no scratch directory");
        path_ = name;
    }
    ~Directory() { fs::remove_all(path_); }
    Directory(const Directory &) = delete;
    Directory &operator=(const Directory &) = delete;

    std::string path() const { return path_.string(); }
    void put(const std::string &name, const std::string &content) const {
        std::ofstream(path_ / name, std::ios::binary) << content;
    }

  private:
    fs::path path_;
};

/** A record with buffers of the least sizes. */
class Host {
  public:
    Host() {
        record.lpchResult = take(ACC_SIZE_RESULT);
        record.lpchDisplay = take(ACC_SIZE_DISPLAY);
        record.lpchMessage = take(ACC_SIZE_MESSAGE);
        record.lpchStatus = take(ACC_SIZE_MESSAGE);
        for (ListBox &list : record.tListBox) {
            list.lpchLBLevel = take(ACC_SIZE_LB_LEVEL);
            list.lpchLBList = take(ACC_SIZE_LB_LIST);
            list.lpchLBListInfo = take(ACC_SIZE_LB_LISTINFO);
            list.lpchLBItemInfo = take(ACC_SIZE_LB_ITEMINFO);
        }
    }

    /** Runs a command, all directories being the one given; ends with an error unless it says 1. */
    void run(int command, std::string string1 = "", std::string directory = "") {
        record.wVkey = static_cast<unsigned short>(command);
        record.lpchString1 = reinterpret_cast<unsigned char *>(string1.data());
        record.lpchString2 = record.lpchString3 = record.lpchString4 =
            reinterpret_cast<unsigned char *>(directory.data());
        const int result = AccSym(&record);
        if (result != ACC_RET_OK) {
            throw std::runtime_error(std::to_string(command) + ": result " +
                                     std::to_string(result));
        }
    }

    Accdata record{};

  private:
    unsigned char *take(std::size_t size) {
        buffers_.emplace_back(size);
        return buffers_.back().data();
    }
    std::vector<std::vector<unsigned char>> buffers_;
};

const std::string hyphens(40, '-');
const std::string head = "\xA1\xD2\xB5\xAD\xB9\xE6\xA1\xD3\n\xCC\xBE\xBE\xCE="; // 〈記号〉, 名称=
const std::string separator_euc = "\xA1\xBF", separator_sjis = "\x81\x5E";      // ／

std::string block(const std::string &path) {
    return "\xA1\xCE" + path + "\xA1\xCF\n" + hyphens + "\n\xA1\xF9\xA1\xFA\xA1\xFB\n" + hyphens +
           "\n";
}

std::string joined(int levels, const std::string &separator) {
    std::string path = "d";
    for (int i = 1; i < levels; ++i) path += separator + "d";
    return path;
}

constexpr int chain = 9;

std::string file_of(int titles) {
    std::string file = head + "F\n";
    for (int i = 0; i < titles - chain; ++i) {
        std::string path = std::to_string(i / 10);
        if (i % 10 != 0) path += separator_euc + std::to_string(i % 10);
        file += block(path);
    }
    for (int level = 1; level <= chain; ++level) file += block(joined(level, separator_euc));
    return file;
}

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

constexpr std::size_t mebibyte = 1024 * 1024;

/** One MiB of EUC-JP: kanji and kana in lines of 40 characters. */
std::string euc_text() {
    std::string text;
    for (unsigned i = 0; text.size() < mebibyte; ++i) {
        text += static_cast<char>(0xB0 + i % 31);
        text += static_cast<char>(0xA1 + i * 7 % 94);
        if (i % 40 == 39) text += '\n';
    }
    return text;
}

std::string through_iconv(const char *to, const char *from, const std::string &input) {
    const iconv_t codec = iconv_open(to, from);
    std::string output(2 * input.size(), '\0');
    char *in = const_cast<char *>(input.data());
    char *out = output.data();
    std::size_t in_left = input.size(), out_left = output.size();
    const std::size_t failed = iconv(codec, &in, &in_left, &out, &out_left);
    iconv_close(codec);
    if (failed == static_cast<std::size_t>(-1)) throw std::runtime_error("iconv refuses the text");
    output.resize(output.size() - out_left);
    return output;
}

void throughput(benchmark::State &state, std::size_t bytes) {
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * bytes));
}

void whole_text(benchmark::State &state, unsigned char *(*convert)(const unsigned char *),
                const std::string &input) {
    for (auto _ : state) {
        unsigned char *const output =
            convert(reinterpret_cast<const unsigned char *>(input.c_str()));
        benchmark::DoNotOptimize(output[0]);
        CM_free(output);
    }
    throughput(state, input.size());
}

void euc2sjis(benchmark::State &state) {
    whole_text(state, CM_euc2sjis, euc_text());
}

void sjis2euc(benchmark::State &state) {
    whole_text(state, CM_sjis2euc, through_iconv("CP932", "EUC-JP", euc_text()));
}

void iconv_text(benchmark::State &state, const char *to, const char *from,
                const std::string &input) {
    for (auto _ : state) benchmark::DoNotOptimize(through_iconv(to, from, input));
    throughput(state, input.size());
}

void iconv_euc2sjis(benchmark::State &state) {
    iconv_text(state, "SHIFT_JIS", "EUC-JP", euc_text());
}

void iconv_sjis2euc(benchmark::State &state) {
    iconv_text(state, "EUC-JP", "SHIFT_JIS", through_iconv("SHIFT_JIS", "EUC-JP", euc_text()));
}

/** The Unicode conversions take at most 65535 bytes a call; the text has no line ends. */
constexpr std::size_t piece = 32000;

std::string sjis_piece() {
    std::string text = euc_text();
    std::erase(text, '\n');
    return through_iconv("SHIFT_JIS", "EUC-JP", text.substr(0, piece));
}

template <typename Convert>
void one_piece(benchmark::State &state, Convert convert, const std::string &input) {
    std::vector<unsigned char> output(input.size() + 2);
    const auto bytes = static_cast<unsigned short>(input.size());
    for (auto _ : state) {
        convert(output.data(), bytes, reinterpret_cast<const unsigned char *>(input.data()), bytes);
        benchmark::DoNotOptimize(output[0]);
    }
    throughput(state, input.size());
}

void SjisToUnicode(benchmark::State &state) {
    one_piece(state, CM_SjisToUnicode, sjis_piece());
}

void UnicodeToSjis(benchmark::State &state) {
    one_piece(state, CM_UnicodeToSjis, through_iconv("UTF-16BE", "SHIFT_JIS", sjis_piece()));
}

void iconv_UnicodeToSjis(benchmark::State &state) {
    iconv_text(state, "SHIFT_JIS", "UTF-16BE",
               through_iconv("UTF-16BE", "SHIFT_JIS", sjis_piece()));
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
BENCHMARK(euc2sjis)->Unit(benchmark::kMicrosecond);
BENCHMARK(iconv_euc2sjis)->Unit(benchmark::kMicrosecond);
BENCHMARK(sjis2euc)->Unit(benchmark::kMicrosecond);
BENCHMARK(iconv_sjis2euc)->Unit(benchmark::kMicrosecond);
BENCHMARK(SjisToUnicode)->Unit(benchmark::kMicrosecond);
BENCHMARK(UnicodeToSjis)->Unit(benchmark::kMicrosecond);
BENCHMARK(iconv_UnicodeToSjis)->Unit(benchmark::kMicrosecond);

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
