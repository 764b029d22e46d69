// Keeps results the same whatever rounding mode the process has set.
#pragma once

#if defined(__SSE2__)
#include <xmmintrin.h>
#else
#include <cfenv>
#endif

namespace zol::engine {

/// Rounds to nearest while it lives, and leaves the mode as it was. Costs a look at a
/// register when the mode is the usual one. Work is done in functions that are called
/// inside, never in expressions beside it, which a compiler may move.
class NearestRounding {
public:
#if defined(__SSE2__)
    NearestRounding() : mode_(_mm_getcsr()) {
        if ((mode_ & kChanged) != 0) {
            _mm_setcsr(mode_ & ~kChanged);
        }
    }
    ~NearestRounding() {
        if ((mode_ & kChanged) != 0) {
            _mm_setcsr(mode_);
        }
    }
#else
    NearestRounding() : mode_(std::fegetround()) {
        if (mode_ != FE_TONEAREST) {
            std::fesetround(FE_TONEAREST);
        }
    }
    ~NearestRounding() {
        if (mode_ != FE_TONEAREST) {
            std::fesetround(mode_);
        }
    }
#endif
    NearestRounding(const NearestRounding&) = delete;
    NearestRounding& operator=(const NearestRounding&) = delete;

private:
#if defined(__SSE2__)
    // Rounding control, flush-to-zero and denormals-are-zero.
    static constexpr unsigned kChanged = 0x6000 | 0x8000 | 0x0040;
    unsigned mode_;
#else
    int mode_;
#endif
};

}  // namespace zol::engine
