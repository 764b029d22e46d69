// How values reach a caller: member by member, in declared order, and texts by a
// bounded copy into a buffer of 255 bytes whose size is never passed.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>

#include "platform/colour.h"
#include "platform/zolGeometryExport.h"

namespace zol::api {

inline constexpr std::size_t kTextBytes = 255;

/// Writes all 255 bytes: the text, cut at its first NUL or at 254 characters, then
/// NUL up to the end.
inline void copy_text(const std::string& text, char* buffer) {
    std::strncpy(buffer, text.c_str(), kTextBytes - 1);
    buffer[kTextBytes - 1] = '\0';
}

/// The same without the NUL at the end: a text of 255 characters or more fills the
/// buffer and leaves no terminator.
inline void copy_text_open(const std::string& text, char* buffer) {
    // NOLINTNEXTLINE(bugprone-not-null-terminated-result): this is its contract
    std::strncpy(buffer, text.c_str(), kTextBytes);
}

/// The first form but for its last byte, which stays as the caller has it: a text of 254
/// characters or more has no terminator from here.
inline void copy_text_but_last(const std::string& text, char* buffer) {
    // NOLINTNEXTLINE(bugprone-not-null-terminated-result): this is its contract
    std::strncpy(buffer, text.c_str(), kTextBytes - 1);
}

template <class... Out>
void store_zeros(Out*... out) {
    ((*out = 0.0), ...);
}

inline void store(const geometry::Coord3D& from, double* x, double* y, double* z) {
    *x = from.x;
    *y = from.y;
    *z = from.z;
}

inline void store(graphics::RGB from, int* red, int* green, int* blue) {
    constexpr std::uint32_t kByte = 0xFF;
    *red = static_cast<int>(from.value & kByte);
    *green = static_cast<int>(from.value >> 8 & kByte);
    *blue = static_cast<int>(from.value >> 16 & kByte);
}

inline void store(const geometry::Point2D& from, double* x, double* y) {
    *x = from.x;
    *y = from.y;
}

inline void store(const geometry::Point3I& from, double* x, double* y, double* z) {
    *x = from.x;
    *y = from.y;
    *z = from.z;
}

inline void store(const geometry::Extent& from, double* lower_x, double* lower_y, double* lower_z,
                  double* upper_x, double* upper_y, double* upper_z) {
    *lower_x = from.x0;
    *lower_y = from.y0;
    *lower_z = from.z0;
    *upper_x = from.x1;
    *upper_y = from.y1;
    *upper_z = from.z1;
}

}  // namespace zol::api
