// A block model behind the flat interface, as a C++ value: it closes itself, and
// its texts are strings.
#pragma once

#include <string>
#include <vector>

#include "api/zolExportedApi_ReadOnly.h"

namespace zol::tool {

struct Point {
    double x = 0;
    double y = 0;
    double z = 0;
};

/// Lower corner, upper corner.
struct Box {
    Point lower;
    Point upper;
};

struct Schema {
    /// Counts of blocks along the axes.
    Point dimensions;
    Box extent;
    Point minimum_size;
    Point maximum_size;
};

/// The codes of variable types, as the interface numbers them.
enum class VariableType {
    Unknown,
    Bit,
    Byte,
    Short,
    SFloat,
    Integer,
    Int64,
    Float,
    Double,
    String
};

const char* type_name(VariableType type);

struct Variable {
    std::string name;
    VariableType type = VariableType::Unknown;
    std::string description;
    bool is_text = false;
    bool is_predefined = false;
    /// NaN when the model states none.
    double default_number = 0;
    /// Empty when the model states none.
    std::string default_text;
    /// Names in code order; a variable that has any is a classification.
    std::vector<std::string> translations;

    bool IsClassification() const { return !translations.empty(); }
};

/// An open block model and its cursor. Coordinates are model coordinates unless
/// an operation says "world". Texts longer than 254 bytes arrive cut: the
/// interface has no longer ones. Each operation throws ReadFailure with the text
/// of the interface's last error when the call below fails.
class BlockModel {
public:
    /// Throws ReadFailure when the file does not open.
    explicit BlockModel(const std::string& file);
    BlockModel(const BlockModel&) = delete;
    BlockModel& operator=(const BlockModel&) = delete;
    ~BlockModel();

    Box Extent() const;
    /// World coordinates.
    Point Origin() const;
    /// Degrees about z, the new y, the new x.
    Point Orientation() const;
    bool IsStratigraphic() const;
    long long NBlocks() const;
    std::vector<Schema> Schemas() const;

    /// The file's own variables, classifications among them, in the file's order.
    std::vector<std::string> VariableNames() const;
    std::vector<std::string> PredefinedNames() const;
    Variable Describe(const std::string& name, bool is_predefined) const;

    void First();
    void Next();
    bool IsAtEnd() const;
    long long Position() const;
    double Number(const std::string& name) const;
    /// Replaces `text`, whose storage is used again.
    void Text(const std::string& name, std::string& text) const;
    Box BlockExtent() const;

    /// Moves to the block at a point; false when there is none.
    bool Find(const Point& point);
    bool FindWorld(const Point& point);

private:
    BlockModelHandle* handle_;
};

}  // namespace zol::tool
