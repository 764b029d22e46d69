// Blocks, and their insertions as objects of the drawing.
#pragma once

#include <cstdint>
#include <string>
#include <unordered_map>
#include <vector>

#include "engine/formats/dxf/drawing_builder.h"
#include "engine/formats/dxf/entity.h"
#include "engine/formats/dxf/placing.h"

namespace zol::engine {

/// An INSERT: the traits it hands down, the block, and where each of its copies is put.
struct Insertion {
    DrawingRecord record;
    std::string folded_block;
    /// Of the point of insertion, without scale.
    Placing place;
    Vector3 scale = {1, 1, 1};
    std::int64_t columns = 1;
    std::int64_t rows = 1;
    double column_step = 0;
    double row_step = 0;
};

class Insertions {
public:
    static constexpr int kMostDepth = 32;
    /// An insertion that makes more objects is skipped with a word.
    static constexpr std::uint64_t kMostObjectsOfInsertion = 1U << 20U;
    /// Copies of blocks, and objects and insertions in them, that all insertions of a drawing
    /// may come to.
    static constexpr std::uint64_t kMostSteps = 1U << 23U;

    explicit Insertions(DrawingBuilder& builder) : builder_(builder) {}

    static Insertion FromEntity(const Entity& entity, const DrawingRecord& record,
                                DrawingBuilder& builder);

    /// What is added from here on is part of a block, up to EndBlock.
    void BeginBlock(std::string_view raw_name, const Vector3& base);
    void EndBlock() { open_ = nullptr; }
    bool IsInBlock() const { return open_ != nullptr; }

    /// Adds an object to the open block, or to the drawing.
    void Add(DrawingRecord record);
    void Add(const Insertion& insertion);

private:
    struct Item {
        bool is_insertion;
        std::uint32_t at;
    };
    struct Block {
        Vector3 base = {0, 0, 0};
        std::uint32_t name = kNone;
        std::vector<Item> items;
        bool is_open = false;
        bool is_too_large = false;
    };
    struct Copy;

    bool Expand(const Insertion& insertion, const Copy& outer, int depth);
    bool ExpandOnce(Block& block, const Copy& copy, int depth);
    bool TakeStep();
    void AddCopy(const DrawingRecord& prototype, const Block& block, const Copy& copy);

    DrawingBuilder& builder_;
    std::unordered_map<std::string, Block> blocks_;
    Block never_shown_;
    Block* open_ = nullptr;
    GrowingArray<DrawingRecord> prototypes_;
    std::vector<Insertion> insertions_;
    std::uint64_t steps_left_ = kMostSteps;
    std::uint64_t steps_of_insertion_left_ = 0;
};

}  // namespace zol::engine
