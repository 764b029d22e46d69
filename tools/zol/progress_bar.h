// How far a long walk has come, for a person at a terminal.
#pragma once

#include <chrono>

namespace zol::tool {

/// Draws on standard error, and only when that is a terminal. Nothing appears in the
/// first half second, and nothing stays behind.
class ProgressBar {
public:
    /// What comes on standard output during the walk. Where that is a terminal too, a bar
    /// among rows helps nobody.
    enum class Meanwhile { Rows, Nothing };

    /// `unit` is what the total counts, in the plural.
    explicit ProgressBar(long long total, const char* unit = "blocks",
                         Meanwhile meanwhile = Meanwhile::Rows);
    ProgressBar(const ProgressBar&) = delete;
    ProgressBar& operator=(const ProgressBar&) = delete;
    ~ProgressBar();

    /// Cheap enough to be called at every block.
    void Advance() {
        if ((++done_ & 0xff) == 0 && is_wanted_) DrawIfDue();
    }
    /// Many at one go.
    void Advance(long long n) {
        done_ += n;
        if (is_wanted_) DrawIfDue();
    }

private:
    using Clock = std::chrono::steady_clock;

    void DrawIfDue();

    const char* unit_;
    long long total_;
    long long done_ = 0;
    bool is_wanted_;
    bool is_drawn_ = false;
    Clock::time_point next_drawing_;
};

}  // namespace zol::tool
