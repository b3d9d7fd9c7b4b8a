// manual.cpp - writes the manual pages of kigou and its commands into a folder, from the same
// table as their help. A program of the build, which is not installed.
#include <exception>
#include <fstream>
#include <iostream>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "cli/command_line.h"
#include "cli/help_texts.h"
#include "cli/manual_page.h"

namespace kigou {
namespace {

void write_file(const std::string &folder, const std::string &name, const std::string &roff) {
    const std::string path = folder + "/" + name + ".1";
    std::ofstream file(path);
    file << roff;
    file.close();
    if (!file) throw std::runtime_error(path + " cannot be written");
}

std::string heading_of(const Argument &argument) {
    if (argument.is_word()) return italic(argument.names.front());
    std::string roff;
    for (const std::string &name : argument.names) roff += (roff.empty() ? "" : ", ") + bold(name);
    const std::string value = argument.value_name();
    if (argument.value == Value::choice) return roff + " " + escaped(value);
    return value.empty() ? roff : roff + " " + italic(value);
}

/** @return whether there are any */
bool write_options(ManualPage &page, const Declared &declared) {
    bool any = false;
    for (const Argument &argument : declared.arguments) {
        if (argument.is_word()) continue;
        page.item(heading_of(argument), argument.help);
        any = true;
    }
    return any;
}

void write_examples(ManualPage &page, std::string_view examples) {
    page.section("EXAMPLES");
    page.request("EX");
    while (!examples.empty()) {
        const auto end = examples.find('\n');
        page.line(escaped(examples.substr(0, end)));
        examples.remove_prefix(end == std::string_view::npos ? examples.size() : end + 1);
    }
    page.request("EE");
}

void write_exit_status(ManualPage &page, const char *statuses) {
    page.section("EXIT STATUS");
    page.text(std::string(statuses) + ".");
}

void write_command(const std::string &folder, const Declared &declared) {
    const Command &command = *declared.command;
    const std::string name = std::string("kigou-") + command.name;
    ManualPage page(name, command.summary, KIGOU_VERSION);

    page.section("SYNOPSIS");
    std::string synopsis =
        bold(std::string("kigou ") + command.name) + " [" + italic("OPTION") + "]...";
    for (const Argument &argument : declared.arguments) {
        if (!argument.is_word()) continue;
        const std::string word = italic(argument.names.front()) + (argument.repeated ? "..." : "");
        synopsis += argument.required ? " " + word : " [" + word + "]";
    }
    page.line(synopsis);

    page.section("DESCRIPTION");
    page.text(std::string(command.summary) + ".");
    if (command.notes) page.text(command.notes);
    if (command.alias) {
        page.text(std::string("The command has a second name, ") + command.alias + ".");
    }
    for (const Argument &argument : declared.arguments) {
        if (argument.is_word()) page.item(heading_of(argument), argument.help);
    }

    page.section("OPTIONS");
    if (write_options(page, declared)) page.request("PP");
    page.line(bold("--json") + " and the other options of all commands are told of in " +
              bold("kigou") + "(1).");

    for (const Topic &topic : topics()) {
        bool takes = false;
        for (const Argument &argument : declared.arguments) {
            takes = takes || (topic.value != Value::none && argument.value == topic.value);
        }
        if (!takes) continue;
        page.section(topic.heading);
        page.text(topic.text);
    }
    write_examples(page, command.examples);
    write_exit_status(page, command.exit_status ? command.exit_status : exit_statuses);
    page.section("SEE ALSO");
    page.line(bold("kigou") + "(1)");
    write_file(folder, name, page.roff());
    if (command.alias) {
        write_file(folder, std::string("kigou-") + command.alias, ".so man1/" + name + ".1\n");
    }
}

void write_program(const std::string &folder, const std::vector<Declared> &declared) {
    ManualPage page("kigou", program_summary, KIGOU_VERSION);
    page.section("SYNOPSIS");
    page.line(bold("kigou") + " [" + italic("OPTION") + "]... " + italic("COMMAND") + " [" +
              italic("ARGUMENT") + "]...");

    page.section("DESCRIPTION");
    page.text(std::string(program_summary) + ".");
    page.text("Text goes in and out as UTF-8, whatever the locale.");
    page.section("COMMANDS");
    for (const Declared &one : declared) {
        if (!one.command) continue;
        page.item(bold(std::string("kigou-") + one.command->name) + "(1)", one.command->summary);
    }
    page.section("OPTIONS");
    write_options(page, declared.front());
    for (const Topic &topic : topics()) {
        page.section(topic.heading);
        page.text(topic.text);
    }
    std::string examples;
    for (const Example &example : program_examples()) {
        examples += std::string("  ") + example.command + "\n      " + example.meaning + "\n";
    }
    write_examples(page, examples);
    write_exit_status(page, exit_statuses);
    page.section("ENVIRONMENT");
    for (const Argument &argument : declared.front().arguments) {
        if (argument.variable.empty()) continue;
        page.item(bold(argument.variable),
                  "As " + argument.names.front() + ", which comes before it.");
    }
    for (const Named &variable : variables()) page.item(bold(variable.name), variable.text);
    page.section("FILES");
    for (const Named &file : files()) page.item(italic(file.name), file.text);
    write_file(folder, "kigou", page.roff());
}

} // namespace
} // namespace kigou

int main(int argc, char **argv) {
    try {
        if (argc != 2) throw std::runtime_error("usage: kigou_manual FOLDER");
        const kigou::CommandLine line;
        for (const kigou::Declared &declared : line.declared()) {
            if (declared.command) kigou::write_command(argv[1], declared);
        }
        kigou::write_program(argv[1], line.declared());
        return 0;
    } catch (const std::exception &error) {
        std::cerr << "kigou_manual: " << error.what() << '\n';
        return 1;
    }
}
