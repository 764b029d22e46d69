// The family that stands on std::regex. Its matcher recurses for every byte it takes, so
// the stack is watched: a match that would run out of it is given up, never a crash.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <regex>

#include "support/err_print.h"
#include "support/os.h"
#include "support/regex.h"

namespace {

// Kept free for what runs on top.
constexpr std::size_t kSpare = std::size_t{64} << 10;
// Stack for one state of a pattern, both while it is read and while it is stepped through
// without taking a byte: about twice the most that was measured, 530 bytes, and 2430 with
// the address sanitizer.
#if defined(__SANITIZE_ADDRESS__)
constexpr std::size_t kBytesPerState = 5120;
#else
constexpr std::size_t kBytesPerState = 1024;
#endif
// All that is counted on where the bounds of the stack can't be told: 192 kB, and as many
// states with the address sanitizer.
constexpr std::size_t kUnknownStack = 192 * kBytesPerState;
// The standard library's own limit.
constexpr std::size_t kMostStates = 100'000;

std::uintptr_t here() {
    return reinterpret_cast<std::uintptr_t>(__builtin_frame_address(0));
}

// The lowest address that the stack may reach.
std::uintptr_t stack_limit() {
    // It never moves, and on the first thread it is not cheap to ask for.
    thread_local const zol::os::Stack stack = zol::os::stack_of_this_thread();
    const std::uintptr_t now = here();
    if (now <= stack.lowest || now > stack.end) {
        return now - kUnknownStack + kSpare;
    }
    return stack.lowest + kSpare;
}

// Throws when the stack has fewer bytes left above `limit` than `needed`.
void check_stack(std::uintptr_t limit, std::size_t needed) {
    const std::uintptr_t now = here();
    if (now < limit || now - limit < needed) {
        throw std::regex_error(std::regex_constants::error_stack);
    }
}

// At least as many states as the pattern has, in any of the grammars: a state or two for
// each byte, and counted repeats multiply what they repeat.
std::size_t most_states(const std::string& pattern) {
    std::size_t states = 1;
    for (std::size_t at = 0; at < pattern.size(); ++at) {
        states = std::min(states + 1, kMostStates);
        if (pattern[at] != '{') {
            continue;
        }
        std::size_t times = 0;
        std::size_t number = 0;
        for (std::size_t i = at + 1; i < pattern.size(); ++i) {
            const char digit = pattern[i];
            if (digit == ',') {
                number = 0;
            } else if (digit >= '0' && digit <= '9') {
                number = std::min(number * 10 + static_cast<std::size_t>(digit - '0'), kMostStates);
            } else {
                break;
            }
            times = std::max(times, number + 1);
        }
        // A group may be all that came so far; any other item is one state.
        const std::size_t before = at > 0 && pattern[at - 1] == '\\' ? at - 1 : at;
        const bool group = before > 0 && pattern[before - 1] == ')';
        states = std::min(group ? states * std::max<std::size_t>(times, 1) : states + times,
                          kMostStates);
    }
    return states;
}

// A place in a text that looks at the stack whenever the matcher looks at a byte.
class WatchedPlace {
public:
    using iterator_category = std::bidirectional_iterator_tag;
    using value_type = char;
    using difference_type = std::ptrdiff_t;
    using pointer = const char*;
    using reference = const char&;

    WatchedPlace() = default;
    WatchedPlace(const char* at, std::uintptr_t limit) : at_(at), limit_(limit) {}

    reference operator*() const {
        check_stack(limit_, 0);
        return *at_;
    }
    WatchedPlace& operator++() {
        ++at_;
        return *this;
    }
    WatchedPlace operator++(int) { return {at_++, limit_}; }
    WatchedPlace& operator--() {
        --at_;
        return *this;
    }
    WatchedPlace operator--(int) { return {at_--, limit_}; }
    bool operator==(const WatchedPlace& other) const { return at_ == other.at_; }
    const char* Address() const { return at_; }

private:
    const char* at_ = nullptr;
    std::uintptr_t limit_ = 0;
};

std::regex::flag_type grammar(std::int32_t flavour, bool ignore_case) {
    constexpr std::regex::flag_type kGrammars[] = {
        std::regex::basic, std::regex::extended, std::regex::ECMAScript,
        std::regex::awk,   std::regex::grep,     std::regex::egrep,
    };
    const bool known = flavour >= 0 && flavour < std::int32_t{std::size(kGrammars)};
    const std::regex::flag_type chosen = known ? kGrammars[flavour] : std::regex::ECMAScript;
    return ignore_case ? chosen | std::regex::icase : chosen;
}

}  // namespace

bool regex_Match2(const std::string& text, const std::string& pattern, bool ignore_case,
                  std::vector<std::string>& matches, std::int32_t flavour) {
    const std::size_t needed = most_states(pattern) * kBytesPerState;
    const std::uintptr_t lowest = stack_limit();
    std::regex compiled;
    try {
        check_stack(lowest, needed);
        compiled.imbue(std::locale::classic());
        compiled.assign(pattern, grammar(flavour, ignore_case));
    } catch (const std::regex_error& error) {
        err_Print("regex_Match2: %s. Pattern: %s, Text: %s", error.what(), pattern.c_str(),
                  text.c_str());
        return false;
    }
    matches.clear();
    const std::uintptr_t limit = lowest + needed;
    const WatchedPlace begin(text.data(), limit);
    const WatchedPlace end(text.data() + text.size(), limit);
    using Walk = std::regex_iterator<WatchedPlace>;
    for (Walk match(begin, end, compiled); match != Walk(); ++match) {
        matches.emplace_back((*match)[0].first.Address(), (*match)[0].second.Address());
    }
    return !matches.empty();
}

bool regex_Match2(const std::string& text, const std::string& pattern, bool ignore_case,
                  std::int32_t flavour) {
    std::vector<std::string> matches;
    return regex_Match2(text, pattern, ignore_case, matches, flavour);
}
