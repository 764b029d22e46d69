// The faces of a PLY file: lists of points, or strips of triangles.
#pragma once

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "engine/formats/mesh/mesh_data.h"
#include "engine/formats/mesh/ply_header.h"
#include "engine/formats/mesh/ply_properties.h"
#include "engine/formats/mesh/polygon.h"
#include "engine/formats/number_text.h"

namespace zol::engine {

/// The count in front of a list that is in the file.
template <class Body>
std::uint64_t take_count(Body& body, const PlyProperty& list) {
    const double count = body.Number(*list.count_type);
    if (!(count >= 0.0) || count != std::floor(count)) body.Refuse("a list has no count");
    const std::uint64_t most = body.Remaining() / Body::LeastSize(list.type);
    // In a text it may be beyond any whole number.
    if (count > static_cast<double>(most)) {
        body.Refuse("a list of " + number_text(count) + " numbers does not fit the file");
    }
    return static_cast<std::uint64_t>(count);
}

/// Passes a number, or a list.
template <class Body>
void pass_property(Body& body, const PlyProperty& property) {
    body.Skip(property.type, property.count_type ? take_count(body, property) : 1);
}

class PlyFaces {
public:
    /// The points of the mesh are there before the first face is read.
    explicit PlyFaces(MeshData& mesh) : mesh_(mesh) {}

    template <class Body>
    void ReadFaces(Body& body, const PlyElement& element) {
        const std::size_t list = IndexList(element);
        const std::vector<PlyRole> roles = roles_of(element);
        PlyColours colours(roles);
        mesh_.triangles.Reserve(mesh_.triangles.Size() + static_cast<std::size_t>(element.count));
        for (std::uint64_t i = 0; i < element.count; ++i) {
            for (std::size_t p = 0; p < roles.size(); ++p) {
                const PlyProperty& property = element.properties[p];
                if (p == list) {
                    ReadCorners(body, property);
                    const Fault fault = AddFace();
                    if (fault != nullptr) body.Refuse("face " + std::to_string(i) + ": " + fault);
                } else if (roles[p] >= PlyRole::Red && roles[p] <= PlyRole::Alpha) {
                    colours.Take(roles[p], property.type, body.AnyNumber(property.type));
                } else {
                    pass_property(body, property);
                }
            }
            if (body.EndElement()) colours.EndElement();
        }
        number_ += static_cast<std::int64_t>(element.count);
        colours.Tell(mesh_.look);
    }

    template <class Body>
    void ReadStrips(Body& body, const PlyElement& element) {
        const std::size_t list = IndexList(element);
        for (std::uint64_t i = 0; i < element.count; ++i) {
            for (std::size_t p = 0; p < element.properties.size(); ++p) {
                if (p == list) {
                    ReadStrip(body, element.properties[p]);
                } else {
                    pass_property(body, element.properties[p]);
                }
            }
            body.EndElement();
        }
    }

    /// Faces of the file, of whatever number of corners.
    std::int64_t Number() const { return number_; }
    /// Says on the diagnostics channel how many faces crossed themselves.
    void Tell(const std::string& path) const;

private:
    using Fault = const char*;
    static constexpr std::int32_t kEndOfStrip = -1;

    /// Throws ReadError for an element without the list of its points.
    static std::size_t IndexList(const PlyElement& element);
    /// Of corners_. Gives what is wrong with it, or null.
    Fault AddFace();
    /// Gives what is wrong, or null.
    Fault AddTriangle(const MeshTriangle& corners);

    template <class Body>
    std::int32_t TakeIndex(Body& body, PlyType type) {
        const double index = body.Number(type);
        if (!(index >= -1.0 && index < static_cast<double>(mesh_.points.Size())) ||
            index != std::floor(index)) {
            RefuseIndex(body, index);
        }
        return static_cast<std::int32_t>(index);
    }

    template <class Body>
    [[noreturn]] void RefuseIndex(const Body& body, double index) const {
        body.Refuse("a face names point " + number_text(index) + " of " +
                    std::to_string(mesh_.points.Size()));
    }

    template <class Body>
    void ReadCorners(Body& body, const PlyProperty& property) {
        const std::uint64_t count = take_count(body, property);
        corners_.clear();
        for (std::uint64_t c = 0; c < count; ++c) {
            const std::int32_t index = TakeIndex(body, property.type);
            if (index < 0) RefuseIndex(body, index);
            corners_.push_back(index);
        }
    }

    template <class Body>
    void ReadStrip(Body& body, const PlyProperty& property) {
        const std::uint64_t count = take_count(body, property);
        MeshTriangle last{};
        std::uint64_t place = 0;
        for (std::uint64_t c = 0; c < count; ++c) {
            const std::int32_t index = TakeIndex(body, property.type);
            if (index == kEndOfStrip) {
                place = 0;
                continue;
            }
            last = {last[1], last[2], index};
            // Each second triangle of a strip runs the other way round.
            const bool turned = place % 2 != 0;
            if (++place < 3) continue;
            const Fault fault =
                AddTriangle(turned ? MeshTriangle{last[1], last[0], last[2]} : last);
            if (fault != nullptr) body.Refuse(fault);
            ++number_;
        }
    }

    MeshData& mesh_;
    PolygonParter parter_;
    std::vector<std::int32_t> corners_;
    std::int64_t number_ = 0;
    std::uint64_t crossing_ = 0;
};

}  // namespace zol::engine
