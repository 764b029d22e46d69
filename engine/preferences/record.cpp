#include "engine/preferences/record.h"

#include <bit>
#include <cstring>
#include <new>
#include <vector>

#include "support/array.h"
#include "support/flat_recursion.h"
#include "support/string_map.h"
#include "support/strtab.h"
#include "support/value_vector.h"

namespace zol::engine {

namespace {

template <typename T>
T* content(const CVariant& record) {
    return std::bit_cast<T*>(record.payload);
}

/// Takes the record by value: its containers are released after it is gone itself.
void release_content(const CVariant& record) {
    if (record.kind == MV_STRING) delete[] content<char>(record);
    if (record.kind == MV_VECTOR) array_Free(content<array_t>(record));
    if (record.kind == MV_MAP) strtab_Free(content<strtab_t>(record));
}

using Release = support::FlatRecursion<CVariant, release_content>;

void clear_element(void* element) {
    clear_record(*static_cast<CVariant*>(element));
}

void copy_element(void* slot, const void* source) {
    *static_cast<CVariant*>(slot) = record_of(MVariant(static_cast<const CVariant*>(source)));
}

// Through the containers no exception may pass.
void* clone_value(const void* value) {
    try {
        return new CVariant(record_of(MVariant(static_cast<const CVariant*>(value))));
    } catch (const std::bad_alloc&) {
        return nullptr;
    }
}

void destroy_value(void* value) {
    clear_record(*static_cast<CVariant*>(value));
    delete static_cast<CVariant*>(value);
}

/// A value, and the empty record that is to hold it.
struct Task {
    const MVariant* value;
    CVariant* record;
};

/// What is still to be converted: a list, so that no depth of nesting wears out the stack.
using Tasks = std::vector<Task>;

void set(CVariant& record, MVariantKind kind, void* content) {
    if (content == nullptr) throw std::bad_alloc();
    record = {};
    record.payload = std::bit_cast<std::uint64_t>(content);
    record.kind = kind;
}

void convert_text(const std::string& text, CVariant& record) {
    const std::size_t size = text.size() + 1;
    char* const copy = new char[size];
    std::memcpy(copy, text.c_str(), size);
    set(record, MV_STRING, copy);
}

void convert_vector(const VARIANTVECTOR& vector, CVariant& record, Tasks& tasks) {
    array_t* const array = array_New(sizeof(CVariant));
    set(record, MV_VECTOR, array);
    array_SetCallbacks(array, clear_element, copy_element);
    array_SetCount(array, vector.Count());
    if (array_Count(array) != vector.Count() || (vector.Count() > 0 && array->data == nullptr)) {
        throw std::bad_alloc();
    }
    auto* slot = static_cast<CVariant*>(array->data);
    for (const MVariant& element : vector) tasks.push_back({&element, slot++});
}

void convert_map(const VStringMap<MVariant>& map, CVariant& record, Tasks& tasks) {
    strtab_t* const table = strtab_New();
    set(record, MV_MAP, table);
    strtab_SetCallbacks(table, clone_value, destroy_value);
    map.ForEach([&](const char* key, const MVariant& value) {
        const CVariant empty{};
        if (strtab_Set(table, key, &empty) == 0) throw std::bad_alloc();
        tasks.push_back({&value, static_cast<CVariant*>(strtab_Get(table, key))});
    });
}

void convert(const Task& task, Tasks& tasks) {
    const MVariant& value = *task.value;
    if (const std::string* text = value.Text()) {
        convert_text(*text, *task.record);
    } else if (const VARIANTVECTOR* vector = value.Vector()) {
        convert_vector(*vector, *task.record, tasks);
    } else if (const VStringMap<MVariant>* map = value.Map()) {
        convert_map(*map, *task.record, tasks);
    } else {
        task.record->payload = value.Word();
        task.record->kind = value.Kind();
    }
}

}  // namespace

CVariant record_of(const MVariant& value) {
    CVariant record{};
    try {
        Tasks tasks{{&value, &record}};
        while (!tasks.empty()) {
            const Task task = tasks.back();
            tasks.pop_back();
            convert(task, tasks);
        }
    } catch (const std::bad_alloc&) {
        clear_record(record);
        throw;
    }
    return record;
}

void clear_record(CVariant& record) {
    const CVariant content = record;
    record = {};
    Release::Run(content);
}

}  // namespace zol::engine
