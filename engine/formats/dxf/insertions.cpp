#include "engine/formats/dxf/insertions.h"

#include <algorithm>
#include <cmath>

namespace zol::engine {

namespace {

constexpr double kMostOfPlacing = 1e100;

// False when a text in the plan would leave it.
bool keeps_plan(const Placing& placing) {
    return placing.x[2] == 0 && placing.y[2] == 0;
}

}  // namespace

// One copy of a block: where it lies, and what it hands down.
struct Insertions::Copy {
    Placing placing;
    std::uint32_t placing_at = kNone;
    // Null outside of any block.
    const DrawingRecord* by = nullptr;
    // Of the insertion in the drawing itself.
    const DrawingRecord* outermost = nullptr;
};

Insertion Insertions::FromEntity(const Entity& entity, const DrawingRecord& record,
                                 DrawingBuilder& builder) {
    Insertion insertion;
    insertion.record = record;
    insertion.folded_block = folded(builder.Decode(entity.Text(2)));
    const Placing plane = plane_of(entity.Normal());
    Placing turned = turn(entity.Real(50));
    turned.origin = entity.Point(10);
    insertion.place = plane.After(turned);
    insertion.scale = {entity.Real(41, 1), entity.Real(42, 1), entity.Real(43, 1)};
    insertion.columns = std::max(entity.Whole(70, 1), 1);
    insertion.rows = std::max(entity.Whole(71, 1), 1);
    insertion.column_step = entity.Real(44);
    insertion.row_step = entity.Real(45);
    return insertion;
}

void Insertions::BeginBlock(std::string_view raw_name, const Vector3& base) {
    const std::string name = builder_.Decode(raw_name);
    // Of blocks of one name the first counts; what the others hold is never shown.
    Block& block = blocks_[folded(name)];
    if (block.name != kNone) {
        never_shown_ = {};
        open_ = &never_shown_;
        return;
    }
    block.base = base;
    block.name = builder_.Name(name);
    open_ = &block;
}

void Insertions::Add(DrawingRecord record) {
    if (open_ != nullptr) {
        open_->items.push_back({false, static_cast<std::uint32_t>(prototypes_.Size())});
        prototypes_.Add(record);
        return;
    }
    builder_.Resolve(record, nullptr);
    builder_.AddObject(record);
}

void Insertions::Add(const Insertion& insertion) {
    if (open_ != nullptr) {
        open_->items.push_back({true, static_cast<std::uint32_t>(insertions_.size())});
        insertions_.push_back(insertion);
        return;
    }
    DrawingData& data = builder_.Data();
    const std::size_t objects = data.objects.Size();
    const std::size_t placings = data.placings.Size();
    steps_of_insertion_left_ = kMostObjectsOfInsertion;
    Copy outside;
    outside.outermost = &insertion.record;
    if (!Expand(insertion, outside, 0)) {
        builder_.CutObjects(objects);
        data.placings.SetSize(placings);
        builder_.Skip("INSERT (of too many objects)");
    }
}

bool Insertions::TakeStep() {
    if (steps_left_ == 0 || steps_of_insertion_left_ == 0) return false;
    --steps_left_;
    --steps_of_insertion_left_;
    return true;
}

// False when it makes too many objects.
bool Insertions::Expand(const Insertion& insertion, const Copy& outer, int depth) {
    const auto found = blocks_.find(insertion.folded_block);
    if (found == blocks_.end()) {
        builder_.Skip("INSERT (of a block that is not there)");
        return true;
    }
    Block& block = found->second;
    if (block.is_open || depth >= kMostDepth) {
        builder_.Skip(block.is_open ? "INSERT (of a block in itself)" : "INSERT (nested too deep)");
        return true;
    }
    const auto copies = static_cast<std::uint64_t>(insertion.columns * insertion.rows);
    if (block.is_too_large || copies > steps_of_insertion_left_) return false;
    DrawingRecord by = insertion.record;
    builder_.Resolve(by, outer.by);
    if (outer.by != nullptr) by.is_visible = by.is_visible && outer.by->is_visible;
    Placing scaled;
    scaled.x[0] = insertion.scale[0];
    scaled.y[1] = insertion.scale[1];
    scaled.z[2] = insertion.scale[2];
    scaled.origin = times(scaled.Direction(block.base), -1);
    block.is_open = true;
    bool is_done = true;
    for (std::int64_t row = 0; row < insertion.rows && is_done; ++row) {
        for (std::int64_t column = 0; column < insertion.columns && is_done; ++column) {
            Placing step;
            step.origin = {static_cast<double>(column) * insertion.column_step,
                           static_cast<double>(row) * insertion.row_step, 0};
            Copy copy = outer;
            copy.placing = outer.placing.After(insertion.place.After(step.After(scaled)));
            copy.by = &by;
            // Also of copies and items that make nothing: they can be more than ever end.
            is_done = TakeStep();
            if (!is_done) break;
            if (!copy.placing.IsWithin(kMostOfPlacing)) {
                builder_.Skip("INSERT (with numbers beyond 1e100)");
                continue;
            }
            copy.placing_at = builder_.AddPlacing(copy.placing);
            is_done = ExpandOnce(block, copy, depth);
        }
    }
    block.is_open = false;
    // Inside another one the copies before it have had their part of the steps.
    if (!is_done && copies == 1 && depth == 0) block.is_too_large = true;
    return is_done;
}

bool Insertions::ExpandOnce(Block& block, const Copy& copy, int depth) {
    for (const Item& item : block.items) {
        if (!TakeStep()) return false;
        if (item.is_insertion) {
            if (!Expand(insertions_[item.at], copy, depth + 1)) return false;
        } else {
            AddCopy(prototypes_[item.at], block, copy);
        }
    }
    return true;
}

void Insertions::AddCopy(const DrawingRecord& prototype, const Block& block, const Copy& copy) {
    DrawingRecord record = prototype;
    builder_.Resolve(record, copy.by);
    if (prototype.placing == kNone) {
        record.placing = copy.placing_at;
    } else {
        const Placing inner = builder_.Data().placings[prototype.placing];
        record.placing = builder_.AddPlacing(copy.placing.After(inner));
    }
    if (record.kind == DrawingKind::Text && !keeps_plan(copy.placing)) {
        record.kind = DrawingKind::Text3D;
    }
    record.is_visible = record.is_visible && copy.by->is_visible;
    record.handle = copy.outermost->handle;
    record.block = block.name;
    if (record.field_count == 0) {
        record.first_field = copy.outermost->first_field;
        record.field_count = copy.outermost->field_count;
    }
    builder_.AddObject(record);
}

}  // namespace zol::engine
