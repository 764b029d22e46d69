#include "engine/block/cursor.h"

#include <algorithm>
#include <cmath>

#include "engine/formats/number_text.h"
#include "support/floating_point.h"

namespace zol::engine::block {

namespace {

const geometry::Extent kNoExtent{0, 0, 0, 0, 0, 0};

}  // namespace

Cursor::Cursor(const Source& source, const Catalogue& catalogue)
    : source_(source), catalogue_(catalogue) {
    Restart();
}

void Cursor::Restart() {
    n_blocks_ = source_.geometry ? source_.geometry->NBlocks() : 0;
    position_ = 0;
    extent_of_ = -1;
}

void Cursor::MoveTo(std::int64_t position) {
    position_ = position >= 0 && position < n_blocks_ ? position : n_blocks_;
}

const geometry::Extent& Cursor::BlockExtent() const {
    if (extent_of_ != position_) {
        extent_ = source_.geometry->BlockExtent(position_);
        extent_of_ = position_;
    }
    return extent_;
}

geometry::Extent Cursor::Extent() const {
    const support::UsualFloatingPoint usual;
    return IsEof() ? kNoExtent : BlockExtent();
}

double Cursor::Compute(Predefined predefined) const {
    if (predefined == Predefined::BlockIndex) {
        return static_cast<double>(position_);
    }
    const geometry::Extent& box = BlockExtent();
    switch (predefined) {
        case Predefined::CentroidX:
            return box.x0 + (box.x1 - box.x0) / 2;
        case Predefined::CentroidY:
            return box.y0 + (box.y1 - box.y0) / 2;
        case Predefined::CentroidZ:
            return box.z0 + (box.z1 - box.z0) / 2;
        case Predefined::SizeX:
            return box.x1 - box.x0;
        case Predefined::SizeY:
            return box.y1 - box.y0;
        case Predefined::SizeZ:
            return box.z1 - box.z0;
        default:
            return (box.x1 - box.x0) * (box.y1 - box.y0) * (box.z1 - box.z0);
    }
}

double Cursor::Number(const std::string& name) const {
    const Field& field = catalogue_.Find(name);
    if (IsEof() || field.kind == Field::Kind::Unknown) {
        return kMissing;
    }
    if (field.kind == Field::Kind::Predefined) {
        const support::UsualFloatingPoint usual;
        return Compute(field.predefined);
    }
    const Variable& variable = *field.variable;
    const double value = variable.column->Number(position_);
    if (std::isnan(value) && !variable.column->IsLost(position_)) {
        return variable.default_number;
    }
    return value;
}

std::string Cursor::NameOfCode(const Variable& variable, double code) const {
    const auto& names = variable.translations;
    const auto found = std::lower_bound(
        names.begin(), names.end(), code,
        [](const Translation& entry, double c) { return static_cast<double>(entry.code) < c; });
    const bool known = found != names.end() && static_cast<double>(found->code) == code;
    return known ? found->name : variable.column->Text(position_);
}

std::string Cursor::Text(const std::string& name) const {
    const Field& field = catalogue_.Find(name);
    if (IsEof() || field.kind == Field::Kind::Unknown) {
        return {};
    }
    const support::UsualFloatingPoint usual;
    if (field.kind == Field::Kind::Predefined) {
        return number_text(Compute(field.predefined));
    }
    const Variable& variable = *field.variable;
    std::string text = variable.IsClassification()
                           ? NameOfCode(variable, variable.column->Number(position_))
                           : variable.column->Text(position_);
    if (text.empty() && !variable.column->IsLost(position_)) {
        return variable.default_text;
    }
    return text;
}

}  // namespace zol::engine::block
