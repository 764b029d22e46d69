#include "engine/block/box_tree.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <limits>

#include "engine/formats/read_error.h"

namespace zol::engine::block {

namespace {

constexpr float kFloatMax = std::numeric_limits<float>::max();
constexpr float kFloatInfinity = std::numeric_limits<float>::infinity();
constexpr int kAxisBits = 21;
constexpr int kCodeBits = 3 * kAxisBits;

using Vector = std::array<double, 3>;

// Halves are added, since a sum of two corners may overflow.
Vector centroid(const geometry::Extent& box) {
    return {0.5 * box.x0 + 0.5 * box.x1, 0.5 * box.y0 + 0.5 * box.y1, 0.5 * box.z0 + 0.5 * box.z1};
}

// Keeps the order of any two numbers, also of those beyond a float.
float rounded(double value) {
    if (value > kFloatMax) return kFloatInfinity;
    if (value < -kFloatMax) return -kFloatInfinity;
    return static_cast<float>(value);
}

using GridCell = std::array<std::uint32_t, 3>;

// Puts two zero bits between each two of the low 21 bits.
std::uint64_t spread(std::uint64_t bits) {
    bits = (bits | bits << 32) & 0x001f00000000ffffU;
    bits = (bits | bits << 16) & 0x001f0000ff0000ffU;
    bits = (bits | bits << 8) & 0x100f00f00f00f00fU;
    bits = (bits | bits << 4) & 0x10c30c30c30c30c3U;
    bits = (bits | bits << 2) & 0x1249249249249249U;
    return bits;
}

// How far along the Hilbert curve a cell comes. What is close on this curve is close
// in space, so that leaves are compact: a search asks half as many boxes as it does
// with leaves along plainly interleaved bits.
std::uint64_t place_on_curve(GridCell cell) {
    constexpr std::uint32_t kTopBit = 1U << (kAxisBits - 1);
    // From the coarsest octants to the finest: the curve runs through each of the
    // eight in a turned or mirrored frame, into which the finer bits are brought.
    for (std::uint32_t bit = kTopBit; bit > 1; bit >>= 1) {
        const std::uint32_t finer = bit - 1;
        for (std::uint32_t& axis : cell) {
            if ((axis & bit) != 0) {
                cell[0] ^= finer;
            } else {
                const std::uint32_t difference = (cell[0] ^ axis) & finer;
                cell[0] ^= difference;
                axis ^= difference;
            }
        }
    }
    // From the Gray code, in which one axis changes at a time, to plain numbers.
    cell[1] ^= cell[0];
    cell[2] ^= cell[1];
    std::uint32_t flipped = 0;
    for (std::uint32_t bit = kTopBit; bit > 1; bit >>= 1) {
        if ((cell[2] & bit) != 0) flipped ^= bit - 1;
    }
    for (std::uint32_t& axis : cell) axis ^= flipped;
    return spread(cell[0]) << 2 | spread(cell[1]) << 1 | spread(cell[2]);
}

bool is_finite(const geometry::Coord3D& point) {
    return std::isfinite(point.x) && std::isfinite(point.y) && std::isfinite(point.z);
}

bool holds(const geometry::Extent& box, const geometry::Coord3D& point) {
    return point.x >= box.x0 && point.x <= box.x1 && point.y >= box.y0 && point.y <= box.y1 &&
           point.z >= box.z0 && point.z <= box.z1;
}

int upper_faces_at(const geometry::Extent& box, const geometry::Coord3D& point) {
    return static_cast<int>(point.x >= box.x1) + static_cast<int>(point.y >= box.y1) +
           static_cast<int>(point.z >= box.z1);
}

}  // namespace

/// The grid on which centroids are numbered along the curve.
struct BoxTree::Grid {
    Vector lower{};
    Vector half_width{};

