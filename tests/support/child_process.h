// Runs a part of a test in a process of its own, for what a process does only once.
#pragma once

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <functional>
#include <string>

namespace zol::testing {

/// The text that `work` gives in a copy of this process. A copy that ends in any other way
/// fails the test.
inline std::string in_child(const std::function<std::string()>& work) {
    std::array<int, 2> ends{};
    if (::pipe(ends.data()) != 0) {
        ADD_FAILURE() << "no pipe";
        return {};
    }
    const pid_t child = ::fork();
    if (child == 0) {
        const std::string text = work();
        const ssize_t written = ::write(ends[1], text.data(), text.size());
        ::_exit(written == static_cast<ssize_t>(text.size()) ? 0 : 1);
    }
    ::close(ends[1]);
    std::string text;
    std::array<char, 4096> part{};
    for (ssize_t count = 1; count > 0;) {
        count = ::read(ends[0], part.data(), part.size());
        if (count > 0) text.append(part.data(), static_cast<std::size_t>(count));
    }
    ::close(ends[0]);
    int status = -1;
    ::waitpid(child, &status, 0);
    EXPECT_EQ(status, 0);
    return text;
}

}  // namespace zol::testing
