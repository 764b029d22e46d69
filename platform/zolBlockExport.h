// What a block model library answers: the model, its match, its schemas.
//
// Contracts only. The engine stands behind these classes, and so do the
// scripted libraries of the tests; each brings its own hidden state.
//
// Coordinates are model coordinates unless an operation says "world". One
// model, with its match and every value got from it, is for one thread at a time.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "platform/visibility.h"
#include "platform/zolGeometryExport.h"

namespace zol::model::block {

/// Where a block lies in its model. Its value is for carrying to a caller and
/// back, never for arithmetic.
struct Position {
    std::int64_t value = 0;
};

/// The box of one block.
class ZOL_PLATFORM BlockExtent {
public:
    explicit BlockExtent(const geometry::Extent& extent);
    BlockExtent(const BlockExtent&) = default;
    BlockExtent& operator=(const BlockExtent&) = default;
    virtual ~BlockExtent();

    geometry::Extent GetExtent() const;

private:
    geometry::Extent extent_;
};

/// One way in which blocks are laid out: the parent lattice, or the lattice of
/// sub-blocks. A value: copies answer alike.
class ZOL_PLATFORM Schema {
public:
    struct State;

    Schema();
    explicit Schema(std::shared_ptr<const State> state);
    Schema(const Schema&);
    Schema& operator=(const Schema&);
    ~Schema();

    /// True when the model itself states this schema, false when it was derived
    /// from the blocks.
    bool IsOriginal() const;
    geometry::Extent GetExtent() const;
    /// Counts of blocks along the three axes.
    geometry::Point3I GetDimensions() const;
    /// Least block size along each axis.
    geometry::Coord3D GetMinimumSize() const;
    /// Greatest block size along each axis.
    geometry::Coord3D GetMaximumSize() const;

private:
    std::shared_ptr<const State> state_;
};

/// A cursor over blocks and the values of the block under it.
class ZOL_PLATFORM IModel {
public:
    virtual bool IsOpen() const = 0;
    /// Moves to the first block: 0, or 1 when there is none.
    virtual int FindFirst() = 0;
    /// Moves to the next block: 0, or 1 when the cursor ran off the end.
    virtual int Next() = 0;
    /// True when the cursor has run off the end.
    virtual bool IsEof() const = 0;
    /// Value of a variable in the current block.
    virtual double Get(const std::string& name) const = 0;
    /// Text of a variable in the current block.
    virtual std::string GetString(const std::string& name) const = 0;
    virtual BlockExtent GetBlockExtent() const = 0;
    virtual Position GetPosition() const = 0;
    virtual ~IModel();

protected:
    IModel() = default;
    IModel(const IModel&) = default;
    IModel& operator=(const IModel&) = default;
};

/// The blocks of a model that match triangulations and an extent. It belongs to
/// its model and answers the cursor operations as the model does, with a cursor
/// of its own.
class ZOL_PLATFORM Match final : public IModel {
public:
    struct State;

    explicit Match(std::unique_ptr<State> state);
    Match(const Match&) = delete;
    Match& operator=(const Match&) = delete;
    ~Match() override;

    bool IsOpen() const override;
    int FindFirst() override;
    int Next() override;
    bool IsEof() const override;
    double Get(const std::string& name) const override;
    std::string GetString(const std::string& name) const override;
    BlockExtent GetBlockExtent() const override;
    Position GetPosition() const override;

    /// Ends the match and forgets its settings; the object is fit for a new one. Closing
    /// twice is fine.
    void Close();

    // Settings take effect when the cursor next goes to the first block.

    /// Adds a mesh file, in world coordinates. Nothing is reported: a file that can't be
    /// read selects nothing.
    void AddTriangulation(const std::string& file);
    void SetExtent(const geometry::Extent& extent);
    /// Whether parts of blocks match, and not only whole blocks by their centroid.
    void SetUseExactVolume(bool exact);

    // Of the block under the match's cursor; all zero where it is on none.

    /// The box of its part that matches.
    BlockExtent GetMatchExtent() const;
    /// The volume of that part.
    double GetMatchVolume() const;

private:
    std::unique_ptr<State> state_;
};

/// An open block model.
class ZOL_PLATFORM Model : public IModel {
public:
    /// Opens `file` in `mode`; "r" reads. Reports nothing: ask IsOpen.
    Model(const std::string& file, std::string mode);
    Model(const Model&) = delete;
    Model& operator=(const Model&) = delete;
    ~Model() override;

    bool IsOpen() const override;
    int FindFirst() override;
    int Next() override;
    bool IsEof() const override;
    double Get(const std::string& name) const override;
    std::string GetString(const std::string& name) const override;
    BlockExtent GetBlockExtent() const override;
    Position GetPosition() const override;

    /// 0 when closed; any other value when the file could not be closed.
    int Close();
    std::string GetName() const;
    /// The one match of this model. It can't fail.
    Match& GetMatch();

    geometry::Extent GetModelExtent() const;
    /// World coordinates of the model's origin.
    geometry::Coord3D GetModelOrigin() const;
    geometry::Coord3D GetModelOrientation() const;
    geometry::Coord3D ToWorld(double x, double y, double z) const;
    geometry::Coord3D ToModel(double x, double y, double z) const;
    bool IsStrat() const;
    std::int64_t NBlocks() const;

    int NSchemas() const;
    /// `index` counts from 0 and is below NSchemas.
    Schema GetSchema(int index) const;

    /// Names of the variables that `selector` asks for, in an order that stays
    /// the same while the model is open. Selector bits: 1 the file's own
    /// variables, 2 predefined, 4 classification; 8 restricts to numeric, 16 to
    /// string variables.
    std::vector<std::string> GetFieldVector(int selector) const;
    bool IsNumber(const std::string& name) const;
    bool IsString(const std::string& name) const;
    bool IsPredefined(const std::string& name) const;
    double GetFieldDefault(const std::string& name) const;
    std::string GetFieldDefaultString(const std::string& name) const;
    std::string GetFieldDescription(const std::string& name) const;
    /// "bit", "byte", "short", "sfloat", "integer", "int64", "float", "double",
    /// or another word for what has no such type.
    std::string GetFieldType(const std::string& name) const;
    std::vector<std::string> GetFieldTranslations(const std::string& name) const;

    /// Moves the cursor to the block at a point: 0 found, anything else not found.
    int FindXyz(double x, double y, double z);
    int FindWorldXyz(double x, double y, double z);
    int SetPosition(const Position& position);

private:
    struct State;
    std::unique_ptr<State> state_;
};

}  // namespace zol::model::block
