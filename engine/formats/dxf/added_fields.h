// Fields that objects get from what stands behind all entities of their file.
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <tuple>
#include <vector>

#include "engine/formats/dxf/drawing_builder.h"

namespace zol::engine {

/// What objects have in common is kept once for all of them: an insertion may hand one record
/// on to a million objects.
class AddedFields {
public:
    /// `values` is the number of values that the file has for fields. What is made of them may
    /// be a multiple of that, but not of that times the number of objects.
    AddedFields(DrawingBuilder& builder, std::uint64_t values);

    /// Fields added from here on are one list.
    void BeginList() { first_of_list_ = static_cast<std::uint32_t>(fields_.Size()); }
    /// False when the list gets too large; it is empty then.
    bool Add(const std::string& name, const DrawingLetters& value);
    /// The list, to be given to objects.
    std::uint32_t EndList();

    /// An object has one list, and one group, at most.
    void GiveList(std::uint32_t object, std::uint32_t list) { given_[object].list = list; }
    /// An object that names its group itself keeps that.
    void GiveGroup(std::uint32_t object, std::uint32_t group) { given_[object].group = group; }

    /// Puts the fields behind those that the objects have. Groups are told by their names.
    void Finish(const std::vector<DrawingLetters>& groups);

private:
    struct Run {
        std::uint32_t first = 0;
        std::uint32_t count = 0;
    };
    struct Given {
        std::uint32_t list = kNone;
        std::uint32_t group = kNone;
    };
    // First and number of the fields that an object had, its list, its group.
    using Key = std::tuple<std::uint32_t, std::uint32_t, std::uint32_t, std::uint32_t>;

    bool Pay(std::uint64_t fields);
    std::optional<Run> Join(const Run& old, const Given& given,
                            const std::vector<DrawingLetters>& groups);

    DrawingBuilder& builder_;
    std::uint64_t fields_left_;
    GrowingArray<StoredField> fields_;
    std::vector<Run> lists_;
    std::uint32_t first_of_list_ = 0;
    // One for each object.
    std::vector<Given> given_;
    // Nothing for what is too many.
    std::map<Key, std::optional<Run>> joined_;
};

}  // namespace zol::engine
