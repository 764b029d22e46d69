// One compiled pattern of regex_Match and pat_Substitute, for one call.
#pragma once

#include <regex.h>

#include <cstdint>
#include <string>
#include <vector>

namespace zol::support {

/// Wraps the engine's pattern buffer. Works in the C locale of this thread alone, so that
/// neither matches nor messages depend on the locale of the process.
class CompiledPattern {
public:
    CompiledPattern(const char* pattern, bool ignore_case);
    CompiledPattern(const CompiledPattern&) = delete;
    CompiledPattern& operator=(const CompiledPattern&) = delete;
    ~CompiledPattern();

    /// The engine's text, or null when the pattern can be searched for.
    const char* Error() const { return error_; }

    /// Searches from `start` on; what lies before it still counts for anchors. The place
    /// of the leftmost match, or a negative value; `end` receives where it ends.
    regoff_t Search(const char* text, regoff_t length, regoff_t start, regoff_t& end);

    /// The same. `registers` receives the groups; its arrays are made by the first search
    /// of this pattern, and are the caller's to free.
    regoff_t Search(const char* text, regoff_t length, regoff_t start, re_registers& registers);

private:
    // From the engine's numbers to those of the pattern.
    void Renumber(re_registers& registers) const;

    re_pattern_buffer buffer_{};
    const char* error_ = nullptr;
    bool groups_unsafe_ = false;
    std::vector<std::size_t> groups_;
};

/// Registers that free their arrays.
struct OwnRegisters : re_registers {
    OwnRegisters() : re_registers{} {}
    OwnRegisters(const OwnRegisters&) = delete;
    OwnRegisters& operator=(const OwnRegisters&) = delete;
    ~OwnRegisters();
};

/// The texts of the whole match and its groups, up to the first that took no part, at
/// most 30.
std::vector<std::string> group_texts(const char* text, const re_registers& registers);

}  // namespace zol::support
