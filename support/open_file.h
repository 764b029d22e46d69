// A file that is closed with its block.
#pragma once

#include <cstdint>

#include "support/file.h"

namespace zol::support {

class OpenFile {
public:
    /// As file_Open.
    OpenFile(const char* path, std::uint32_t access, std::uint32_t disposition)
        : handle_(file_Open(path, access, disposition)) {}
    ~OpenFile() { file_Close(handle_); }
    OpenFile(const OpenFile&) = delete;
    OpenFile& operator=(const OpenFile&) = delete;

    bool IsOpen() const { return handle_ != 0; }
    file_handle Handle() const { return handle_; }

private:
    file_handle handle_;
};

}  // namespace zol::support
