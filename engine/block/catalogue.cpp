#include "engine/block/catalogue.h"

#include <array>

#include "engine/block/unique_names.h"

namespace zol::engine::block {

namespace {

constexpr int kOwn = 1;
constexpr int kPredefined = 2;
constexpr int kClassification = 4;
constexpr int kNumericOnly = 8;
constexpr int kTextOnly = 16;

// In the order of Predefined, as are the names.
constexpr std::array<std::string_view, kPredefinedNames.size()> kDescriptions = {
    "Centroid x in model coordinates",
    "Centroid y in model coordinates",
    "Centroid z in model coordinates",
    "Block size along the model's x axis",
    "Block size along the model's y axis",
    "Block size along the model's z axis",
    "Volume of the block",
    "Ordinal of the block in the file, from 0"};

}  // namespace

Catalogue::Catalogue(const Source& source) : source_(source) {
    Restart();
}

void Catalogue::Restart() {
    places_.clear();
    entries_.assign(1, {});
    last_ = 0;
    for (std::size_t i = 0; i < kPredefinedNames.size(); ++i) {
        Field field;
        field.kind = Field::Kind::Predefined;
        field.predefined = static_cast<Predefined>(i);
        Add(kPredefinedNames[i], field);
    }
    for (const Variable& variable : source_.variables) {
        Field field;
        field.kind = Field::Kind::Own;
        field.variable = &variable;
        Add(variable.name, field);
    }
}

void Catalogue::Add(std::string_view name, const Field& field) {
    if (places_.try_emplace(std::string(name), entries_.size()).second) {
        entries_.push_back({std::string(name), field, 0});
    }
}

const Field& Catalogue::LookUp(const std::string& name) const {
    const auto found = places_.find(name);
    if (found == places_.end()) {
        return entries_.front().field;
    }
    entries_[last_].follower = found->second;
    last_ = found->second;
    return entries_[last_].field;
}

const Variable* Catalogue::OwnVariable(const std::string& name) const {
    return Find(name).variable;
}

std::vector<std::string> Catalogue::Names(int selector) const {
    std::vector<std::string> names;
    for (const Variable& variable : source_.variables) {
        const bool asked = (selector & kOwn) != 0 ||
                           ((selector & kClassification) != 0 && variable.IsClassification());
        const bool left_out = ((selector & kNumericOnly) != 0 && variable.IsText()) ||
                              ((selector & kTextOnly) != 0 && !variable.IsText());
        if (asked && !left_out) {
            names.push_back(variable.name);
        }
    }
    if ((selector & kPredefined) != 0 && (selector & kTextOnly) == 0) {
        names.insert(names.end(), kPredefinedNames.begin(), kPredefinedNames.end());
    }
    return names;
}

std::string_view Catalogue::DescriptionOf(Predefined predefined) {
    return kDescriptions[static_cast<std::size_t>(predefined)];
}

}  // namespace zol::engine::block
