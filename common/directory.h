// Listing a directory.
#ifndef ACCSYM_COMMON_DIRECTORY_H
#define ACCSYM_COMMON_DIRECTORY_H

namespace acc {

/** The names in a directory, in the order in which the system returns them. */
class DirectoryListing {
  public:
    /**
     * @param path  NUL-ended; an empty one, like one that cannot be read, gives no listing and
     *              leaves the reason in errno
     */
    explicit DirectoryListing(const unsigned char *path);
    ~DirectoryListing();
    DirectoryListing(const DirectoryListing &) = delete;
    DirectoryListing &operator=(const DirectoryListing &) = delete;

    explicit operator bool() const { return stream_ != nullptr; }

    /** The next name, valid until the next call; null at the end and when reading fails. */
    const unsigned char *next();

    /**
     * Reads the beginning of the file that next() named last, if it is a regular file or a link to
     * one, without ever waiting for it: three calls of the system where the listing says what
     * the file is.
     * @return bytes read; -1 when it cannot be opened, read or is no regular file, errno then
     *         says why: EISDIR for what is no regular file
     */
    int read_head(unsigned char *buffer, unsigned size) const;

    /** Whether the null of next() was a failure. */
    bool failed() const { return failed_; }

  private:
    void *stream_;                // DIR *
    const void *entry_ = nullptr; // dirent *
    bool failed_ = false;
};

} // namespace acc

#endif
