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
template <class Handle>
inline constexpr Answers<Handle*> kNewHandle{nullptr, nullptr};

/// What the work of a call came to: a result, or nothing after a reported failure.
template <class R>
using Outcome = std::optional<R>;

/// One running call of a counted export.
class Call {
public:
    Call(FunctionId function, std::string_view speaker)
        : function_(function),
          start_tick_(state.logging != 0 ? tick_milliseconds() : 0),
          speaker_(speaker.empty() ? function.Name() : speaker) {}

    /// Puts "<function> <tail>" in the last-error slot; to be returned as the outcome.
    std::nullopt_t Fail(std::string_view tail) const;

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
        if (state.logging != 0) {
            log_call(function_, start_tick_);
        }
    }

private:
    FunctionId function_;
    std::uint32_t start_tick_;
    std::string_view speaker_;
    bool succeeded_ = false;
};

/// Puts "ZOL_API not initialised." in the last-error slot.
void report_not_initialised();

/// Calls `work`, with the call in front if it asks for it. Work without a result
/// gives 0.
template <class R, class Work, class Object>
Outcome<R> do_work(Work& work, Call& call, Object& object) {
    const auto invoke = [&] {
        if constexpr (std::is_invocable_v<Work&, Call&, Object&>) {
            return work(call, object);
        } else {
            return work(object);
        }
    };
    if constexpr (std::is_void_v<decltype(invoke())>) {
        invoke();
        return R{0};
    } else {
        return invoke();
    }
}

/// The free form: `work` takes the call alone, makes its own checks and gives an
/// Outcome. It may run the success exit early.
template <class R, class Work>
R guarded(FunctionId function, const Answers<R>& answers, Work work) {
    Call call(function, answers.speaker);
    if (state.initialised == 0) {
        report_not_initialised();
        return answers.uninitialised;
    }
    const Outcome<R> outcome = work(call);
    if (!outcome) {
        return answers.failed;
    }
    call.Succeed();
    return *outcome;
}

/// `check` turns the handle into the object that `work` takes, or reports a failure
/// and gives null.
template <class R, class Check, class Handle, class Work>
R guarded(FunctionId function, const Answers<R>& answers, Check check, Handle* handle, Work work) {
    return guarded(function, answers, [&](Call& call) -> Outcome<R> {
        auto* const object = check(call, handle);
        if (object == nullptr) {
            return std::nullopt;
        }
        return do_work<R>(work, call, *object);
    });
}

/// The same, with the success exit between the check and the work: the time of the
/// work is not counted, and work that throws has been counted all the same.
template <class R, class Check, class Handle, class Work>
R guarded_late(FunctionId function, const Answers<R>& answers, Check check, Handle* handle,
               Work work) {
    return guarded(function, answers, [&](Call& call) -> Outcome<R> {
        auto* const object = check(call, handle);
        if (object == nullptr) {
            return std::nullopt;
        }
        call.Succeed();
        return do_work<R>(work, call, *object);
    });
}

}  // namespace zol::api
