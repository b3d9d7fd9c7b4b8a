#include "fuzz/saved_file.h"

#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <optional>

#include "common/acccom.h"
#include "common/heap_block.h"
#include "common/sjis_text.h"
#include "fuzz/edit_model.h"
#include "fuzz/odd_files.h"
#include "fuzz/walk_log.h"

namespace fs = std::filesystem;

namespace {

/** Opens each title that comes in, answers the result, and closes when the next byte comes. */
void serve(int socket, CanaryHost &host, const std::string &directory) {
    char title[ACC_SIZE_LB_LEVEL];
    while (recv(socket, title, sizeof title, 0) > 0) {
        const int result = host.run(ACC_VKEY_FILE_OPEN, {title, directory, directory, directory});
        HOLDS(send(socket, &result, sizeof result, 0) == sizeof result);
        if (recv(socket, title, 1, 0) != 1) return; // the walk has failed
        if (result == ACC_RET_OK) HOLDS(host.run(ACC_VKEY_FILE_CLOSE) == ACC_RET_OK);
    }
}

} // namespace

FreshReader::FreshReader(CanaryHost &host, const fs::path &place)
    : place_(place), temp_(place / "temp") {
    fs::create_directories(temp_);
    int ends[2];
    HOLDS(socketpair(AF_UNIX, SOCK_SEQPACKET, 0, ends) == 0);
    const pid_t child = fork();
    HOLDS(child >= 0);
    close(ends[child == 0 ? 0 : 1]);
    socket_ = ends[child == 0 ? 1 : 0];
    if (child == 0) {
        setenv("TMPDIR", temp_.c_str(), 1);
        serve(socket_, host, place);
        _exit(0);
    }
}

FreshReader::~FreshReader() {
    close(socket_);
}

void FreshReader::look(const std::string &bytes, const TempFile &file) const {
    const std::vector<Titled> blocks = blocks_of(file);
    const bool too_deep = std::any_of(blocks.begin(), blocks.end(), [](const Titled &block) {
        return block.level > ACC_LISTBOX_MAX;
    });
    const std::string title = text(file.records[0].ucTitle);
    write(place_ / "saved.kig", bytes);
    int result;
    HOLDS(send(socket_, title.c_str(), title.size() + 1, 0) > 0);
    HOLDS(recv(socket_, &result, sizeof result, 0) == sizeof result);
    std::optional<TempFile> fresh;
    if (result == ACC_RET_OK) fresh.emplace(only_file(temp_));
    if (fresh ? blocks_of(*fresh) != blocks : !too_deep) {
        std::fprintf(stderr, "in the file: %s\n", printable(bytes, 100000).c_str());
    }
    HOLDS(result == (too_deep ? ACC_RET_LBMEMORY : ACC_RET_OK));
    if (fresh) {
        check_records(*fresh);
        HOLDS(text(fresh->records[0].ucTitle) == title);
        hold_same(blocks_of(*fresh), blocks);
    }
    HOLDS(send(socket_, "", 1, 0) == 1);
}

bool comes_back(const std::string &text_form_of_it) {
    const acc::HeapBlock<unsigned char> disk(
        CM_sjis2euc(reinterpret_cast<const unsigned char *>(text_form_of_it.c_str())));
    return text_form(text(disk.get())) == text_form_of_it;
}

bool is_listed_whole(const std::string &text_form_of_it) {
    const acc::HeapBlock<unsigned char> disk(
        CM_sjis2euc(reinterpret_cast<const unsigned char *>(text_form_of_it.c_str())));
    const std::string bytes = text(disk.get());
    return bytes.find('\n', bytes.find("\xCC\xBE\xBE\xCE=")) <= 1023;
}

bool is_plain_title(const std::string &title) {
    const auto *bytes = reinterpret_cast<const unsigned char *>(title.c_str());
    return comes_back(title) && !title.empty() && !acc::find_char(bytes, 0x815E) &&
           !acc::find_char(bytes, 0x816D) && !acc::find_char(bytes, 0x816E) &&
           std::none_of(bytes, bytes + title.size(),
                        [](unsigned char byte) { return byte < 0x20 || byte == 0x7F; });
}
