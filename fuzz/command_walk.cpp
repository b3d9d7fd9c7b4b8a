// A random walk of commands over random odd files, by a host that is no better.
//
//   command_walk [--commands N] [--seed S] [--first I] [--trace] [--go-on]
//
// The walk is made of scripts of 100 commands. A script has directories, files and a
// process of its own, and depends on S and its number alone: "--first I --commands 100"
// repeats the one that failed. --trace prints its files and every command,
// --go-on goes on to the next script after a failure.
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>

#include "fuzz/rough_sender.h"
#include "fuzz/walk_checks.h"
#include "fuzz/walk_log.h"

namespace {

namespace fs = std::filesystem;

constexpr unsigned script_commands = 100;

class Walk {
  public:
    Walk(const Scratch &scratch, CanaryHost &host, WalkLog &log, std::uint64_t seed,
         std::uint64_t script)
        : log_(log),
          temp_(scratch.temp),
          choice_(seed, script),
          files_(choice_),
          folders_(scratch.files, choice_, files_),
          host_(host),
          sender_(choice_, files_, folders_),
          checks_(host_, folders_, temp_) {
        fs::current_path(folders_.work);
        // As it stands to the working directory at first; elsewhere there is none of that name.
        if (choice_.one_in(4)) setenv("TMPDIR", "../../temp", 1);
        if (choice_.one_in(3)) host_.soil(choice_);
        host_.record.wCurrentList = 1;
    }

    void run() {
        seen_ = checks_.look({}, 0);
        if (log_.prints_all) {
            for (const auto &[path, entry] : *seen_.files) {
                log_.add(path + " " + std::to_string(entry.status.st_mode) + " " +
                         printable(entry.bytes, 100000));
            }
        }
        for (unsigned i = 0; i < script_commands; ++i) step();
        close_and_open_all();
    }

  private:
    void step() {
        if (choice_.one_in(12)) {
            if (const std::string what = folders_.mischief(); !what.empty()) log_.add(what);
            seen_ = checks_.look(seen_, 0);
        }
        if (choice_.one_in(8)) {
            log_.add(sender_.disturb(host_.record, seen_));
            checks_.look_at_record(seen_);
        }
        send(sender_.next(seen_));
    }

    void send(const Sent &sent) {
        log_.add(described(sent));
        const int result = host_.run(sent.command, sent.strings);
        log_.add_result(sent.command, result, message_number(host_.record));
        Seen after = checks_.look(seen_, sent.command);
        checks_.check(sent, result, seen_, after);
        seen_ = std::move(after);
        if (sent.command == ACC_VKEY_FILE_TITLES && result == ACC_RET_OK) {
            sender_.listed = displayed(host_.record);
        }
    }

    std::string described(const Sent &sent) const;
    void close_and_open_all();

    WalkLog &log_;
    fs::path temp_;
    Choice choice_;
    OddFiles files_;
    OddFolders folders_;
    CanaryHost &host_;
    RoughSender sender_;
    WalkChecks checks_;
    Seen seen_;
};

/** The command with its operand, and the other strings where they are not the directories. */
std::string Walk::described(const Sent &sent) const {
    std::string line =
        std::to_string(sent.command) + " in list " + std::to_string(host_.record.wCurrentList);
    for (const auto &string : sent.strings) {
        if (!string || !string->starts_with(folders_.root.native()))
            line += string ? " " + printable(*string) : " null";
    }
    return line;
}

/** After the close nothing is left behind, and whatever is listed opens or says why not. */
void Walk::close_and_open_all() {
    if (seen_.open) send({ACC_VKEY_FILE_CLOSE, {}});
    send(sender_.with_directories(ACC_VKEY_FILE_TITLES, ""));
    for (const std::string &title : std::vector<std::string>(sender_.listed)) {
        send(sender_.with_directories(ACC_VKEY_FILE_OPEN, title));
        if (seen_.open) send({ACC_VKEY_FILE_CLOSE, {}});
    }
}

/** Runs one script in a process of its own. @return false when it failed */
bool run_script(CanaryHost &host, WalkLog &log, std::uint64_t seed, std::uint64_t script) {
    const Scratch scratch;
    log.begin_script();
    const pid_t child = fork();
    HOLDS(child >= 0);
    if (child == 0) {
        alarm(20); // a command that waits for ever
        Walk(scratch, host, log, seed, script).run();
        _exit(0);
    }
    int status;
    HOLDS(waitpid(child, &status, 0) == child);
    if (status == 0) return true;
    std::fprintf(stderr, "failed (status %d): --seed %llu --first %llu --commands %u\n", status,
                 static_cast<unsigned long long>(seed), static_cast<unsigned long long>(script),
                 script_commands);
    log.print_last();
    return false;
}

} // namespace

int main(int argc, char **argv) {
    std::uint64_t count = script_commands, seed = 1, first = 0;
    bool goes_on = false;
    WalkLog &log = WalkLog::shared();
    CanaryHost host(""); // each script gets a fresh copy of it
    for (int i = 1; i < argc; ++i) {
        const std::string argument = argv[i];
        if (argument == "--trace") log.prints_all = true;
        if (argument == "--go-on") goes_on = true;
        if (argument == "--trace" || argument == "--go-on" || i + 1 == argc) continue;
        const std::uint64_t value = std::strtoull(argv[++i], nullptr, 10);
        if (argument == "--commands") count = value;
        if (argument == "--seed") seed = value;
        if (argument == "--first") first = value;
    }
    unsigned failed = 0;
    for (std::uint64_t script = first; script < first + count / script_commands; ++script) {
        failed += !run_script(host, log, seed, script);
        if (failed > 0 && !goes_on) break;
    }
    const unsigned saved = log.count(ACC_VKEY_FILE_SAVE, ACC_RET_OK);
    std::printf("%u commands, %u files opened, %u saved\n", log.commands(),
                log.count(ACC_VKEY_FILE_OPEN, ACC_RET_OK), saved);
    const bool tells_something = saved >= log.commands() / 100 || count < 10000;
    return failed == 0 && tells_something ? 0 : 1;
}
