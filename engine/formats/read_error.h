// Why a file can't be read, in words for a person.
#pragma once

#include <stdexcept>
#include <string>

namespace zol::engine {

/// Thrown inside the readers and turned into a diagnostic where a file is opened;
/// it never leaves a library.
class ReadError : public std::runtime_error {
public:
    /// `reason` says what is wrong and where (line, column or byte offset), without
    /// the file's name.
    explicit ReadError(const std::string& reason) : std::runtime_error(reason) {}
};

}  // namespace zol::engine
