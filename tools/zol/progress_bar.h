// How far a long walk has come, for a person at a terminal.
#pragma once

#include <chrono>

namespace zol::tool {

/// Draws on standard error, and only when that is a terminal and standard output
/// is not: a bar among rows helps nobody. Nothing appears in the first half
/// second, and nothing stays behind.
class ProgressBar {
public:
    explicit ProgressBar(long long total);
    ProgressBar(const ProgressBar&) = delete;
    ProgressBar& operator=(const ProgressBar&) = delete;
    ~ProgressBar();

    /// Cheap enough to be called at every block.
    void Advance() {
        if ((++done_ & 0xff) == 0 && is_wanted_) DrawIfDue();
    }

private:
    using Clock = std::chrono::steady_clock;

    void DrawIfDue();

    long long total_;
    long long done_ = 0;
    bool is_wanted_;
    bool is_drawn_ = false;
    Clock::time_point next_drawing_;
};

}  // namespace zol::tool
