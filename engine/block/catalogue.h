// The variables of a model by name: the file's own and those that every model has.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "engine/block/source.h"

namespace zol::engine::block {

/// Variables that are computed from a block's box and number.
enum class Predefined {
    CentroidX,
    CentroidY,
    CentroidZ,
    SizeX,
    SizeY,
    SizeZ,
    Volume,
    BlockIndex,
};

/// What a name stands for.
struct Field {
    enum class Kind { Unknown, Own, Predefined };
    Kind kind = Kind::Unknown;
    /// Kind::Own: the variable's place in the source.
    std::size_t variable = 0;
    Predefined predefined = Predefined::CentroidX;
};

class Catalogue {
public:
    /// `source` outlives the catalogue and keeps its variables.
    explicit Catalogue(const Source& source);

    Field Find(const std::string& name) const;
    /// The file's own variable of that name, or null.
    const Variable* OwnVariable(const std::string& name) const;
    /// Names by selector bits, as the model's GetFieldVector takes them: the file's own
    /// in file order, then the predefined.
    std::vector<std::string> Names(int selector) const;

    static std::string_view DescriptionOf(Predefined predefined);

private:
    const Source& source_;
    std::unordered_map<std::string, Field> fields_;
};

}  // namespace zol::engine::block
