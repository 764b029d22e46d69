#include "support/os.h"

#include <fcntl.h>
#include <pthread.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <climits>
#include <cstddef>
#include <cstdlib>

namespace zol::os {

const char kPathSeparator = '/';
const char kListSeparator = ':';

namespace {

/// Repeats a system call that a signal interrupted.
template <typename Call>
auto uninterrupted(Call call) {
    auto result = call();
    while (result < 0 && errno == EINTR) {
        result = call();
    }
    return result;
}

/// Descriptors begin at 0, which as a file is none.
int descriptor_of(File file) {
    return file == 0 || file > INT_MAX ? -1 : static_cast<int>(file - 1);
}

int open_flags(const OpenMode& mode) {
    // Without O_NONBLOCK a pipe that nobody writes to would be waited for.
    int flags = O_NONBLOCK | O_NOCTTY;
    flags |= mode.read && mode.write ? O_RDWR : mode.write ? O_WRONLY : O_RDONLY;
    flags |= mode.create ? O_CREAT : 0;
    flags |= mode.create && mode.only_new ? O_EXCL : 0;
    return flags;
}

bool is_regular(int descriptor) {
    struct stat facts {};
    return ::fstat(descriptor, &facts) == 0 && S_ISREG(facts.st_mode);
}

/// False only when somebody else holds the file: a file system without locks is used
/// without them.
bool lock(int descriptor, bool share_reading) {
    const int kind = share_reading ? LOCK_SH : LOCK_EX;
    const int result = uninterrupted([&] { return ::flock(descriptor, kind | LOCK_NB); });
    return result == 0 || errno != EWOULDBLOCK;
}

/// Emptied only behind the lock, and not while it is opened: another holder's file stays.
bool prepare(int descriptor, const OpenMode& mode) {
    return is_regular(descriptor) && lock(descriptor, mode.share_reading) &&
           (!mode.empty || uninterrupted([&] { return ::ftruncate(descriptor, 0); }) == 0);
}

}  // namespace

File open_file(const char* path, const OpenMode& mode) {
    // Opening a pipe or a device already acts on it, so what is no file is not opened at all;
    // is_regular then settles it for what was put there in between.
    struct stat facts {};
    if (::stat(path, &facts) == 0 && !S_ISREG(facts.st_mode)) {
        return 0;
    }
    const int descriptor =
        uninterrupted([&] { return ::open(path, open_flags(mode), mode_t{0666}); });
    if (descriptor < 0) {
        return 0;
    }
    if (!prepare(descriptor, mode)) {
        ::close(descriptor);
        return 0;
    }
    return static_cast<File>(descriptor) + 1;
}

void close_file(File file) {
    ::close(descriptor_of(file));
}

std::optional<std::uint32_t> read_file(File file, void* buffer, std::uint32_t count) {
    // A read that falls short has come to the end of the file, which needs no second one to
    // be seen; no system delivers more than this at one go.
    constexpr std::uint32_t kMostAtOnce = 1U << 30U;
    std::uint32_t delivered = 0;
    while (delivered < count) {
        void* const to = static_cast<std::byte*>(buffer) + delivered;
        const std::uint32_t asked = std::min(count - delivered, kMostAtOnce);
        const auto now = uninterrupted([&] { return ::read(descriptor_of(file), to, asked); });
        if (now < 0 && delivered == 0) {
            return std::nullopt;
        }
        delivered += now > 0 ? static_cast<std::uint32_t>(now) : 0U;
        if (now < static_cast<ssize_t>(asked)) {
            break;
        }
    }
    return delivered;
}

bool write_file(File file, const void* buffer, std::uint32_t count) {
    std::uint32_t written = 0;
    while (written < count) {
        const void* const from = static_cast<const std::byte*>(buffer) + written;
        const auto now =
            uninterrupted([&] { return ::write(descriptor_of(file), from, count - written); });
        if (now <= 0) {
            return false;
        }
        written += static_cast<std::uint32_t>(now);
    }
    return true;
}

bool move_in_file(File file, std::int64_t offset, Origin origin) {
    const int whence = origin == Origin::kBegin     ? SEEK_SET
                       : origin == Origin::kCurrent ? SEEK_CUR
                                                    : SEEK_END;
    return ::lseek(descriptor_of(file), offset, whence) >= 0;
}

std::optional<std::int64_t> position_in_file(File file) {
    const auto position = ::lseek(descriptor_of(file), 0, SEEK_CUR);
    return position < 0 ? std::nullopt : std::optional<std::int64_t>(position);
}

std::optional<std::uint64_t> size_of_file(File file) {
    struct stat facts {};
    if (::fstat(descriptor_of(file), &facts) != 0) {
        return std::nullopt;
    }
    return static_cast<std::uint64_t>(facts.st_size);
}

PathKind kind_of(const char* path) {
    struct stat facts {};
    if (::stat(path, &facts) != 0) {
        return PathKind::kNothing;
    }
    return S_ISDIR(facts.st_mode) ? PathKind::kDirectory : PathKind::kOther;
}

std::string current_directory() {
    std::array<char, PATH_MAX> text{};
    return ::getcwd(text.data(), text.size()) == nullptr ? std::string() : text.data();
}

std::string executable_path() {
    std::array<char, PATH_MAX> text{};
    const auto length = ::readlink("/proc/self/exe", text.data(), text.size());
    // A text that fills the buffer may have been cut.
    if (length < 0 || static_cast<std::size_t>(length) == text.size()) {
        return {};
    }
    return std::string(text.data(), static_cast<std::size_t>(length));
}

Stack stack_of_this_thread() {
    pthread_attr_t attributes;
    if (::pthread_getattr_np(::pthread_self(), &attributes) != 0) {
        return {};
    }
    void* lowest = nullptr;
    std::size_t size = 0;
    ::pthread_attr_getstack(&attributes, &lowest, &size);
    ::pthread_attr_destroy(&attributes);
    const auto address = reinterpret_cast<std::uintptr_t>(lowest);
    return {address, address + size};
}

const char* environment_value(const char* name) {
    return std::getenv(name);
}

bool set_environment_value(const char* name, const char* value) {
    return (value == nullptr ? ::unsetenv(name) : ::setenv(name, value, 1)) == 0;
}

}  // namespace zol::os
