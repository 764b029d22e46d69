// A variable of a block model: what the catalogue says of it, and the column
// that holds its values.
#pragma once

#include <cmath>
#include <cstdint>
#include <limits>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace zol::engine::block {

/// How a variable's values are stored; it decides the type name.
enum class Storage { Bit, Byte, Short, SFloat, Integer, Int64, Float, Double, Text };

/// "bit", "byte", "short", "sfloat", "integer", "int64", "float", "double" or "string".
std::string_view storage_name(Storage storage);
/// The storage of a type name; false when the name is none of the nine.
bool storage_from_name(std::string_view name, Storage& storage);

inline constexpr double kMissing = std::numeric_limits<double>::quiet_NaN();

/// Values by block, decoded when they are first asked for. Blocks count from 0;
/// callers never ask past the last one. Not for two threads at a time.
class Column {
public:
    Column() = default;
    Column(const Column&) = delete;
    Column& operator=(const Column&) = delete;
    virtual ~Column() = default;

    /// The number in a block; NaN when it is missing or the column holds texts. The same
    /// in every floating-point mode: it is asked for too often to set the mode around it.
    virtual double Number(std::int64_t block) = 0;
    /// True when the value of a block could not be read, as opposed to one that is
    /// missing in the file: nothing may then stand in for it.
    virtual bool IsLost(std::int64_t /*block*/) { return false; }
    /// The text in a block, a number's as its shortest decimal; empty when missing.
    virtual std::string Text(std::int64_t block) = 0;
};

/// A named code of a classification: GetString answers the name, Get the code.
struct Translation {
    std::int64_t code = 0;
    std::string name;
};

struct Variable {
    std::string name;
    std::string description;
    Storage storage = Storage::Double;
    /// In code order; a variable that has any is a classification.
    std::vector<Translation> translations;
    /// What a missing value answers: NaN and empty when the file states none.
    double default_number = kMissing;
    std::string default_text;
    std::unique_ptr<Column> column;

    bool IsText() const { return storage == Storage::Text; }
    bool IsClassification() const { return !translations.empty(); }
};

}  // namespace zol::engine::block
