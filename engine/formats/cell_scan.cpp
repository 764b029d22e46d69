#include "engine/formats/cell_scan.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstring>

#if defined(__x86_64__)
#include <immintrin.h>
#endif

namespace zol::engine {

namespace {

// Counts the bits of a mask; the plainest processors have no instruction for it.
[[gnu::always_inline]] inline std::size_t count_of(std::uint64_t mask) {
    mask -= (mask >> 1) & 0x5555555555555555U;
    mask = (mask & 0x3333333333333333U) + ((mask >> 2) & 0x3333333333333333U);
    mask = (mask + (mask >> 4)) & 0x0F0F0F0F0F0F0F0FU;
    return static_cast<std::size_t>((mask * 0x0101010101010101U) >> 56);
}

// Tells what the cells are that end in each step, all of them at once: what is known of a
// cell's bytes is carried up to the separator behind it as an addition carries a one.
class CellMarker {
public:
    // A bit at the place of the separator behind each such cell.
    struct Marks {
        std::uint64_t fractions = 0;
        std::uint64_t others = 0;
    };

    [[gnu::always_inline]] Marks Next(const ByteClasses& is, bool row_end_follows) {
        const std::uint64_t inside = ~is.separators;
        const std::uint64_t starts = cell_starts_.MovedUp(is.separators, 1);
        const std::uint64_t before_row_end =
            (is.row_ends >> 1) | (static_cast<std::uint64_t>(row_end_follows) << 63);

        // From the first point of a cell on the sum has zeros: the points that it still
        // shows are those that came too many.
        const std::uint64_t points = is.points & inside;
        const std::uint64_t point_sum = has_point_.Add(inside, points);
        const std::uint64_t behind_point = last_points_.MovedUp(points, 1);
        const std::uint64_t usual = is.digits | (points & ~point_sum) | (is.minuses & starts) |
                                    (is.returns & before_row_end & ~behind_point);
        const std::uint64_t has_digit = has_digit_.Add(inside, is.digits & inside);
        const std::uint64_t has_unusual = has_unusual_.Add(inside, inside & ~usual);

        // Bytes with at least as many bytes of the same cell up to them.
        const std::uint64_t of_two = inside & ones_.MovedUp(inside, 1);
        const std::uint64_t of_four = of_two & twos_.MovedUp(of_two, 2);
        const std::uint64_t of_eight = of_four & fours_.MovedUp(of_four, 4);
        const std::uint64_t of_ten = of_eight & twos_before_eight_.MovedUp(of_two, 8);
        const std::uint64_t too_long = tens_.MovedUp(of_ten, 1) & ~point_sum;

        const std::uint64_t other =
            (has_unusual | ~has_digit | behind_point | too_long) & is.separators;
        return {point_sum & is.separators & ~other, other};
    }

private:
    // The highest bits of the step before come in from below.
    struct Mover {
        std::uint64_t before = 0;
        [[gnu::always_inline]] std::uint64_t MovedUp(std::uint64_t mask, int by) {
            const std::uint64_t moved = (mask << by) | (before >> (64 - by));
            before = mask;
            return moved;
        }
    };
    // So does the carry of the addition in the step before.
    struct Adder {
        std::uint64_t carry = 0;
        [[gnu::always_inline]] std::uint64_t Add(std::uint64_t a, std::uint64_t b) {
            const std::uint64_t part = a + b;
            const std::uint64_t sum = part + carry;
            carry = static_cast<std::uint64_t>(part < a) | static_cast<std::uint64_t>(sum < part);
            return sum;
        }
    };

    // A cell starts in front of the text as behind a separator.
    Mover cell_starts_{~std::uint64_t{0}};
    Mover last_points_;
    Mover ones_;
    Mover twos_;
    Mover fours_;
    Mover twos_before_eight_;
    Mover tens_;
    Adder has_point_;
    Adder has_digit_;
    Adder has_unusual_;
};

// Writes the places of a mask in whole groups, whose surplus the next mask overwrites:
// one branch that is nearly always the same, instead of one for each place.
[[gnu::always_inline]] inline void write_places(std::uint64_t mask, std::size_t count,
                                                std::size_t base, std::uint32_t* to) {
    constexpr std::size_t kGroup = 8;
    for (std::size_t done = 0; done < count; done += kGroup) {
        for (std::size_t i = 0; i < kGroup; ++i) {
            const int place = std::countr_zero(mask);
            to[done + i] = static_cast<std::uint32_t>(base + static_cast<std::size_t>(place));
            mask &= mask - 1;
        }
    }
}

// Brings the bits at the places of another mask together at the low end.
struct AnyGather {
    static std::uint64_t Of(std::uint64_t bits, std::uint64_t places) {
        std::uint64_t together = 0;
        for (int i = 0; places != 0; ++i) {
            together |= (bits >> std::countr_zero(places) & 1) << i;
            places &= places - 1;
        }
        return together;
    }
};

#if defined(__x86_64__)
struct FastGather {
    [[gnu::target("bmi2")]] static std::uint64_t Of(std::uint64_t bits, std::uint64_t places) {
        return _pext_u64(bits, places);
    }
};
#endif

// The scan of one text.
template <bool kMarked, class Gather>
class Scanner {
public:
    Scanner(std::string_view text, CellSyntax syntax, Instructions instructions, CellScan& scan)
        : text_(text), syntax_(syntax), instructions_(instructions), scan_(scan) {}

