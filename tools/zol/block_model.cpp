#include "tools/zol/block_model.h"

#include <array>
#include <iterator>

#include "tools/zol/last_error.h"

namespace zol::tool {

namespace {

// One byte above what the interface fills, since not every function terminates a
// text that fills the buffer.
using TextBuffer = std::array<char, 256>;

void require(int status) {
    if (status != 0) fail_by_last_error();
}

/// The answer of a predicate or a count, both of which fail by a negative number.
template <class Integer>
Integer answered(Integer answer) {
    if (answer < 0) fail_by_last_error();
    return answer;
}

using Count = int (*)(BlockModelHandle*);
using NameAt = int (*)(BlockModelHandle*, const int*, char*);

std::vector<std::string> names(BlockModelHandle* handle, Count count, NameAt name_at) {
    const int n = answered(count(handle));
    std::vector<std::string> list;
    for (int i = 0; i < n; ++i) {
        TextBuffer name{};
        require(name_at(handle, &i, name.data()));
        list.emplace_back(name.data());
    }
    return list;
}

}  // namespace

const char* type_name(VariableType type) {
    static constexpr const char* kNames[] = {"unknown", "bit",   "byte",  "short",  "sfloat",
                                             "integer", "int64", "float", "double", "string"};
    const auto code = static_cast<std::size_t>(type);
    return code < std::size(kNames) ? kNames[code] : kNames[0];
}

BlockModel::BlockModel(const std::string& file) : handle_(ZOL_BlockModel_Open(file.c_str())) {
    if (handle_ == nullptr) fail_by_last_error();
}

BlockModel::~BlockModel() {
    ZOL_BlockModel_Close(handle_);
}

Box BlockModel::Extent() const {
    Box box;
    require(ZOL_BlockModel_GetModelExtent(handle_, &box.lower.x, &box.lower.y, &box.lower.z,
                                          &box.upper.x, &box.upper.y, &box.upper.z));
    return box;
}

Point BlockModel::Origin() const {
    Point point;
    require(ZOL_BlockModel_GetModelOrigin(handle_, &point.x, &point.y, &point.z));
    return point;
}

Point BlockModel::Orientation() const {
    Point angles;
    require(ZOL_BlockModel_GetModelOrientation(handle_, &angles.x, &angles.y, &angles.z));
    return angles;
}

bool BlockModel::IsStratigraphic() const {
    return answered(ZOL_BlockModel_IsStratigraphicModel(handle_)) == 1;
}

long long BlockModel::NBlocks() const {
    return answered(ZOL_BlockModel_NBlocks(handle_));
}

std::vector<Schema> BlockModel::Schemas() const {
    const int n = answered(ZOL_BlockModel_NSchemas(handle_));
    std::vector<Schema> schemas;
    for (int i = 0; i < n; ++i) {
        Schema schema;
        Point& counts = schema.dimensions;
        // The count may speak of one schema more than can be found, which is no error.
        if (ZOL_BlockModel_GetSchemaDimensions(handle_, &i, &counts.x, &counts.y, &counts.z) != 0) {
            continue;
        }
        Box& box = schema.extent;
        require(ZOL_BlockModel_GetSchemaExtent(handle_, &i, &box.lower.x, &box.lower.y,
                                               &box.lower.z, &box.upper.x, &box.upper.y,
                                               &box.upper.z));
        Point& least = schema.minimum_size;
        Point& most = schema.maximum_size;
        require(ZOL_BlockModel_GetSchemaSizes(handle_, &i, &least.x, &least.y, &least.z, &most.x,
                                              &most.y, &most.z));
        schemas.push_back(schema);
    }
    return schemas;
}

std::vector<std::string> BlockModel::VariableNames() const {
    return names(handle_, ZOL_BlockModel_NVariables, ZOL_BlockModel_GetVariableName);
}

std::vector<std::string> BlockModel::PredefinedNames() const {
    return names(handle_, ZOL_BlockModel_NPredefinedVariables,
                 ZOL_BlockModel_GetPredefinedVariableName);
}

Variable BlockModel::Describe(const std::string& name, bool is_predefined) const {
    Variable variable;
    variable.name = name;
    variable.is_predefined = is_predefined;
    int type = 0;
    require(ZOL_BlockModel_GetVariableType(handle_, name.c_str(), &type));
    variable.type = static_cast<VariableType>(type);
    variable.is_text = answered(ZOL_BlockModel_IsString(handle_, name.c_str())) == 1;

    TextBuffer text{};
    require(ZOL_BlockModel_GetVariableDescription(handle_, name.c_str(), text.data()));
    variable.description = text.data();
    require(ZOL_BlockModel_GetDefaultNumber(handle_, name.c_str(), &variable.default_number));
    text = {};
    require(ZOL_BlockModel_GetDefaultString(handle_, name.c_str(), text.data()));
    variable.default_text = text.data();

    const int n = answered(ZOL_BlockModel_NTranslations(handle_, name.c_str()));
    for (int i = 0; i < n; ++i) {
        text = {};
        require(ZOL_BlockModel_GetTranslationName(handle_, name.c_str(), &i, text.data()));
        variable.translations.emplace_back(text.data());
    }
    return variable;
}

void BlockModel::First() {
    require(ZOL_BlockModel_FirstBlock(handle_));
}

void BlockModel::Next() {
    require(ZOL_BlockModel_NextBlock(handle_));
}

bool BlockModel::IsAtEnd() const {
    return answered(ZOL_BlockModel_IsEof(handle_)) == 1;
}

long long BlockModel::Position() const {
    return answered(ZOL_BlockModel_GetPosition(handle_));
}

double BlockModel::Number(const std::string& name) const {
    double number = 0;
    require(ZOL_BlockModel_GetNumber(handle_, name.c_str(), &number));
    return number;
}

void BlockModel::Text(const std::string& name, std::string& text) const {
    TextBuffer buffer;
    require(ZOL_BlockModel_GetString(handle_, name.c_str(), buffer.data()));
    text = buffer.data();
}

Box BlockModel::BlockExtent() const {
    Box box;
    require(ZOL_BlockModel_GetBlockExtent(handle_, &box.lower.x, &box.lower.y, &box.lower.z,
                                          &box.upper.x, &box.upper.y, &box.upper.z));
    return box;
}

bool BlockModel::Find(const Point& point) {
    return answered(ZOL_BlockModel_FindXyz(handle_, &point.x, &point.y, &point.z)) == 0;
}

bool BlockModel::FindWorld(const Point& point) {
    return answered(ZOL_BlockModel_FindWorldXyz(handle_, &point.x, &point.y, &point.z)) == 0;
}

}  // namespace zol::tool
