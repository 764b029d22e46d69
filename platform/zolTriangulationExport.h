// What a triangulation library answers: a mesh of points and triangles, its looks, and
// its named attributes.
//
// Contracts only. The engine stands behind these classes, and so does the scripted
// library of the tests; each brings its own hidden state.
//
// Coordinates are in the unit of the file. A triangulation, with every reference got
// from it, is for one thread at a time.
#pragma once

#include <cstdint>
#include <list>
#include <memory>
#include <string>
#include <utility>

#include "platform/colour.h"
#include "platform/model.h"
#include "platform/visibility.h"
#include "platform/zolGeometryExport.h"

namespace ubx::object {

/// What an attribute's value is. The ids are positions in the list "UNDEFINED", "NODE",
/// "BYTE", "INT32", "INT64", "BOOLEAN", "DOUBLE", "STRING", "BINARY", "ARRAY". A name can
/// tell more than the id: a date is a STRING named after the order of its fields.
struct TypeDescriptor {
    std::int32_t id = 0;
    std::string name;
};

/// One typed value. Each reading gives the value in its own type where it is of that
/// type; of another, whatever the implementation makes of it.
class ZOL_PLATFORM Property {
public:
    /// `type` may be null, and must live as long as the property.
    explicit Property(const TypeDescriptor* type) : type_(type) {}
    Property(const Property&) = delete;
    Property& operator=(const Property&) = delete;
    virtual ~Property();

    /// Only for a property that has a type.
    std::int32_t TypeId() const;
    /// Empty for a property without a type.
    std::string TypeName() const;

    virtual std::int32_t AsInt32() const = 0;
    virtual std::int64_t AsInt64() const = 0;
    virtual bool AsBoolean() const = 0;
    virtual double AsDouble() const = 0;
    /// Puts the text of the value into `text`, which it gives back; `decimals` is the most
    /// that a number has behind the point.
    virtual std::string& AsString(std::string& text, int decimals) const = 0;

private:
    const TypeDescriptor* type_;
};

/// Named attributes in their order. Names may occur twice, and an entry may be without a
/// property.
class ZOL_PLATFORM PropertyLibrary {
public:
    using Entry = std::pair<std::string, std::shared_ptr<const Property>>;
    using Position = std::list<Entry>::const_iterator;

    PropertyLibrary() = default;
    PropertyLibrary(const PropertyLibrary&) = delete;
    PropertyLibrary& operator=(const PropertyLibrary&) = delete;
    virtual ~PropertyLibrary();

    virtual Position Begin() const = 0;
    virtual Position End() const = 0;
};

}  // namespace ubx::object

namespace zol::model::tri {

/// The corners of a triangle as point indices from 0.
struct TriIndex {
    std::int32_t first = -1;
    std::int32_t second = -1;
    std::int32_t third = -1;
};

/// How a triangulation looks. A value: copies answer alike.
class ZOL_PLATFORM TriProperties {
public:
    struct State;

    explicit TriProperties(std::shared_ptr<const State> state);
    TriProperties(const TriProperties& other);
    TriProperties& operator=(const TriProperties&) = delete;
    virtual ~TriProperties();

    graphics::RGB GetColour() const;
    bool IsTextured() const;
    /// The name of the texture; empty when there is none.
    std::string GetTexture() const;
    bool IsTranslucent() const;
    /// From 0, opaque, to 1, clear.
    float GetTranslucency() const;

private:
    std::shared_ptr<const State> state_;
};

/// A mesh read from a file.
class ZOL_PLATFORM Triangulation : public IModel {
public:
    /// Reads the named file. Reports nothing: one that could not be read has no points.
    explicit Triangulation(const std::string& file);
    Triangulation(const Triangulation&) = delete;
    Triangulation& operator=(const Triangulation&) = delete;

    /// The enclosed volume; 0 for a mesh that encloses none.
    virtual double GetVolume() const;
    /// Consistent, without border, and of a volume that is not 0.
    virtual bool IsSolid() const;
    ~Triangulation() override;

    std::int32_t NumPoints() const;
    std::int32_t NumTriangles() const;
    /// Only for an index inside the count.
    void GetPoint(int index, double& x, double& y, double& z) const;
    void GetTriangle(int index, TriIndex& triangle) const;

    /// Not a solid, and no vertical line meets it in more than one point.
    bool IsSurface() const;
    /// Two triangles meet in more than a shared corner or edge.
    bool IsCrossing() const;
    /// No edge has more than two triangles, and two run along it in opposite directions.
    bool IsConsistent() const;
    bool IsPointInside(const geometry::Point3D& point) const;
    /// Whether the surface is no farther from the point than `tolerance`.
    bool IsPointOn(const geometry::Point3D& point, double tolerance) const;

    const TriProperties& GetProperties() const;
    const ubx::object::PropertyLibrary& GetAttributes() const;

private:
    struct State;
    std::unique_ptr<State> state_;
};

}  // namespace zol::model::tri
