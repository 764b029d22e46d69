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
    /// Kind::Own: the variable; null otherwise.
    const Variable* variable = nullptr;
    Predefined predefined = Predefined::CentroidX;
};

class Catalogue {
public:
    /// `source` outlives the catalogue and keeps its variables.
    explicit Catalogue(const Source& source);

    /// Takes notice that the source has changed.
    void Restart();

    /// Costs a comparison of texts where the name comes after the one that it came
    /// after before, as in a loop over blocks; else a look into a table.
    const Field& Find(const std::string& name) const {
        const std::size_t expected = entries_[last_].follower;
        if (expected != 0 && entries_[expected].name == name) [[likely]] {
            last_ = expected;
            return entries_[expected].field;
        }
        return LookUp(name);
    }
    /// The file's own variable of that name, or null.
    const Variable* OwnVariable(const std::string& name) const;
    /// Names by selector bits, as the model's GetFieldVector takes them: the file's own
    /// in file order, then the predefined.
    std::vector<std::string> Names(int selector) const;

    static std::string_view DescriptionOf(Predefined predefined);

private:
    struct Entry {
        std::string name;
        Field field;
        /// The entry that was asked for next, the last time.
        std::size_t follower = 0;
    };

    void Add(std::string_view name, const Field& field);
    const Field& LookUp(const std::string& name) const;

    const Source& source_;
    /// The first one stands for unknown names and has none.
    mutable std::vector<Entry> entries_;
    mutable std::size_t last_ = 0;
    std::unordered_map<std::string, std::size_t> places_;
};

}  // namespace zol::engine::block
