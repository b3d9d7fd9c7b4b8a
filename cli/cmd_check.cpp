// cmd_check.cpp - kigou check: what is wrong in symbol files.
#include <iostream>
#include <memory>

#include "cli/command.h"
#include "cli/json.h"
#include "cli/output.h"
#include "picker/check.h"
#include "picker/editing.h"
#include "picker/failure.h"
#include "picker/file_bytes.h"

namespace kigou {
namespace {

nlohmann::ordered_json to_json(const std::string &path, const CheckedFile &file) {
    nlohmann::ordered_json json = {{"path", path},
                                   {"title", file.title},
                                   {"titles", file.blocks},
                                   {"symbols", file.symbols},
                                   {"findings", nlohmann::json::array()}};
    for (const Finding &finding : file.findings) {
        json["findings"].push_back(
            {{"line", finding.line}, {"kind", finding.kind}, {"text", finding.text}});
    }
    json["more"] = file.more;
    return json;
}

void print(const std::string &path, const CheckedFile &file) {
    for (const Finding &finding : file.findings) {
        std::cout << printable(path) << ':' << finding.line << ": " << printable(finding.text)
                  << '\n';
    }
    if (file.more != 0) std::cout << printable(path) << ": " << file.more << " more findings\n";
    if (!file.findings.empty()) return;
    std::cout << path << ": clean (" << printable(file.title) << ", "
              << counted(file.blocks, "title") << ", " << counted(file.symbols, "symbol") << ")\n";
}

Status run(const Context &context, const std::vector<std::string> &paths) {
    Status status = Status::found;
    nlohmann::ordered_json json = {{"files", nlohmann::json::array()}};
    for (const std::string &path : paths) {
        try {
            const CheckedFile file = check_symbol_file(read_file(path).bytes);
            if (!file.findings.empty() && status == Status::found) status = Status::findings;
            if (context.json) {
                json["files"].push_back(to_json(path, file));
            } else {
                print(path, file);
            }
        } catch (const Failure &failure) {
            // The others can be checked all the same.
            if (context.json) {
                json["files"].push_back({{"path", path}, {"error", failure.what()}});
            } else {
                complain(failure.what());
            }
            status = Status::failed;
        }
    }
    if (context.json) write(json);
    return status;
}

Body declare(Arguments &arguments) {
    const auto paths = std::make_shared<std::vector<std::string>>();
    arguments.words("FILE", Value::file, *paths, "Symbol files, by their names on disk");
    return [paths](const Context &context) { return run(context, *paths); };
}

} // namespace

const Command check_command{.name = "check",
                            .summary = "List what is wrong in symbol files, line by line",
                            .examples =
                                "  kigou check ~/.local/share/kigou/*.kig\n"
                                "  kigou check --json new.kig",
                            .declare = declare,
                            .exit_status = "0 clean, 1 findings, 2 a file cannot be read"};

} // namespace kigou
