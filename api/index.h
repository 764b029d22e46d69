// The test of an index that a caller passes, for all families.
#pragma once

namespace zol::api {

/// Whether it is one of `count` things that are counted from 0.
inline bool is_index(int index, int count) {
    return 0 <= index && index < count;
}

}  // namespace zol::api
