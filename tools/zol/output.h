// Standard output or a file, buffered, with every failure noticed.
#pragma once

#include <string>
#include <string_view>

namespace zol::tool {

class Output {
public:
    Output();
    /// Writes to an open file, which stays the caller's; `name` is for what is thrown.
    Output(int descriptor, std::string name);
    Output(const Output&) = delete;
    Output& operator=(const Output&) = delete;
    /// Drops what was not flushed: a command that ends well calls Flush.
    ~Output() = default;

    /// Throws WriteFailure when the system doesn't take the bytes.
    void Write(std::string_view text) {
        buffer_.append(text);
        if (buffer_.size() >= kFlushAt) Flush();
    }
    void Write(char character) { buffer_.push_back(character); }

    void Flush();

private:
    static constexpr std::size_t kFlushAt = 1 << 16;

    std::string buffer_;
    std::string name_;
    int descriptor_;
};

}  // namespace zol::tool
