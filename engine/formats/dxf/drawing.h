// A drawing as it was read: layers, and objects of eight kinds.
//
// Objects are kept close to how the file tells them, with what a block's insertion does to them
// beside; their points, texts and dimensions are made when they are asked for. So a circle is
// no larger than in the file, and a block that is inserted often is held once.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "engine/formats/drawing_shapes.h"

namespace zol::engine {

struct DrawingLayer {
    /// As the drawing spells it; names are the same when they differ only in the case of A to Z.
    std::string name;
    std::string description;
    /// 1 to 255, and the colour itself, 0x00RRGGBB, where the drawing tells that too.
    int colour = 7;
    std::optional<std::uint32_t> true_colour;
    /// See DrawingTraits.
    int line_type = 0;
    int line_weight = -3;
    bool is_off = false;
    bool is_frozen = false;
    bool is_locked = false;
    /// False for a layer that objects name and the table of layers doesn't.
    bool is_declared = false;
};

/// What objects of all kinds have.
struct DrawingTraits {
    DrawingKind kind = DrawingKind::Polyline;
    /// The entity of the file: "LINE", "MTEXT".
    std::string_view primitive;
    /// Of the entity, or of the insertion that it came in by; 0 when there is none. It may be
    /// that of several objects.
    std::uint64_t handle = 0;
    std::uint32_t layer = 0;
    /// 1 to 255, of the layer or of the insertion where the entity leaves it to them. Of a true
    /// colour, the nearest.
    int colour = 7;
    /// 0x00RRGGBB.
    std::optional<std::uint32_t> true_colour;
    /// 0 for an unbroken line, else the position among the drawing's other line types,
    /// from 1.
    int line_type = 0;
    /// Hundredths of a millimetre, or -3 where the drawing leaves it open.
    int line_weight = -3;
    /// False when the drawing says not to show it, whatever its layer is.
    bool is_visible = true;
    /// The texts that extended data of these names hold, with these fall-backs: the handle in
    /// capitals, the group that the object is a member of, the block that it is part of, nothing.
    std::string name;
    std::string group;
    std::string feature;
    std::string description;
    /// The number that extended data hold, else the height of the object's first point.
    double value = 0;
};

/// What of the file is not among the objects, by what the file calls it.
struct DrawingSkip {
    std::string what;
    std::uint64_t count = 0;
};

struct DrawingData;

/// Never changes; may be asked by several threads.
class Drawing {
public:
    explicit Drawing(std::unique_ptr<const DrawingData> data);
    Drawing(Drawing&&) noexcept;
    Drawing& operator=(Drawing&&) noexcept;
    ~Drawing();

    /// In the order of the table, then undeclared ones in the order in which objects name them.
    std::span<const DrawingLayer> Layers() const;
    /// The layer of that name, or nothing.
    std::optional<std::size_t> FindLayer(std::string_view name) const;
    /// The objects of a layer in the order of the file.
    std::span<const std::uint32_t> ObjectsOf(std::size_t layer) const;
    std::size_t ObjectCount() const;
    /// 0x00RRGGBB of what is coloured by red, green and blue, each once, in the order of the
    /// file; of a drawing with more than 65,280 the first.
    std::span<const std::uint32_t> TrueColours() const;
    /// Sorted by name.
    std::span<const DrawingSkip> Skipped() const;

    // Of an object below ObjectCount(); the last four only of objects of their kinds.
    DrawingKind Kind(std::size_t object) const;
    DrawingTraits Traits(std::size_t object) const;
    /// Of its extended data and of the records of its dictionary: "APP.key" for a text
    /// "key=value" of an application, "APP.3" for its third value; of a record its name, with
    /// ".40" for a group code, ".40.2" for the second of that code.
    std::vector<DrawingField> Fields(std::size_t object) const;
    /// Curves are flattened: arcs and ellipses into parts of at most 2 degrees, so that no chord
    /// is farther from its arc than 0.00016 of the radius (of the greater one of an ellipse);
    /// splines to 0.0001 of the greatest side of the box round their control points.
    DrawingPolyline Polyline(std::size_t object) const;
    DrawingText Text(std::size_t object) const;
    DrawingArrow Arrow(std::size_t object) const;
    DrawingDimension Dimension(std::size_t object) const;

private:
    std::unique_ptr<const DrawingData> data_;
};

}  // namespace zol::engine
