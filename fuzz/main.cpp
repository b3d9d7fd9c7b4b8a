// Replays a corpus through a fuzz target, and seeded mutations of it.
//
//   TARGET [--mutate N] [--seed S] [--first I] [--out FILE] CORPUS...
//
// CORPUS is a file or a directory of files. Mutation I depends on S, I and the corpus
// alone, so "--first I --mutate 1" repeats the one that failed; --out writes the input to a
// file before it is run.
#include <algorithm>
#include <csignal>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "fuzz/choice.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size);

namespace {

namespace fs = std::filesystem;
using Bytes = std::vector<std::uint8_t>;

char running[4096] = "nothing yet"; // for the signal handler
std::string out_path;

void report(int signal) {
    std::fprintf(stderr, "failed on %s\n", running);
    std::signal(signal, SIG_DFL);
    std::raise(signal);
}

void run(const Bytes &input, const std::string &name) {
    std::snprintf(running, sizeof running, "%s", name.c_str());
    if (!out_path.empty()) {
        std::ofstream(out_path, std::ios::binary)
            .write(reinterpret_cast<const char *>(input.data()),
                   static_cast<std::streamsize>(input.size()));
    }
    LLVMFuzzerTestOneInput(input.data(), input.size());
}

/** A random stretch of the bytes. */
Bytes stretch(const Bytes &bytes, Choice &choice) {
    const std::size_t from = choice.below(bytes.size());
    const std::size_t length = std::min(choice.below(120), bytes.size() - from);
    const auto begin = bytes.begin() + static_cast<std::ptrdiff_t>(from);
    return {begin, begin + static_cast<std::ptrdiff_t>(length)};
}

void insert(Bytes &bytes, const Bytes &what, Choice &choice) {
    const std::size_t at = choice.below(bytes.size() + 1);
    bytes.insert(bytes.begin() + static_cast<std::ptrdiff_t>(at), what.begin(), what.end());
}

void change_byte(Bytes &bytes, Choice &choice) {
    // Bytes that mean something to the formats are as likely as all others together.
    static constexpr std::uint8_t telling[] = {0x00, 0x0A, 0x0D, '-',  '=',  0x5E, 0x6D, 0x6E,
                                               0x81, 0x8E, 0xA1, 0xBF, 0xCE, 0xCF, 0xFC, 0xFE};
    const std::uint8_t value = choice.below(2) ? telling[choice.below(std::size(telling))]
                                               : static_cast<std::uint8_t>(choice.below(256));
    if (!bytes.empty()) bytes[choice.below(bytes.size())] = value;
}

Bytes mutate(const std::vector<Bytes> &corpus, Choice &choice) {
    Bytes bytes = corpus[choice.below(corpus.size())];
    for (std::size_t steps = 1 + choice.below(6); steps > 0; --steps) {
        switch (choice.below(7)) {
            case 0: { // a cut out of the middle
                const std::size_t from = choice.below(bytes.size());
                const std::size_t length = std::min(choice.below(40), bytes.size() - from);
                const auto begin = bytes.begin() + static_cast<std::ptrdiff_t>(from);
                bytes.erase(begin, begin + static_cast<std::ptrdiff_t>(length));
                break;
            }
            case 1: // the end
                if (choice.below(3) == 0) bytes.resize(choice.below(bytes.size() + 1));
                break;
            case 2: // a piece of itself once more
                insert(bytes, stretch(bytes, choice), choice);
                break;
            case 3: // a piece of another input
                insert(bytes, stretch(corpus[choice.below(corpus.size())], choice), choice);
                break;
            case 4:
                insert(bytes,
                       Bytes(1 + choice.below(3), static_cast<std::uint8_t>(choice.below(256))),
                       choice);
                break;
            default:
                change_byte(bytes, choice);
        }
    }
    return bytes;
}

std::vector<fs::path> files_of(const fs::path &path) {
    if (!fs::is_directory(path)) return {path};
    std::vector<fs::path> files;
    for (const fs::directory_entry &entry : fs::directory_iterator(path)) {
        if (entry.is_regular_file()) files.push_back(entry.path());
    }
    std::sort(files.begin(), files.end());
    return files;
}

} // namespace

int main(int argc, char **argv) {
    std::uint64_t mutations = 0, seed = 1, first = 0;
    std::vector<Bytes> corpus;
    for (const int signal : {SIGABRT, SIGSEGV, SIGFPE, SIGTERM}) std::signal(signal, report);
    for (int i = 1; i < argc; ++i) {
        const std::string argument = argv[i];
        if (argument.starts_with("--") && i + 1 < argc) {
            const char *value = argv[++i];
            if (argument == "--mutate") mutations = std::strtoull(value, nullptr, 10);
            if (argument == "--seed") seed = std::strtoull(value, nullptr, 10);
            if (argument == "--first") first = std::strtoull(value, nullptr, 10);
            if (argument == "--out") out_path = value;
            continue;
        }
        for (const fs::path &path : files_of(argument)) {
            std::ifstream file(path, std::ios::binary);
            corpus.emplace_back(std::istreambuf_iterator<char>(file),
                                std::istreambuf_iterator<char>());
            run(corpus.back(), path.string());
        }
    }
    if (corpus.empty()) {
        std::fprintf(stderr, "%s: no corpus\n", argv[0]);
        return 2;
    }
    for (std::uint64_t i = first; i < first + mutations; ++i) {
        Choice choice(seed, i);
        run(mutate(corpus, choice),
            "--seed " + std::to_string(seed) + " --first " + std::to_string(i));
    }
    std::printf("%zu inputs, %llu mutations\n", corpus.size(),
                static_cast<unsigned long long>(mutations));
    return 0;
}
