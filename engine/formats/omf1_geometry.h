// Vertices of OMF 1 files, and the triangles and segments that name them. Nothing but the
// arrays themselves says how many there are. All throw ReadError.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <optional>
#include <string>
#include <string_view>

#include "engine/formats/file.h"
#include "engine/formats/growing_array.h"
#include "engine/formats/json.h"
#include "engine/formats/omf1_file.h"
#include "engine/formats/read_error.h"
#include "engine/formats/vector3.h"

namespace zol::engine {

/// Rows are counted in 32 bits.
inline constexpr std::uint64_t kMostOmf1Rows = 2147483647;

/// Fills the list with rows of `row` bytes; `T` may be smaller than a row. Gives how many
/// rows they are.
template <class T>
std::size_t inflate_rows(const File& file, const Omf1Blob& blob, std::size_t row,
                         GrowingArray<T>& list) {
    const std::uint64_t most = std::min(most_bytes_in(blob), kMostOmf1Rows * row);
    // Coordinates compress little. What is not written to takes no memory.
    std::uint64_t room = std::min(most, 4 * blob.length + row);
    for (;;) {
        list.SetSize(static_cast<std::size_t>(room / sizeof(T) + 1));
        const std::optional<std::size_t> bytes =
            inflate_at_most(file, blob, list.View().data(), static_cast<std::size_t>(room));
        if (bytes) {
            if (*bytes % row != 0) {
                throw ReadError(blob.name + " holds " + std::to_string(*bytes) +
                                " bytes, which are no rows of " + std::to_string(row));
            }
            return *bytes / row;
        }
        if (room == most) {
            throw ReadError(blob.name + " holds more than " + std::to_string(kMostOmf1Rows) +
                            " rows");
        }
        room = std::min(most, 4 * room);
    }
}

/// Refuses row `row`, a `kind` ("triangle"), for what it names.
[[noreturn]] void refuse_vertex(std::string_view kind, std::size_t row, std::int64_t vertex);

/// The vertices that the rows of `array_class` name. Indices are stored in 64 bits, and become
/// 32 where they are, so that there is no second list of them.
template <std::size_t N>
void read_indices(const File& file, const Omf1Document& document, const JsonValue& reference,
                  std::string_view array_class, std::string_view kind,
                  GrowingArray<std::array<std::int32_t, N>>& rows) {
    using Row = std::array<std::int64_t, N>;
    const Omf1Blob blob = document.Blob(reference, {array_class});
    if (blob.type != Omf1Blob::Type::Int64) reference.Refuse("refers to no whole numbers");
    const std::size_t count = inflate_rows(file, blob, sizeof(Row), rows);
    for (std::size_t i = 0; i < count; ++i) {
        Row row;
        std::memcpy(row.data(),
                    reinterpret_cast<const std::byte*>(rows.View().data()) + i * sizeof(Row),
                    sizeof row);
        for (std::size_t c = 0; c < N; ++c) {
            if (row[c] < 0 || row[c] >= static_cast<std::int64_t>(kMostOmf1Rows)) {
                refuse_vertex(kind, i, row[c]);
            }
            rows[i][c] = static_cast<std::int32_t>(row[c]);
        }
    }
    rows.SetSize(count);
    rows.Trim();
}

/// Refuses a row that names none of the `vertices`.
template <std::size_t N>
void check_indices(const GrowingArray<std::array<std::int32_t, N>>& rows, std::string_view kind,
                   std::size_t vertices) {
    for (std::size_t i = 0; i < rows.Size(); ++i) {
        const std::int32_t last = *std::max_element(rows[i].begin(), rows[i].end());
        if (static_cast<std::size_t>(last) >= vertices) {
            throw ReadError(std::string(kind) + " " + std::to_string(i) + " names point " +
                            std::to_string(last) + "; there are " + std::to_string(vertices));
        }
    }
}

/// Where a geometry lies: its own origin, from that of the project.
Vector3 origin_of(const Omf1Document& document, const JsonValue& geometry);

/// The vertices of a geometry, in the world.
void read_vertices(const File& file, const Omf1Document& document, const JsonValue& geometry,
                   GrowingArray<Vector3>& vertices);

}  // namespace zol::engine
