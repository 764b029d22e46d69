#include "tools/zol/progress_bar.h"

#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <string>

namespace zol::tool {

namespace {

constexpr auto kPatience = std::chrono::milliseconds(500);
constexpr auto kBetweenDrawings = std::chrono::milliseconds(100);
constexpr long long kWidth = 40;

// To the start of the line, and blank to its end.
constexpr const char* kEraseLine = "\r\033[K";

}  // namespace

ProgressBar::ProgressBar(long long total, const char* unit, Meanwhile meanwhile)
    : unit_(unit),
      total_(std::max(total, 1LL)),
      is_wanted_(isatty(STDERR_FILENO) != 0 &&
                 (meanwhile == Meanwhile::Nothing || isatty(STDOUT_FILENO) == 0)),
      next_drawing_(Clock::now() + kPatience) {}

ProgressBar::~ProgressBar() {
    if (is_drawn_) std::fputs(kEraseLine, stderr);
}

void ProgressBar::DrawIfDue() {
    const Clock::time_point now = Clock::now();
    if (now < next_drawing_) return;
    next_drawing_ = now + kBetweenDrawings;
    is_drawn_ = true;
    const double part = std::min(1.0, static_cast<double>(done_) / static_cast<double>(total_));
    std::string bar(static_cast<std::size_t>(part * kWidth), '#');
    bar.resize(kWidth, '.');
    std::fprintf(stderr, "%s[%s] %3d %%  %lld of %lld %s", kEraseLine, bar.c_str(),
                 static_cast<int>(part * 100), done_, total_, unit_);
}

}  // namespace zol::tool
