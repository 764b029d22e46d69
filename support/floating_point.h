// Keeps results the same whatever floating-point mode the process has set.
#pragma once

#if defined(__SSE2__)
#include <xmmintrin.h>
#else
#include <cfenv>
#endif

namespace zol::support {

/// While it lives numbers round to nearest, small ones are not flushed to zero and no
/// operation traps; afterwards the mode is what it was. Costs a look at a register when
/// the mode is the usual one. Work is done in functions that are called inside, never
/// in expressions beside it, which a compiler may move.
class UsualFloatingPoint {
public:
#if defined(__SSE2__)
    UsualFloatingPoint() : mode_(_mm_getcsr()) {
        if (!IsUsual()) {
            _mm_setcsr(kUsual);
        }
    }
    ~UsualFloatingPoint() {
        if (!IsUsual()) {
            _mm_setcsr(mode_);
        }
    }
#else
    UsualFloatingPoint() {
        std::fegetenv(&mode_);
        std::fesetenv(FE_DFL_ENV);
    }
    ~UsualFloatingPoint() {
        std::fesetenv(&mode_);
    }
#endif
    UsualFloatingPoint(const UsualFloatingPoint&) = delete;
    UsualFloatingPoint& operator=(const UsualFloatingPoint&) = delete;

private:
#if defined(__SSE2__)
    // All exceptions masked, round to nearest, nothing flushed to zero.
    static constexpr unsigned kUsual = 0x1F80;
    // The low six bits only tell which exceptions have been seen.
    bool IsUsual() const {
        return (mode_ & ~0x3FU) == kUsual;
    }

    unsigned mode_;
#else
    std::fenv_t mode_;
#endif
};

}  // namespace zol::support
