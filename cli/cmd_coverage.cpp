// cmd_coverage.cpp - kigou coverage: which non-kanji of JIS X 0208 sets have.
#include <iostream>
#include <map>
#include <memory>

#include "cli/command.h"
#include "cli/json.h"
#include "cli/output.h"
#include "cli/set_word.h"
#include "picker/codes.h"
#include "picker/compare/coverage.h"
#include "picker/title.h"

namespace kigou {
namespace {

void print(const Coverage &coverage) {
    std::cout << coverage.all - coverage.missing.size() << " of " << coverage.all
              << " non-kanji of JIS X 0208\n";
    std::map<unsigned, std::string> rows;
    for (const Sjis &symbol : coverage.missing) {
        const std::string kuten = codes_of(symbol).kuten;
        rows[number_of(kuten.substr(0, kuten.find('-')), 10).value_or(0)] += to_utf8(symbol);
    }
    for (const auto &[row, symbols] : rows) {
        std::cout << "missing of row " << row << ": " << printable(symbols) << '\n';
    }
    for (const RepeatedSymbol &one : coverage.repeated) {
        std::cout << to_utf8(one.symbol) << " stands " << one.paths.size() << " times:";
        for (const std::string &path : one.paths) std::cout << ' ' << printable(path);
        std::cout << '\n';
    }
}

Status run(const Context &context, const std::vector<std::string> &words) {
    std::vector<Snapshot> sets;
    sets.reserve(words.size());
    for (const std::string &word : words) sets.push_back(set_of_word(context, word));
    if (sets.empty()) sets.push_back(set_of_word(context, std::string(standard_title)));
    const Coverage coverage = coverage_of(sets);
    if (context.json) {
        nlohmann::ordered_json json = {{"all", coverage.all},
                                       {"missing", nlohmann::json::array()},
                                       {"repeated", nlohmann::json::array()}};
        for (const Sjis &symbol : coverage.missing)
            json["missing"].push_back(json_of(codes_of(symbol)));
        for (const RepeatedSymbol &one : coverage.repeated) {
            json["repeated"].push_back({{"symbol", to_utf8(one.symbol)}, {"paths", one.paths}});
        }
        write(json);
    } else {
        print(coverage);
    }
    return coverage.missing.empty() ? Status::found : Status::findings;
}

Body declare(Arguments &arguments) {
    const auto words = std::make_shared<std::vector<std::string>>();
    arguments.words("SET", Value::file_title, *words,
                    "Sets that are looked at together: titles, or names of files (default: "
                    "標準の記号)",
                    0);
    return [words](const Context &context) { return run(context, *words); };
}

} // namespace

const Command coverage_command{
    .name = "coverage",
    .summary = "Tell which non-kanji of JIS X 0208 sets lack, and which stand there several times",
    .examples =
        "  kigou coverage\n"
        "  kigou coverage 私の記号 拡張の記号",
    .declare = declare,
    .exit_status = "0 none is missing, 1 some are, 2 a set cannot be read"};

} // namespace kigou