    GridCell CellOf(const Vector& point) const {
        constexpr double kCells = 1U << kAxisBits;
        GridCell cell{};
        for (std::size_t axis = 0; axis < 3; ++axis) {
            const double part = (0.5 * point[axis] - 0.5 * lower[axis]) / half_width[axis];
            // Written so that NaN, from an axis without width or from a bad box, falls to 0.
            if (part > 0) {
                cell[axis] = static_cast<std::uint32_t>(std::min(part * kCells, kCells - 1));
            }
        }
        return cell;
    }
};

BoxTree::BoxTree(std::int64_t n_blocks, BoxOf box_of) {
    if (n_blocks <= 0) return;
    if (n_blocks > std::int64_t{1} << 32) throw ReadError("more than 2^32 blocks");
    const Grid grid = SurveyCentroids(n_blocks, box_of);
    SortAlongCurve(n_blocks, grid, box_of);
    BoundLeaves(box_of);
    BoundUpperLevels();
}

BoxTree::Grid BoxTree::SurveyCentroids(std::int64_t n_blocks, BoxOf box_of) {
    constexpr double kInfinity = std::numeric_limits<double>::infinity();
    Vector lower{kInfinity, kInfinity, kInfinity};
    Vector upper{-kInfinity, -kInfinity, -kInfinity};
    for (std::int64_t block = 0; block < n_blocks; ++block) {
        const Vector centre = centroid(box_of(block));
        for (std::size_t axis = 0; axis < 3; ++axis) {
            lower[axis] = std::min(lower[axis], centre[axis]);
            upper[axis] = std::max(upper[axis], centre[axis]);
        }
    }
    Grid grid;
    Vector middle{};
    for (std::size_t axis = 0; axis < 3; ++axis) {
        grid.lower[axis] = lower[axis];
        grid.half_width[axis] = 0.5 * upper[axis] - 0.5 * lower[axis];
        const double centre = lower[axis] + grid.half_width[axis];
        middle[axis] = std::isfinite(centre) ? centre : 0;
    }
    origin_ = geometry::Coord3D(middle[0], middle[1], middle[2]);
    return grid;
}

void BoxTree::SortAlongCurve(std::int64_t n_blocks, const Grid& grid, BoxOf box_of) {
    // One word holds both the place on the curve and the block: the code gives up
    // as many low bits as the block numbers need, which still leaves more cells
    // than blocks. It halves the memory of a sort of pairs, and makes it exact:
    // no two keys are equal.
    const auto block_bits =
        static_cast<int>(std::bit_width(static_cast<std::uint64_t>(n_blocks) - 1));
    const int code_bits = std::min(kCodeBits, 64 - block_bits);
    std::vector<std::uint64_t> keys(static_cast<std::size_t>(n_blocks));
    for (std::size_t block = 0; block < keys.size(); ++block) {
        const Vector centre = centroid(box_of(static_cast<std::int64_t>(block)));
        const std::uint64_t code = place_on_curve(grid.CellOf(centre));
        keys[block] = code >> (kCodeBits - code_bits) << block_bits | block;
    }
    std::sort(keys.begin(), keys.end());

    const std::uint64_t block_mask = (std::uint64_t{1} << block_bits) - 1;
    order_.resize(keys.size());
    std::transform(keys.begin(), keys.end(), order_.begin(), [block_mask](std::uint64_t key) {
        return static_cast<std::uint32_t>(key & block_mask);
    });
}

void BoxTree::BoundLeaves(BoxOf box_of) {
    std::size_t total = 0;
    std::size_t count = order_.size();
    do {
        count = (count + kFanOut - 1) / kFanOut;
        levels_.push_back({total, count});
        total += count;
    } while (count > 1);
    constexpr Node kEmpty{{kFloatInfinity, kFloatInfinity, kFloatInfinity},
                          {-kFloatInfinity, -kFloatInfinity, -kFloatInfinity}};
    nodes_.assign(total, kEmpty);

    // Boxes may come from a file that is decoded piece by piece: asked along the curve,
    // nearly each of them could cost a piece.
    std::vector<std::uint32_t> leaf_of(order_.size());
    for (std::size_t place = 0; place < order_.size(); ++place) {
        leaf_of[order_[place]] = static_cast<std::uint32_t>(place / kFanOut);
    }
    for (std::size_t block = 0; block < leaf_of.size(); ++block) {
        const geometry::Extent box = box_of(static_cast<std::int64_t>(block));
        const Vector lower{box.x0 - origin_.x, box.y0 - origin_.y, box.z0 - origin_.z};
        const Vector upper{box.x1 - origin_.x, box.y1 - origin_.y, box.z1 - origin_.z};
        Node& leaf = nodes_[leaf_of[block]];
        for (std::size_t axis = 0; axis < 3; ++axis) {
            leaf.lower[axis] = std::min(leaf.lower[axis], rounded(lower[axis]));
            leaf.upper[axis] = std::max(leaf.upper[axis], rounded(upper[axis]));
        }
    }
}

void BoxTree::BoundUpperLevels() {
    for (std::size_t level = 1; level < levels_.size(); ++level) {
        const Level below = levels_[level - 1];
        for (std::size_t child = 0; child < below.count; ++child) {
            const Node& from = nodes_[below.first + child];
            Node& node = nodes_[levels_[level].first + child / kFanOut];
            for (std::size_t axis = 0; axis < 3; ++axis) {
                node.lower[axis] = std::min(node.lower[axis], from.lower[axis]);
                node.upper[axis] = std::max(node.upper[axis], from.upper[axis]);
            }
        }
    }
}

std::int64_t BoxTree::Find(const geometry::Coord3D& point, BoxOf box_of) const {
    if (levels_.empty() || !is_finite(point)) return -1;

    // Neither the difference nor its rounding turns the order of two numbers, so a
    // point in a box is in the box's bounds, too. Points that only rounding puts there
    // cost a look at exact boxes.
    const std::array<float, 3> local{rounded(point.x - origin_.x), rounded(point.y - origin_.y),
                                     rounded(point.z - origin_.z)};

    std::int64_t best = -1;
    int best_faces = 4;
    const auto search_leaf = [&](std::size_t leaf) {
        const std::size_t end = std::min((leaf + 1) * kFanOut, order_.size());
        for (std::size_t place = leaf * kFanOut; place < end; ++place) {
            const auto block = static_cast<std::int64_t>(order_[place]);
            const geometry::Extent box = box_of(block);
            if (!holds(box, point)) continue;
            const int faces = upper_faces_at(box, point);
            if (faces < best_faces || (faces == best_faces && block < best)) {
                best = block;
                best_faces = faces;
            }
        }
    };

    // Depth first without a stack: where a node is tells both its first child and
    // what follows when it is done.
    const std::size_t top = levels_.size() - 1;
    std::size_t level = top;
    std::size_t index = 0;
    for (;;) {
        const Node& node = nodes_[levels_[level].first + index];
        const bool inside = node.lower[0] <= local[0] && node.upper[0] >= local[0] &&
                            node.lower[1] <= local[1] && node.upper[1] >= local[1] &&
                            node.lower[2] <= local[2] && node.upper[2] >= local[2];
        if (inside && level > 0) {
            --level;
            index *= kFanOut;
            continue;
        }
        if (inside) search_leaf(index);
        ++index;
        while (level < top && (index % kFanOut == 0 || index == levels_[level].count)) {
            index = (index + kFanOut - 1) / kFanOut;
            ++level;
        }
        if (level == top) return best;
    }
}

std::size_t BoxTree::MemoryBytes() const {
    return order_.capacity() * sizeof(std::uint32_t) + nodes_.capacity() * sizeof(Node) +
           levels_.capacity() * sizeof(Level);
}

}  // namespace zol::engine::block