    [[gnu::always_inline]] void Run() {
        const std::size_t whole_steps = text_.size() / kClassedBytes;
        scan_.cells = 0;
        scan_.row_ends = 0;
        std::array<ByteClasses, kStepsAtATime> classes;
        for (std::size_t first = 0; first < whole_steps; first += kStepsAtATime) {
            const std::size_t steps = std::min(kStepsAtATime, whole_steps - first);
            classify_bytes(text_.data() + first * kClassedBytes, steps, syntax_, instructions_,
                           classes.data());
            for (std::size_t i = 0; i < steps; ++i) {
                Add(classes[i], first + i);
            }
        }
        // The last bytes are looked at in a copy: nothing is read past the text, and what
        // stands behind it in the copy ends no cell.
        const std::size_t left = text_.size() % kClassedBytes;
        std::array<char, kClassedBytes> tail{};
        std::memcpy(tail.data(), text_.data() + (text_.size() - left), left);
        classify_bytes(tail.data(), 1, syntax_, instructions_, classes.data());
        const std::uint64_t in_text = ~(~std::uint64_t{0} << left);
        classes[0].separators &= in_text;
        classes[0].row_ends &= in_text;
        Add(classes[0], whole_steps);
    }

private:
    // Few enough to stay near.
    static constexpr std::size_t kStepsAtATime = 64;

    [[gnu::always_inline]] void Add(const ByteClasses& is, std::size_t step) {
        // Room for every byte to be a separator, and for the surplus of the last group.
        if (room_ < scan_.cells + 2 * kClassedBytes) [[unlikely]] {
            MakeRoom();
        }
        const std::size_t base = step * kClassedBytes;
        if constexpr (kMarked) {
            const std::size_t behind = base + kClassedBytes;
            const bool row_end_follows = behind < text_.size() && text_[behind] == syntax_.row_end;
            const CellMarker::Marks marks = marker_.Next(is, row_end_follows);
            scan_.fractions.Put(scan_.cells, Gather::Of(marks.fractions, is.separators));
            scan_.others.Put(scan_.cells, Gather::Of(marks.others, is.separators));
        }
        const std::size_t count = count_of(is.separators);
        write_places(is.separators, count, base, scan_.ends.data() + scan_.cells);
        scan_.cells += count;
        scan_.row_ends += count_of(is.row_ends);
    }

    void MakeRoom() {
        room_ = std::max({scan_.ends.size(), 2 * room_, scan_.cells + 4 * kClassedBytes});
        scan_.ends.resize(room_);
        if constexpr (kMarked) {
            scan_.fractions.Reserve(room_);
            scan_.others.Reserve(room_);
        }
    }

    std::string_view text_;
    CellSyntax syntax_;
    Instructions instructions_;
    CellScan& scan_;
    CellMarker marker_;
    // Cells that there is room for.
    std::size_t room_ = 0;
};

template <bool kMarked>
void scan_with_any(std::string_view text, CellSyntax syntax, CellScan& scan,
                   Instructions instructions) {
    Scanner<kMarked, AnyGather>(text, syntax, instructions, scan).Run();
}

#if defined(__x86_64__)
// The same once more: processors with wide bytes have better instructions for bits too.
template <bool kMarked>
[[gnu::target("bmi,bmi2,popcnt")]] void scan_with_bit_instructions(std::string_view text,
                                                                   CellSyntax syntax,
                                                                   CellScan& scan) {
    Scanner<kMarked, FastGather>(text, syntax, Instructions::Avx2, scan).Run();
}
#endif

template <bool kMarked>
void scan_text(std::string_view text, CellSyntax syntax, CellScan& scan,
               Instructions instructions) {
#if defined(__x86_64__)
    if (instructions == Instructions::Avx2) {
        return scan_with_bit_instructions<kMarked>(text, syntax, scan);
    }
#endif
    scan_with_any<kMarked>(text, syntax, scan, instructions);
}

}  // namespace

void scan_cells(std::string_view text, CellSyntax syntax, CellScan& scan,
                Instructions instructions) {
    scan_text<false>(text, syntax, scan, instructions);
}

void scan_and_mark_cells(std::string_view text, CellSyntax syntax, CellScan& scan,
                         Instructions instructions) {
    scan_text<true>(text, syntax, scan, instructions);
}

}  // namespace zol::engine
