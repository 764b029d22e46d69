#include "engine/formats/dxf/added_fields.h"

#include <algorithm>

namespace zol::engine {

namespace {

// Beyond what the values and the present fields need once or twice.
constexpr std::uint64_t kMostFieldsMore = 1U << 22U;
constexpr std::uint64_t kBytesOfName = 32;
constexpr const char* kTooMany = "fields of records and groups (too many)";

}  // namespace

AddedFields::AddedFields(DrawingBuilder& builder, std::uint64_t values)
    : builder_(builder),
      fields_left_(kMostFieldsMore + 2 * (values + builder.Data().fields.Size())),
      given_(builder.Data().objects.Size()) {}

bool AddedFields::Pay(std::uint64_t fields) {
    if (fields > fields_left_) return false;
    fields_left_ -= fields;
    return true;
}

bool AddedFields::Add(const std::string& name, const DrawingLetters& value) {
    // A long key stands in the name of each field of its record.
    if (!Pay(1 + name.size() / kBytesOfName)) {
        builder_.Skip(kTooMany);
        fields_.SetSize(first_of_list_);
        return false;
    }
    fields_.Add({builder_.Name(name), value});
    return true;
}

std::uint32_t AddedFields::EndList() {
    const auto end = static_cast<std::uint32_t>(fields_.Size());
    if (end == first_of_list_) return kNone;
    lists_.push_back({first_of_list_, end - first_of_list_});
    return static_cast<std::uint32_t>(lists_.size() - 1);
}

std::optional<AddedFields::Run> AddedFields::Join(const Run& old, const Given& given,
                                                  const std::vector<DrawingLetters>& groups) {
    const Run list = given.list == kNone ? Run() : lists_[given.list];
    if (!Pay(std::uint64_t{1} + old.count + list.count)) return std::nullopt;
    GrowingArray<StoredField>& all = builder_.Data().fields;
    const auto present = all.View().subspan(old.first, old.count);
    const bool has_group =
        std::any_of(present.begin(), present.end(),
                    [](const StoredField& field) { return field.name == kFieldGroup; });
    const bool adds_group = given.group != kNone && !has_group;
    if (list.count == 0 && !adds_group) return old;
    const std::size_t first = all.Size();
    for (std::uint32_t i = 0; i < old.count; ++i) all.Add(all[old.first + i]);
    for (std::uint32_t i = 0; i < list.count; ++i) all.Add(fields_[list.first + i]);
    if (adds_group) all.Add({kFieldGroup, groups[given.group]});
    return Run{static_cast<std::uint32_t>(first), static_cast<std::uint32_t>(all.Size() - first)};
}

void AddedFields::Finish(const std::vector<DrawingLetters>& groups) {
    DrawingData& data = builder_.Data();
    for (std::size_t i = 0; i < given_.size(); ++i) {
        const Given& given = given_[i];
        if (given.list == kNone && given.group == kNone) continue;
        DrawingRecord& record = data.objects[i];
        const Run old = {record.first_field, record.field_count};
        const Key key(old.first, old.count, given.list, given.group);
        const auto [entry, is_new] = joined_.try_emplace(key);
        if (is_new) entry->second = Join(old, given, groups);
        if (!entry->second) {
            builder_.Skip(kTooMany);
            continue;
        }
        record.first_field = entry->second->first;
        record.field_count = entry->second->count;
    }
}

}  // namespace zol::engine
