// A file opened for reading at offsets.
//
// Files are read by copying, not mapped: a mapped file that shrinks while it is
// open kills the process, and its pages count as memory of the process.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace zol::engine {

/// What a file that was changed has otherwise than before.
struct FileFacts {
    std::uint64_t size = 0;
    std::int64_t changed_seconds = 0;
    std::int64_t changed_nanoseconds = 0;

    bool operator==(const FileFacts&) const = default;
    /// Nothing when no regular file stands under the name.
    static std::optional<FileFacts> Of(const std::string& path);
};

/// A regular file, open for reading until it is destroyed. Reads at offsets may
/// run in several threads.
class File {
public:
    /// Throws ReadError with the reason: not found, no right, a folder, a device or
    /// pipe. A pipe is never waited for.
    explicit File(const std::string& path);
    File(const File&) = delete;
    File& operator=(const File&) = delete;
    ~File();

    const std::string& Path() const { return path_; }
    /// Bytes in the file when it was opened.
    std::uint64_t Size() const { return facts_.size; }

    /// Reads up to `count` bytes at `offset`: fewer only at the end of the file.
    /// Throws ReadError when the system can't read.
    std::size_t ReadAt(std::uint64_t offset, void* to, std::size_t count) const;
    /// Reads exactly `count` bytes, or throws ReadError that says at which byte the
    /// file ends. Nothing is allocated before the range is known to be in the file.
    std::vector<std::byte> ReadExactly(std::uint64_t offset, std::uint64_t count) const;

    /// True when size and time of change are still those of the opening.
    bool IsUnchanged() const;

    /// True when a regular file stands under the name.
    static bool Exists(const std::string& path);

private:
    std::string path_;
    int descriptor_ = -1;
    FileFacts facts_;
};

}  // namespace zol::engine
