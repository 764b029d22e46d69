// The guard: the one sequence that every counted export runs.
//
//   start tick, only if logging -> initialised test -> checks -> work -> success exit
//
// The success exit empties the last-error slot and, if logging, counts the call
// and logs its name. `guarded_late` has the success exit ahead of the work. With
// logging off the guard reads no clock and allocates nothing, unless a check fails.
//
// Nothing here catches: what the library underneath throws reaches the caller, and
// the call is counted only if its success exit came first. For the same reason the
// success exit is not in a destructor.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>
#include <type_traits>

#include "api/call_log.h"
#include "api/counted_functions.h"
#include "api/state.h"
#include "api/tick.h"

namespace zol::api {

/// How an export answers when it does not succeed.
template <class R>
struct Answers {
    R uninitialised;
    R failed;
    /// The name at the head of its messages; empty means its own.
    std::string_view speaker = {};

    constexpr Answers Failing(R value) const { return {uninitialised, value, speaker}; }
    constexpr Answers SpeaksAs(std::string_view name) const {
        return {uninitialised, failed, name};
    }
};

inline constexpr Answers<int> kStatus{-1, 1};
inline constexpr Answers<int> kPredicate{-1, -1};
inline constexpr Answers<int> kCount{-1, -1};
inline constexpr Answers<long long> kWide{-1, -1};
inline constexpr Answers<double> kReal{-1.0, -1.0};
template <class Handle>
inline constexpr Answers<Handle*> kNewHandle{nullptr, nullptr};

/// What the work of a call came to: a result, or nothing after a reported failure.
template <class R>
using Outcome = std::optional<R>;

/// Puts "<speaker> <tail>" in the last-error slot.
void report_failure(std::string_view speaker, std::string_view tail);

/// Puts "ZOL_API not initialised." in the last-error slot.
void report_not_initialised();

/// The initialised test, with its report.
inline bool is_initialised() {
    if (state.initialised != 0) [[likely]] {
        return true;
    }
    report_not_initialised();
    return false;
}

// Nothing takes the address of a Call, so that one lives in registers: a few
// instructions of a walk are all that its frame costs.

/// One running call of a counted export.
class Call {
public:
    Call(FunctionId function, std::string_view speaker)
        : function_(function),
          start_tick_(state.logging != 0 ? tick_milliseconds() : 0),
          speaker_(speaker.empty() ? function.Name() : speaker) {}

    /// Puts "<function> <tail>" in the last-error slot; to be returned as the outcome.
    std::nullopt_t Fail(std::string_view tail) const {
        report_failure(speaker_, tail);
        return std::nullopt;
    }

    /// The first half of the success exit, for an export with an order of its own.
    void EmptyError() { state.last_error.clear(); }

    /// The success exit. Acts once; the guard calls it at the end of every call that
    /// did not fail.
    void Succeed() {
        if (succeeded_) {
            return;
        }
        succeeded_ = true;
        EmptyError();
        if (state.logging != 0) [[unlikely]] {
            log_call(function_, start_tick_);
        }
    }

private:
    FunctionId function_;
    std::uint32_t start_tick_;
    std::string_view speaker_;
    bool succeeded_ = false;
};

// The frame is inlined into each export, the test of the handle with it: called through a
// pointer, that test would cost more than all the rest.

/// Calls `work`, with the call in front if it asks for it.
template <class Work, class Object>
[[gnu::always_inline]] inline decltype(auto) invoke_work(Work& work, [[maybe_unused]] Call& call,
                                                         Object& object) {
    if constexpr (std::is_invocable_v<Work&, Call&, Object&>) {
        return work(call, object);
    } else {
        return work(object);
    }
}

/// Work without a result gives 0.
template <class R, class Work, class Object>
[[gnu::always_inline]] inline Outcome<R> do_work(Work& work, Call& call, Object& object) {
    if constexpr (std::is_void_v<decltype(invoke_work(work, call, object))>) {
        invoke_work(work, call, object);
        return R{0};
    } else {
        return invoke_work(work, call, object);
    }
}

/// The end of every guarded call that came to its work.
template <class R>
[[gnu::always_inline]] inline R settle(const Answers<R>& answers, Call& call,
                                       const Outcome<R>& outcome) {
    if (!outcome) {
        return answers.failed;
    }
    call.Succeed();
    return *outcome;
}

/// The free form: `work` takes the call alone, makes its own checks and gives an
/// Outcome. It may run the success exit early.
template <class R, class Work>
[[gnu::always_inline]] inline R guarded(FunctionId function, const Answers<R>& answers, Work work) {
    Call call(function, answers.speaker);
    if (!is_initialised()) {
        return answers.uninitialised;
    }
    return settle<R>(answers, call, work(call));
}

/// `check` turns the handle into the object that `work` takes, or reports a failure
/// and gives null.
template <class R, class Check, class Handle, class Work>
[[gnu::always_inline]] inline R guarded(FunctionId function, const Answers<R>& answers, Check check,
                                        Handle* handle, Work work) {
    Call call(function, answers.speaker);
    if (!is_initialised()) {
        return answers.uninitialised;
    }
    auto* const object = check(call, handle);
    if (object == nullptr) {
        return answers.failed;
    }
    return settle<R>(answers, call, do_work<R>(work, call, *object));
}

/// The same, with the success exit between the check and the work: the time of the
/// work is not counted, and work that throws has been counted all the same.
template <class R, class Check, class Handle, class Work>
[[gnu::always_inline]] inline R guarded_late(FunctionId function, const Answers<R>& answers,
                                             Check check, Handle* handle, Work work) {
    Call call(function, answers.speaker);
    if (!is_initialised()) {
        return answers.uninitialised;
    }
    auto* const object = check(call, handle);
    if (object == nullptr) {
        return answers.failed;
    }
    call.Succeed();
    return settle<R>(answers, call, do_work<R>(work, call, *object));
}

}  // namespace zol::api
