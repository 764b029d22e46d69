// The lines of a text, alike for both kinds of text.
#pragma once

#include "api/guard.h"
#include "api/marshalling.h"
#include "design/handles.h"
#include "design/kinds.h"

namespace zol::design::flat {

/// Its failures name a function that it is not, for a text that is not 3D too: callers have
/// come to match them.
inline constexpr api::Answers<int> kRecordCount =
    api::kCount.SpeaksAs("ZOL_Object_3DText_GetOrigin");

/// A status function that fails like a count.
inline constexpr api::Answers<int> kRecord = api::kStatus.Failing(-1);

template <class View>
int count_records(api::FunctionId function, const Kind<View>& kind, ObjectHandle* handle) {
    return api::guarded_late(function, kRecordCount, kind, handle,
                             [](const View& text) { return text.NRecords(); });
}

template <class View>
int copy_record(api::FunctionId function, const Kind<View>& kind, ObjectHandle* handle,
                const int* index, char* buffer) {
    return api::guarded(function, kRecord, kind, handle,
                        [&](api::Call& call, const View& text) -> api::Outcome<int> {
                            // One past the last is let through: it is the view's to answer.
                            if (*index < 0 || *index > text.NRecords()) {
                                return call.Fail(kInvalidIndex);
                            }
                            api::copy_text(text.GetRecord(*index), buffer);
                            return 0;
                        });
}

}  // namespace zol::design::flat
