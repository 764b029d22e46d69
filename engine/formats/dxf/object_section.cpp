#include "engine/formats/dxf/object_section.h"

#include <map>
#include <optional>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

#include "engine/formats/dxf/added_fields.h"

namespace zol::engine {

namespace {

using Handle = std::uint64_t;

struct Group {
    Handle handle = 0;
    std::vector<Handle> members;
};

struct RecordValue {
    int code = 0;
    std::string text;
    /// Once an object has it.
    std::optional<DrawingLetters> letters;
};

class ObjectSection {
public:
    ObjectSection(TagReader& tags, DrawingBuilder& builder)
        : tags_(tags), builder_(builder), wants_records_(!builder.Dictionaries().empty()) {}

    void Read() {
        while (tags_.Next()) {
            if (tags_.Code() != 0) continue;
            if (tags_.Begins("ENDSEC")) {
                AddedFields added(builder_, value_count_);
                AddRecords(added);
                added.Finish(AddGroups(added));
                return;
            }
            if (tags_.Begins("DICTIONARY")) {
                ReadDictionary();
            } else if (tags_.Begins("XRECORD") && wants_records_) {
                ReadRecord();
            } else if (tags_.Begins("GROUP")) {
                ReadGroup();
            }
        }
        tags_.Refuse("the file ends inside the section OBJECTS");
    }

private:
    // Hands the tags of an object on; `take` leaves out what stands in braces.
    template <class Take>
    void ReadTags(const Take& take) {
        bool is_in_braces = false;
        while (tags_.Next()) {
            if (tags_.Code() == 0) {
                tags_.PutBack();
                return;
            }
            if (tags_.Code() == 102) {
                is_in_braces = without_blanks(tags_.Text()).starts_with('{');
            } else if (!is_in_braces) {
                take(tags_.Code());
            }
        }
    }

    void ReadDictionary() {
        Handle handle = 0;
        std::string key;
        std::vector<std::pair<std::string, Handle>> entries;
        ReadTags([&](int code) {
            if (code == 5) {
                handle = tags_.Handle();
            } else if (code == 3) {
                key = builder_.Decode(tags_.Text());
            } else if (code == 350 || code == 360) {
                entries.emplace_back(key, tags_.Handle());
            }
        });
        const bool is_owned = builder_.Dictionaries().count(handle) != 0;
        for (auto& [name, of] : entries) {
            // Which dictionary is that of the groups stands in another that may come later.
            if (!is_owned) group_names_.try_emplace(of, name);
        }
        if (is_owned) dictionaries_.try_emplace(handle, std::move(entries));
    }

    void ReadRecord() {
        Handle handle = 0;
        std::vector<RecordValue> values;
        ReadTags([&](int code) {
            constexpr int kCloning = 280;
            if (code == 5 && handle == 0) {
                handle = tags_.Handle();
            } else if (code != 100 && code != 330 && !(code == kCloning && values.empty())) {
                const std::string raw = tags_.Written();
                const bool is_text = tag_type(code) == TagType::Text;
                values.push_back({code,
                                  is_text ? builder_.Decode(raw) : std::string(without_blanks(raw)),
                                  std::nullopt});
            }
        });
        value_count_ += values.size();
        records_.try_emplace(handle, std::move(values));
    }

    void ReadGroup() {
        Group group;
        ReadTags([&](int code) {
            if (code == 5) {
                group.handle = tags_.Handle();
            } else if (code == 340) {
                group.members.push_back(tags_.Handle());
            }
        });
        groups_.push_back(std::move(group));
    }

    void AddRecords(AddedFields& added) {
        for (const auto& [handle, owners] : builder_.Dictionaries()) {
            const auto dictionary = dictionaries_.find(handle);
            if (dictionary == dictionaries_.end()) continue;
            added.BeginList();
            for (const auto& [name, of] : dictionary->second) {
                const auto record = records_.find(of);
                if (record != records_.end() && !AddRecord(name, record->second, added)) break;
            }
            const std::uint32_t list = added.EndList();
            for (const std::uint32_t owner : owners) added.GiveList(owner, list);
        }
    }

    // False when it is too much.
    bool AddRecord(const std::string& name, std::vector<RecordValue>& values, AddedFields& added) {
        std::map<int, int> count_of_code;
        for (RecordValue& value : values) {
            std::string field = name;
            if (values.size() > 1) field += '.' + std::to_string(value.code);
            const int count = ++count_of_code[value.code];
            if (count > 1) field += '.' + std::to_string(count);
            // Several dictionaries may hold the record.
            if (!value.letters) value.letters = builder_.Letters(value.text);
            if (!added.Add(field, *value.letters)) return false;
        }
        return true;
    }

    // An object of several groups is told as one of the first. The names of all groups.
    std::vector<DrawingLetters> AddGroups(AddedFields& added) {
        std::unordered_map<Handle, std::uint32_t> group_of_member;
        std::vector<DrawingLetters> names;
        for (const Group& group : groups_) {
            const auto name = group_names_.find(group.handle);
            const auto at = static_cast<std::uint32_t>(names.size());
            const bool has_name = name != group_names_.end();
            for (const Handle member : group.members) {
                group_of_member.try_emplace(member, has_name ? at : kNone);
            }
            if (has_name) names.push_back(builder_.Letters(name->second));
        }
        if (group_of_member.empty()) return names;
        const auto objects = builder_.Data().objects.View();
        for (std::size_t i = 0; i < objects.size(); ++i) {
            const auto group = group_of_member.find(objects[i].handle);
            if (objects[i].handle == 0 || group == group_of_member.end()) continue;
            added.GiveGroup(static_cast<std::uint32_t>(i), group->second);
        }
        return names;
    }

    TagReader& tags_;
    DrawingBuilder& builder_;
    bool wants_records_;
    std::unordered_map<Handle, std::vector<std::pair<std::string, Handle>>> dictionaries_;
    std::unordered_map<Handle, std::string> group_names_;
    std::unordered_map<Handle, std::vector<RecordValue>> records_;
    std::uint64_t value_count_ = 0;
    std::vector<Group> groups_;
};

}  // namespace

void read_object_section(TagReader& tags, DrawingBuilder& builder) {
    ObjectSection(tags, builder).Read();
}

}  // namespace zol::engine
