// Listing a directory, and telling a regular file from what would block or mislead a
// reader (a pipe, a directory).
#ifndef ACCSYM_COMMON_DIRECTORY_H
#define ACCSYM_COMMON_DIRECTORY_H

namespace acc {

/** The names in a directory, in the order in which the system returns them. */
class DirectoryListing {
  public:
    /** @param path  NUL-ended; an empty one, like one that cannot be read, gives no listing */
    explicit DirectoryListing(const unsigned char *path);
    ~DirectoryListing();
    DirectoryListing(const DirectoryListing &) = delete;
    DirectoryListing &operator=(const DirectoryListing &) = delete;

    explicit operator bool() const { return stream_ != nullptr; }

    /** The next name, valid until the next call; null at the end. */
    const unsigned char *next();

  private:
    void *stream_; // DIR *
};

/** True for a regular file or a link to one. */
bool is_regular_file(const unsigned char *path);

/** Whether the permissions of a file or directory let it be read. */
bool may_be_read(const unsigned char *path);

} // namespace acc

#endif
