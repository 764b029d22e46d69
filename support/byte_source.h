// Bytes in order, one at a time, with the way back to the last of them.
#pragma once

#include <cstddef>
#include <istream>
#include <memory>

#include "support/file.h"

namespace zol::support {

/// Bytes come from a window that is filled again when it is used up.
class ByteSource {
public:
    static constexpr int kEnd = -1;

    virtual ~ByteSource() = default;
    ByteSource(const ByteSource&) = delete;
    ByteSource& operator=(const ByteSource&) = delete;

    /// The next byte, from 0 to 255, or kEnd.
    int Get() {
        if (at_ == end_ && !Refill()) {
            return kEnd;
        }
        return static_cast<unsigned char>(*at_++);
    }
    /// Takes the last byte back; not after kEnd, and not twice. The byte is in the window
    /// still, since only Get and Fill move it on.
    void Unget() { --at_; }

    // The rest of the window, for those who look at many bytes at once. Empty only at the
    // end, once Fill has been called.
    void Fill() {
        if (at_ == end_) {
            Refill();
        }
    }
    const char* begin() const { return at_; }
    const char* end() const { return end_; }
    /// Counts bytes of the window as taken.
    void Skip(const char* to) { at_ = to; }

protected:
    ByteSource() = default;
    void SetWindow(const char* begin, const char* end) {
        at_ = begin;
        end_ = end;
    }
    bool IsUsedUp() const { return at_ == end_; }

private:
    /// A new window; false at the end, for good, with the window as it was.
    virtual bool Refill() = 0;

    const char* at_ = nullptr;
    const char* end_ = nullptr;
};

/// A file, read in large pieces.
class FileSource final : public ByteSource {
public:
    /// The handle stays the caller's.
    explicit FileSource(file_handle file);

private:
    bool Refill() override;

    file_handle file_;
    std::unique_ptr<char[]> buffer_;
};

/// A stream, of which no byte is taken that has not been given out, or that was taken
/// back. Sets the stream's state at its end.
class StreamSource final : public ByteSource {
public:
    explicit StreamSource(std::istream& stream);
    ~StreamSource() override;
    StreamSource(const StreamSource&) = delete;
    StreamSource& operator=(const StreamSource&) = delete;

private:
    bool Refill() override;
    void TakeGivenOut();

    std::istream& stream_;
    std::streambuf* bytes_;
    // The window: the next byte of the stream, which is still in it.
    char byte_ = 0;
    bool has_byte_ = false;
};

}  // namespace zol::support
