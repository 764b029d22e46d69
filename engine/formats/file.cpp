#include "engine/formats/file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <system_error>

#include "engine/formats/read_error.h"

namespace zol::engine {

namespace {

[[noreturn]] void fail_with_system_reason(const char* what) {
    const int code = errno;
    throw ReadError(std::string(what) + ": " + std::generic_category().message(code));
}

FileFacts facts_of(const struct stat& stated) {
    return {static_cast<std::uint64_t>(stated.st_size), stated.st_mtim.tv_sec,
            stated.st_mtim.tv_nsec};
}

}  // namespace

std::optional<FileFacts> FileFacts::Of(const std::string& path) {
    struct stat stated {};
    if (::stat(path.c_str(), &stated) != 0 || !S_ISREG(stated.st_mode)) return std::nullopt;
    return facts_of(stated);
}

File::File(const std::string& path) : path_(path) {
    if (path.find('\0') != std::string::npos) {
        throw ReadError("the file name holds a NUL byte");
    }
    // Without O_NONBLOCK a pipe that nobody writes to would be waited for.
    descriptor_ = ::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY);
    if (descriptor_ < 0) {
        fail_with_system_reason("can't open the file");
    }
    struct stat facts {};
    const bool known = ::fstat(descriptor_, &facts) == 0;
    if (!known || !S_ISREG(facts.st_mode)) {
        const char* reason = !known                   ? "can't read the file's size"
                             : S_ISDIR(facts.st_mode) ? "it is a folder, not a file"
                                                      : "it is not a regular file";
        ::close(descriptor_);
        throw ReadError(reason);
    }
    facts_ = facts_of(facts);
}

File::~File() {
    ::close(descriptor_);
}

std::size_t File::ReadAt(std::uint64_t offset, void* to, std::size_t count) const {
    auto* bytes = static_cast<std::byte*>(to);
    std::size_t done = 0;
    while (done < count) {
        const ssize_t got =
            ::pread(descriptor_, bytes + done, count - done, static_cast<off_t>(offset + done));
        if (got == 0) {
            break;
        }
        if (got < 0) {
            if (errno == EINTR) {
                continue;
            }
            fail_with_system_reason("can't read the file");
        }
        done += static_cast<std::size_t>(got);
    }
    return done;
}

std::vector<std::byte> File::ReadExactly(std::uint64_t offset, std::uint64_t count) const {
    if (offset > Size() || count > Size() - offset) {
        throw ReadError("the file ends at byte " + std::to_string(Size()) + "; " +
                        std::to_string(count) + " bytes are expected from byte " +
                        std::to_string(offset));
    }
    std::vector<std::byte> bytes(count);
    if (ReadAt(offset, bytes.data(), bytes.size()) != bytes.size()) {
        throw ReadError("the file became shorter while it was read");
    }
    return bytes;
}

bool File::IsUnchanged() const {
    struct stat facts {};
    return ::fstat(descriptor_, &facts) == 0 && facts_of(facts) == facts_;
}

bool File::Exists(const std::string& path) {
    return FileFacts::Of(path).has_value();
}

}  // namespace zol::engine
