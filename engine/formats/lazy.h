// Something that is read from a file when it is first asked for.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <utility>

#include "engine/formats/diagnostics.h"
#include "engine/formats/read_error.h"
#include "support/floating_point.h"

namespace zol::engine {

/// Holds the answer of `read`, which runs at the first Get. When it throws
/// ReadError, that is reported once and Get answers null from then on. Not for two
/// threads at a time.
template <typename T>
class Lazy {
public:
    Lazy(std::string file, std::function<T()> read)
        : file_(std::move(file)), read_(std::move(read)) {}

    const T* Get() {
        if (read_) Read();
        return value_ ? &*value_ : nullptr;
    }

private:
    void Read() {
        const support::UsualFloatingPoint usual;
        try {
            value_.emplace(read_());
        } catch (const ReadError& error) {
            report(file_, std::string(error.what()) + "; the values are missing");
        }
        // Lets go of whatever the reading needed.
        read_ = nullptr;
    }

    std::string file_;
    std::function<T()> read_;
    std::optional<T> value_;
};

}  // namespace zol::engine
