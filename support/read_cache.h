// The cache under file_Read: for each file a buffer that one system read fills and many
// small reads empty.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

#include "support/os.h"

namespace zol::support {

/// The buffer of one file, given up at the end of the file. All zero when it is free.
struct ReadSlot {
    os::File handle = 0;
    std::unique_ptr<std::byte[]> buffer;
    std::uint32_t capacity = 0;
    std::uint32_t filled = 0;    ///< how many bytes of the buffer are valid
    std::uint32_t position = 0;  ///< how many of those are consumed
    bool atEnd = false;          ///< the end was met: no further system read
};

/// The table of slots, and the file that was read last with its slot: in the usual case of
/// one open file, no read searches the table.
class ReadCache {
public:
    /// Reads through the file's slot. A file's first read makes the slot, unless it asks for
    /// as much as a slot holds: then that read, and those that follow while no other file is
    /// read, go straight to the system.
    std::uint32_t Read(os::File file, void* to, std::uint32_t count);

    /// Bytes that the system has delivered and nobody has read yet.
    std::uint32_t NUnread(os::File file) const;

    /// Files that have a buffer.
    std::size_t NBuffers() const;

    /// Frees the file's slot and forgets the file if it was read last.
    void Release(os::File file);

private:
    static constexpr std::size_t kNoSlot = static_cast<std::size_t>(-1);

    std::size_t Find(os::File file) const;
    std::size_t Make(os::File file);

    std::vector<ReadSlot> slots_;
    // A place and not a pointer, since the table moves as it grows.
    os::File last_file_ = 0;
    std::size_t last_slot_ = kNoSlot;
};

}  // namespace zol::support
