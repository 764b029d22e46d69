#include "tools/zol/output.h"

#include <unistd.h>

#include <cerrno>
#include <system_error>
#include <utility>

#include "tools/zol/exit_codes.h"

namespace zol::tool {

Output::Output() : Output(STDOUT_FILENO, "the output") {}

Output::Output(int descriptor, std::string name) : name_(std::move(name)), descriptor_(descriptor) {
    buffer_.reserve(2 * kFlushAt);
}

void Output::Flush() {
    std::string_view rest = buffer_;
    while (!rest.empty()) {
        const ssize_t written = ::write(descriptor_, rest.data(), rest.size());
        if (written < 0 && errno == EINTR) continue;
        if (written < 0) {
            const int error = errno;
            throw WriteFailure(
                "can't write " + name_ + ": " + std::generic_category().message(error),
                error == EPIPE);
        }
        rest.remove_prefix(static_cast<std::size_t>(written));
    }
    buffer_.clear();
}

}  // namespace zol::tool
