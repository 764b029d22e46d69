#include "engine/formats/dxf/object_section.h"

#include <algorithm>
#include <map>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

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
};

class ObjectSection {
public:
    ObjectSection(TagReader& tags, DrawingBuilder& builder)
        : tags_(tags), builder_(builder), wants_records_(!builder.Dictionaries().empty()) {}

    void Read() {
        while (tags_.Next()) {
            if (tags_.Code() != 0) continue;
            if (tags_.Begins("ENDSEC")) {
                AddRecords();
                AddGroups();
                AddFields();
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
                values.push_back(
                    {code, is_text ? builder_.Decode(raw) : std::string(without_blanks(raw))});
            }
        });
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

    void AddRecords() {
        for (const auto& [handle, owners] : builder_.Dictionaries()) {
            const auto dictionary = dictionaries_.find(handle);
            if (dictionary == dictionaries_.end()) continue;
            for (const auto& [name, of] : dictionary->second) {
                const auto record = records_.find(of);
                if (record == records_.end()) continue;
                for (const std::uint32_t owner : owners) AddRecord(name, record->second, owner);
            }
        }
    }

    void AddRecord(const std::string& name, const std::vector<RecordValue>& values,
                   std::uint32_t owner) {
        std::map<int, int> count_of_code;
        for (const RecordValue& value : values) {
            std::string field = name;
            if (values.size() > 1) field += '.' + std::to_string(value.code);
            const int count = ++count_of_code[value.code];
            if (count > 1) field += '.' + std::to_string(count);
            added_[owner].push_back({builder_.Name(field), builder_.Letters(value.text)});
        }
    }

    // An object of several groups is told as one of the first.
    void AddGroups() {
        std::unordered_map<Handle, std::size_t> group_of_member;
        for (std::size_t i = 0; i < groups_.size(); ++i) {
            for (const Handle member : groups_[i].members) group_of_member.try_emplace(member, i);
        }
        if (group_of_member.empty()) return;
        const DrawingData& data = builder_.Data();
        for (std::size_t i = 0; i < data.objects.Size(); ++i) {
            const DrawingRecord& record = data.objects[i];
            const auto group = group_of_member.find(record.handle);
            if (record.handle == 0 || group == group_of_member.end()) continue;
            const auto fields = data.fields.View().subspan(record.first_field, record.field_count);
            const bool has_own =
                std::any_of(fields.begin(), fields.end(),
                            [](const StoredField& field) { return field.name == kFieldGroup; });
            const auto name = group_names_.find(groups_[group->second].handle);
            if (has_own || name == group_names_.end()) continue;
            added_[static_cast<std::uint32_t>(i)].push_back(
                {kFieldGroup, builder_.Letters(name->second)});
        }
    }

    // Fields of an object stand in a row, so the old ones are copied behind all.
    void AddFields() {
        DrawingData& data = builder_.Data();
        for (const auto& [object, fields] : added_) {
            DrawingRecord& record = data.objects[object];
            const std::uint32_t first = record.first_field;
            const std::uint32_t count = record.field_count;
            record.first_field = static_cast<std::uint32_t>(data.fields.Size());
            record.field_count = count + static_cast<std::uint32_t>(fields.size());
            for (std::uint32_t i = 0; i < count; ++i) data.fields.Add(data.fields[first + i]);
            for (const StoredField& field : fields) data.fields.Add(field);
        }
    }

    TagReader& tags_;
    DrawingBuilder& builder_;
    bool wants_records_;
    std::unordered_map<Handle, std::vector<std::pair<std::string, Handle>>> dictionaries_;
    std::unordered_map<Handle, std::string> group_names_;
    std::unordered_map<Handle, std::vector<RecordValue>> records_;
    std::vector<Group> groups_;
    std::map<std::uint32_t, std::vector<StoredField>> added_;
};

}  // namespace

void read_object_section(TagReader& tags, DrawingBuilder& builder) {
    ObjectSection(tags, builder).Read();
}

}  // namespace zol::engine
