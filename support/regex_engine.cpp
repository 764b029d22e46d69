#include "support/regex_engine.h"

#include <locale.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>

#include "support/regex_language.h"

namespace zol::support {

namespace {

constexpr std::size_t kCodeBytes = 1024;
constexpr std::size_t kTableBytes = 256;
constexpr std::size_t kMostGroups = 30;

// The C locale for this thread until the end of a block.
class PlainLocale {
public:
    PlainLocale() : plain_(::newlocale(LC_ALL_MASK, "C", nullptr)), before_(::uselocale(plain_)) {}
    PlainLocale(const PlainLocale&) = delete;
    PlainLocale& operator=(const PlainLocale&) = delete;
    ~PlainLocale() {
        ::uselocale(before_);
        ::freelocale(plain_);
    }

private:
    locale_t plain_;
    locale_t before_;
};

unsigned char* fold_table() {
    auto* const table = static_cast<unsigned char*>(std::malloc(kTableBytes));
    for (std::size_t i = 0; table != nullptr && i < kTableBytes; ++i) {
        table[i] = static_cast<unsigned char>(i >= 'a' && i <= 'z' ? i - 'a' + 'A' : i);
    }
    return table;
}

}  // namespace

CompiledPattern::CompiledPattern(const char* pattern, bool ignore_case) {
    EnginePattern written = engine_pattern(pattern, ignore_case);
    error_ = written.error;
    groups_unsafe_ = written.groups_unsafe;
    groups_ = std::move(written.groups);
    if (error_ != nullptr) {
        return;
    }
    buffer_.buffer = static_cast<re_dfa_t*>(std::malloc(kCodeBytes));
    buffer_.allocated = buffer_.buffer == nullptr ? 0 : kCodeBytes;
    // Without its memory the engine only searches more slowly.
    buffer_.fastmap = static_cast<char*>(std::malloc(kTableBytes));
    if (ignore_case) {
        buffer_.translate = fold_table();
        if (buffer_.translate == nullptr) {
            error_ = "Memory exhausted";
            return;
        }
    }
    const PlainLocale plain;
    error_ = ::re_compile_pattern(written.text.data(), written.text.size(), &buffer_);
}

// The engine frees all three areas.
CompiledPattern::~CompiledPattern() {
    ::regfree(&buffer_);
}

regoff_t CompiledPattern::Search(const char* text, regoff_t length, regoff_t start, regoff_t& end) {
    const PlainLocale plain;
    // Room for the whole match alone: the engine then doesn't look for the groups.
    regoff_t found = 0;
    re_registers whole{1, &found, &end};
    const unsigned before = buffer_.regs_allocated;
    buffer_.regs_allocated = REGS_FIXED;
    const regoff_t result = ::re_search(&buffer_, text, length, start, length - start, &whole);
    buffer_.regs_allocated = before & 3U;
    return result;
}

regoff_t CompiledPattern::Search(const char* text, regoff_t length, regoff_t start,
                                 re_registers& registers) {
    if (!groups_unsafe_) {
        const PlainLocale plain;
        const regoff_t found =
            ::re_search(&buffer_, text, length, start, length - start, &registers);
        if (found >= 0 && !groups_.empty()) {
            Renumber(registers);
        }
        return found;
    }
    regoff_t end = 0;
    const regoff_t found = Search(text, length, start, end);
    if (found < 0) {
        return found;
    }
    // The whole match, and groups that took no part.
    const std::size_t count = buffer_.re_nsub + 2;
    if (buffer_.regs_allocated == REGS_UNALLOCATED) {
        auto* const starts = static_cast<regoff_t*>(std::malloc(count * sizeof(regoff_t)));
        auto* const ends = static_cast<regoff_t*>(std::malloc(count * sizeof(regoff_t)));
        if (starts == nullptr || ends == nullptr) {
            std::free(starts);
            std::free(ends);
            return -2;
        }
        registers = {static_cast<unsigned>(count), starts, ends};
        buffer_.regs_allocated = REGS_REALLOCATE;
    }
    std::fill_n(registers.start, count, -1);
    std::fill_n(registers.end, count, -1);
    registers.start[0] = found;
    registers.end[0] = end;
    return found;
}

void CompiledPattern::Renumber(re_registers& registers) const {
    for (std::size_t n = 1; n < registers.num_regs; ++n) {
        const bool ours = n <= groups_.size();
        registers.start[n] = ours ? registers.start[groups_[n - 1]] : -1;
        registers.end[n] = ours ? registers.end[groups_[n - 1]] : -1;
    }
}

OwnRegisters::~OwnRegisters() {
    std::free(start);
    std::free(end);
}

std::vector<std::string> group_texts(const char* text, const re_registers& registers) {
    std::vector<std::string> groups;
    for (std::size_t n = 0; n < kMostGroups && n < registers.num_regs; ++n) {
        if (registers.start[n] < 0) {
            break;
        }
        groups.emplace_back(text + registers.start[n],
                            static_cast<std::size_t>(registers.end[n] - registers.start[n]));
    }
    return groups;
}

}  // namespace zol::support
