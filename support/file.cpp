#include "support/file.h"

#include <optional>
#include <string>

#include "support/os.h"
#include "support/path.h"
#include "support/read_cache.h"

namespace {

using zol::os::OpenMode;
using zol::os::Origin;

struct DispositionRow {
    std::uint32_t disposition;
    OpenMode mode;
};

constexpr DispositionRow kDispositions[] = {
    {CREATE_NEW, {.create = true, .only_new = true}},
    {CREATE_ALWAYS, {.create = true, .empty = true}},
    {OPEN_EXISTING, {}},
    {OPEN_ALWAYS, {.create = true}},
    {TRUNCATE_EXISTING, {.empty = true}},
};

std::optional<OpenMode> open_mode(std::uint32_t access, std::uint32_t disposition) {
    for (const DispositionRow& row : kDispositions) {
        if (row.disposition == disposition) {
            OpenMode mode = row.mode;
            mode.read = (access & GENERIC_READ) != 0;
            mode.write = (access & GENERIC_WRITE) != 0;
            mode.share_reading = mode.read && !mode.write;
            const bool possible = mode.write || (mode.read && !mode.empty);
            return possible ? std::optional(mode) : std::nullopt;
        }
    }
    return std::nullopt;
}

// Never destroyed: whoever writes while the process ends comes by here.
zol::support::ReadCache& cache() {
    static auto* const instance = new zol::support::ReadCache;
    return *instance;
}

}  // namespace

file_handle file_Open(const char* path, std::uint32_t access, std::uint32_t disposition) {
    const std::optional<OpenMode> mode = open_mode(access, disposition);
    if (path == nullptr || *path == '\0' || !mode) {
        return 0;
    }
    std::string own_path = path;
    path_Normalise(own_path.data());
    const file_handle handle = zol::os::open_file(own_path.c_str(), *mode);
    // A read behind the close of a handle leaves a slot under its number, at its end and
    // without a buffer; the system gives the number out again.
    cache().Release(handle);
    return handle;
}

void file_Close(file_handle handle) {
    if (handle != 0) {
        cache().Release(handle);
        zol::os::close_file(handle);
    }
}

std::uint32_t file_Read(file_handle handle, void* buffer, std::uint32_t count) {
    return handle == 0 || buffer == nullptr ? 0 : cache().Read(handle, buffer, count);
}

std::uint32_t file_Write(file_handle handle, const void* buffer, std::uint32_t count) {
    const bool written = buffer != nullptr && zol::os::write_file(handle, buffer, count);
    return written ? count : 0;
}

std::uint64_t file_Size(file_handle handle) {
    return zol::os::size_of_file(handle).value_or(0);
}

std::int64_t file_Tell(file_handle handle) {
    const std::optional<std::int64_t> position = zol::os::position_in_file(handle);
    return position ? *position - cache().NUnread(handle) : 0;
}

bool file_Seek(file_handle handle, std::int64_t offset, int origin) {
    if (handle == 0) {
        return false;
    }
    cache().Release(handle);
    constexpr Origin kOrigins[] = {Origin::kBegin, Origin::kCurrent, Origin::kEnd};
    return origin >= 0 && origin <= 2 && zol::os::move_in_file(handle, offset, kOrigins[origin]);
}
