// What the properties of PLY elements mean, which only their names tell.
#pragma once

#include <limits>
#include <string>
#include <string_view>
#include <vector>

#include "engine/formats/mesh/colour_tally.h"
#include "engine/formats/mesh/mesh_data.h"
#include "engine/formats/mesh/ply_header.h"

namespace zol::engine {

enum class PlyRole {
    X,
    Y,
    Z,
    Red,
    Green,
    Blue,
    Alpha,
    /// Is passed: a list, a normal, a place on a texture.
    Passed,
    /// Any other number.
    Other
};

/// The roles of the properties of an element, in their order.
std::vector<PlyRole> roles_of(const PlyElement& element);

/// The colours of points or faces, as their properties come by.
class PlyColours {
public:
    explicit PlyColours(const std::vector<PlyRole>& roles);

    /// Takes a number whose role is one of the four of a colour.
    void Take(PlyRole role, PlyType type, double value);
    /// The element is at its end.
    void EndElement() {
        if (is_coloured_) tally_.Add(colour_);
    }
    /// Says the colour of most elements, when they have one.
    void Tell(MeshLook& look) { tally_.Tell(look, has_opacity_); }

private:
    bool is_coloured_ = false;
    bool has_opacity_ = false;
    ColourTally::Colour colour_{0, 0, 0, 255};
    ColourTally tally_;
};

/// From where to where the numbers of a property go.
class PlyRange {
public:
    explicit PlyRange(std::string_view property) : property_(property) {}

    void Take(double value) {
        if (value < least_) least_ = value;
        if (value > greatest_) greatest_ = value;
    }

    /// Adds the attribute "vertex_<property>", a text like "0.5 to 12", unless no number came.
    void Tell(MeshData& mesh) const;

private:
    std::string property_;
    double least_ = std::numeric_limits<double>::infinity();
    double greatest_ = -std::numeric_limits<double>::infinity();
};

}  // namespace zol::engine
