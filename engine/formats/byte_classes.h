// Which bytes of a delimited text are what, as one bit a byte: the first step of a scan,
// and the only one that knows the instructions of a processor.
#pragma once

#include <cstddef>
#include <cstdint>

namespace zol::engine {

struct CellSyntax {
    char delimiter = ',';
    char row_end = '\n';
    char point = '.';
};

inline constexpr std::size_t kClassedBytes = 64;

/// What kClassedBytes bytes are. The lowest bit stands for the first byte.
struct ByteClasses {
    /// Delimiters and row ends.
    std::uint64_t separators = 0;
    std::uint64_t row_ends = 0;
    std::uint64_t digits = 0;
    std::uint64_t points = 0;
    std::uint64_t minuses = 0;
    std::uint64_t returns = 0;
};

/// What the work is done with; the result is the same. Avx2 stands for the newer
/// instructions on bits too.
enum class Instructions { Any, Sse2, Avx2 };
/// True when this processor has them.
bool has_instructions(Instructions instructions);
/// The fastest of those that this processor has.
Instructions best_instructions();

/// Classes `count` times kClassedBytes bytes from `at` on.
void classify_bytes(const char* at, std::size_t count, CellSyntax syntax, Instructions instructions,
                    ByteClasses* to);

}  // namespace zol::engine
