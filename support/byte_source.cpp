#include "support/byte_source.h"

#include <streambuf>

namespace zol::support {

namespace {

// Too much for the cache of the file layer, which would only copy it once more.
constexpr std::uint32_t kPiece = 1 << 18;

}  // namespace

FileSource::FileSource(file_handle file)
    : file_(file), buffer_(std::make_unique_for_overwrite<char[]>(kPiece)) {}

bool FileSource::Refill() {
    const std::uint32_t read = file_Read(file_, buffer_.get(), kPiece);
    if (read == 0) {
        return false;
    }
    SetWindow(buffer_.get(), buffer_.get() + read);
    return true;
}

StreamSource::StreamSource(std::istream& stream)
    : stream_(stream), bytes_(stream.good() ? stream.rdbuf() : nullptr) {}

StreamSource::~StreamSource() {
    TakeGivenOut();
}

void StreamSource::TakeGivenOut() {
    if (has_byte_ && IsUsedUp()) {
        bytes_->sbumpc();
    }
    has_byte_ = false;
}

bool StreamSource::Refill() {
    if (bytes_ == nullptr) {
        return false;
    }
    TakeGivenOut();
    const int next = bytes_->sgetc();
    if (next == std::char_traits<char>::eof()) {
        stream_.setstate(std::ios_base::eofbit);
        bytes_ = nullptr;
        return false;
    }
    byte_ = static_cast<char>(next);
    has_byte_ = true;
    SetWindow(&byte_, &byte_ + 1);
    return true;
}

}  // namespace zol::support
