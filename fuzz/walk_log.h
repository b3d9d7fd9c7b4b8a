// What a walk did last, in memory that outlives the process that walks.
#ifndef FUZZ_WALK_LOG_H
#define FUZZ_WALK_LOG_H

#include <sys/mman.h>

#include <cstdio>
#include <new>
#include <string>

#include "accsym.h"
#include "fuzz/holds.h"

/** A text in ASCII: other bytes in hex, and long texts cut. */
inline std::string printable(const std::string &bytes, std::size_t longest = 160) {
    std::string text = "\"";
    for (const char byte : bytes) {
        char hex[8];
        const bool plain = byte >= ' ' && byte < 0x7F && byte != '"' && byte != '\\';
        std::snprintf(hex, sizeof hex, plain ? "%c" : "\\x%02X", static_cast<unsigned char>(byte));
        text += hex;
        if (text.size() > longest) return text + "\"... " + std::to_string(bytes.size()) + " bytes";
    }
    return text + '"';
}

class WalkLog {
  public:
    /** One log for this process and those that it forks. */
    static WalkLog &shared() {
        void *const memory = mmap(nullptr, sizeof(WalkLog), PROT_READ | PROT_WRITE,
                                  MAP_SHARED | MAP_ANONYMOUS, -1, 0);
        HOLDS(memory != MAP_FAILED);
        return *new (memory) WalkLog;
    }

    bool prints_all = false;

    void begin_script() { lines_ = 0; }

    /** Adds a line; the dozen that came last are kept. */
    void add(const std::string &text) {
        std::snprintf(line(lines_++), line_bytes, "%s", text.c_str());
        if (prints_all) std::fprintf(stderr, "%s\n", text.c_str());
    }

    /** Adds to the line that came last. */
    void add_result(int command, int result, int message) {
        char text[64];
        std::snprintf(text, sizeof text, message < 0 ? " = %d" : " = %d, message %d", result,
                      message);
        char *const end = line(lines_ - 1);
        const std::string whole = end + std::string(text);
        std::snprintf(end, line_bytes, "%s", whole.c_str());
        if (prints_all) std::fprintf(stderr, "    %s\n", text);
        if (result >= -1 && result <= ACC_RET_LBMEMORY) ++results_[command & 255][result + 1];
        ++commands_;
    }

    void print_last() const {
        for (unsigned i = lines_ < kept ? 0 : lines_ - kept; i < lines_; ++i) {
            std::fprintf(stderr, "  %s\n", lines_text_[i % kept]);
        }
    }

    unsigned commands() const { return commands_; }

    /** How often a command gave a result so far. */
    unsigned count(int command, int result) const { return results_[command & 255][result + 1]; }

  private:
    static constexpr unsigned kept = 12, line_bytes = 400;
    char *line(unsigned number) { return lines_text_[number % kept]; }

    char lines_text_[kept][line_bytes] = {};
    unsigned lines_ = 0, commands_ = 0;
    unsigned results_[256][6] = {};
};

#endif
