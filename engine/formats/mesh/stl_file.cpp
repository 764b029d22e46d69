#include "engine/formats/mesh/stl_file.h"

#include <algorithm>
#include <array>

#include "engine/formats/byte_numbers.h"
#include "engine/formats/diagnostics.h"
#include "engine/formats/mesh/stl_forms.h"
#include "engine/formats/read_error.h"
#include "engine/formats/text_lines.h"

namespace zol::engine {

namespace {

/// How many facets the header counts; nothing when the file is shorter than a header.
std::optional<std::uint64_t> stated_facets(const File& file) {
    std::array<std::byte, 4> count{};
    constexpr std::uint64_t kAt = kStlHeaderSize - count.size();
    if (file.Size() < kStlHeaderSize) return std::nullopt;
    if (file.ReadAt(kAt, count.data(), count.size()) < count.size()) return std::nullopt;
    return load_number<std::uint32_t>(count.data(), ByteOrder::Little);
}

std::uint64_t size_of(std::uint64_t facets) {
    return kStlHeaderSize + facets * kStlFacetSize;
}

// Headers of the binary form may begin with any text, "solid" too; behind them are bytes that
// no text has.
bool is_text(std::string_view head) {
    return std::none_of(head.begin(), head.end(), [](char c) {
        return static_cast<unsigned char>(c) < 0x20 && c != '\t' && c != '\n' && c != '\r' &&
               c != '\f';
    });
}

}  // namespace

bool is_binary_stl(const File& file) {
    const std::optional<std::uint64_t> facets = stated_facets(file);
    return facets && size_of(*facets) == file.Size();
}

bool is_text_stl(std::string_view head) {
    if (head.starts_with("\xEF\xBB\xBF")) head.remove_prefix(3);
    if (!is_text(head)) return false;
    const std::size_t begin = head.find_first_not_of(" \t\r\n");
    if (begin == head.npos) return false;
    head.remove_prefix(begin);
    const std::size_t end = std::min(head.find_first_of(" \t\r\n"), head.size());
    return is_same_word(head.substr(0, end), "solid");
}

MeshData read_stl(const File& file) {
    if (is_binary_stl(file)) return read_binary_stl(file, *stated_facets(file));
    std::array<char, 512> bytes{};
    const std::string_view head(bytes.data(), file.ReadAt(0, bytes.data(), bytes.size()));
    if (is_text_stl(head)) return read_text_stl(file);
    const std::optional<std::uint64_t> facets = stated_facets(file);
    if (!facets) throw ReadError("it is too short for an STL file");
    const std::uint64_t needed = size_of(*facets);
    if (needed > file.Size() && is_text(head)) {
        throw ReadError("it is a text that does not begin with \"solid\", as a text STL does");
    }
    if (needed > file.Size()) {
        throw ReadError("it states " + std::to_string(*facets) + " facets, which take " +
                        std::to_string(needed) + " bytes, and has " + std::to_string(file.Size()));
    }
    MeshData mesh = read_binary_stl(file, *facets);
    report(file.Path(),
           std::to_string(file.Size() - needed) + " bytes behind the last facet are not read");
    return mesh;
}

}  // namespace zol::engine
