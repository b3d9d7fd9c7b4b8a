// output_file.h - the file that an option names for what would else go to the standard output.
#ifndef KIGOU_OUTPUT_FILE_H
#define KIGOU_OUTPUT_FILE_H

#include <sys/stat.h>

#include <string>
#include <string_view>

namespace kigou {

/** Looked at before the work is done, written at the end; untouched until then. */
class OutputFile {
  public:
    /**
     * @param path    a file, which need not be there; a device or a pipe too
     * @param option  that names it, for messages
     * @throws Failure (refused) when it can be seen that nothing can be written there
     */
    OutputFile(std::string path, const std::string &option);

    /**
     * In place of what the file holds. A file of one's own with one name has the old text or the
     * new one, whatever happens. Waits for the reader of a pipe.
     * @throws Failure (failed) with the system's reason
     */
    void write(std::string_view bytes) const;

  private:
    /** Whether another file may take its name: it leads nowhere else, and is nobody else's. */
    bool may_be_replaced() const;

    std::string path_;
    struct stat status_ {};
    bool is_there_; /**< then that is its status */
};

} // namespace kigou

#endif
