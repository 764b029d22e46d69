// What a design database library answers: a database of layers, the objects of a layer, and
// a view of each kind of object.
//
// Contracts only. The engine stands behind these classes, and so does the scripted library
// of the tests; each brings its own hidden state.
//
// Coordinates are in the unit of the source, angles in degrees. Layers and objects own what
// they answer from: they may outlive what they were got from, in any order. A database, with
// everything got from it, is for one thread at a time.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "platform/colour.h"
#include "platform/visibility.h"
#include "platform/zolDesignViews.h"

namespace zol::audit {

/// What keeps an account of its changes.
class ZOL_PLATFORM IAudit {
public:
    virtual ~IAudit() = default;

protected:
    IAudit() = default;
    IAudit(const IAudit&) = default;
    IAudit& operator=(const IAudit&) = default;
};

}  // namespace zol::audit

namespace zol::design {

class ZOL_PLATFORM IObject {
public:
    virtual ~IObject() = default;

protected:
    IObject() = default;
    IObject(const IObject&) = default;
    IObject& operator=(const IObject&) = default;
};

/// An object of a layer. One that no layer has filled is of unknown kind and empty.
class ZOL_PLATFORM Object final : public IObject {
public:
    struct State;

    Object();
    explicit Object(std::unique_ptr<State> state);
    Object(const Object&) = delete;
    Object& operator=(const Object&) = delete;
    Object& operator=(Object&& other) noexcept;
    ~Object() override;

    std::string GetName() const;
    std::string GetFeature() const;
    std::string GetGroup() const;
    /// What the source calls this kind of object.
    std::string GetPrimitive() const;
    double GetValue() const;
    ColourIndex GetColour() const;
    std::string GetDescription() const;
    Metadata GetMetadata() const;
    /// True when the object could not be read whole; GetError says why.
    bool HasError() const;
    std::string GetError() const;
    ObjectType GetType() const;

    /// Exactly one of the tests is true, of an object of unknown kind none. A view is only to
    /// be asked for behind its own test, but for one: of a line dimension, AsDimensionRadius
    /// gives a view that answers with that dimension's own texts and numbers.
    bool IsPolyline() const;
    ObjectPolyline& AsPolyline();
    bool IsText() const;
    ObjectText& AsText();
    bool IsDimensionLine() const;
    ObjectDimensionLine& AsDimensionLine();
    bool IsDimensionRadius() const;
    ObjectDimensionRadius& AsDimensionRadius();
    bool IsDimensionArc() const;
    ObjectDimensionArc& AsDimensionArc();
    bool IsDimensionAngle() const;
    ObjectDimensionAngle& AsDimensionAngle();
    bool Is3DText() const;
    Object3DText& As3DText();
    bool IsArrow() const;
    ObjectArrow& AsArrow();

private:
    std::unique_ptr<State> state_;
};

/// A layer of a database. One that no database has filled is empty.
class ZOL_PLATFORM Layer {
public:
    struct State;

    Layer();
    explicit Layer(std::unique_ptr<State> state);
    Layer(const Layer&) = delete;
    Layer& operator=(const Layer&) = delete;
    Layer& operator=(Layer&& other) noexcept;
    ~Layer();

    std::string GetName() const;
    int NObjects() const;
    /// Fills `object`. Only for an index below NObjects. False when it can't be read: it is
    /// then of unknown kind and in error.
    bool GetObject(int index, Object* object);
    std::string GetDescription() const;
    /// Whether it was changed since it was read.
    bool IsEdited() const;

private:
    std::unique_ptr<State> state_;
};

class ZOL_PLATFORM IDatabase : public audit::IAudit {
protected:
    IDatabase() = default;
    IDatabase(const IDatabase&) = default;
    IDatabase& operator=(const IDatabase&) = default;
};

/// A design database.
class ZOL_PLATFORM Database final : public IDatabase {
public:
    Database();
    Database(const Database&) = delete;
    Database& operator=(const Database&) = delete;
    ~Database() override;

    /// Opens a file, or a server by its connection string. The one mode is "read". When it
    /// does not open, GetError says why.
    bool Open(const std::string& path, const std::string& mode);
    /// Lets go of the source, whatever `save` says: nothing here changes it. Closing twice is
    /// fine. When it fails, there is an error.
    void Close(bool save);
    bool IsOpen() const;
    /// The name by which it was opened.
    std::string GetName() const;
    /// The number of all layers.
    int NLayers() const;
    /// Fills `layer`: false when there is no such layer or it can't be read. `layer` is empty
    /// then.
    bool Get(const std::string& name, Layer* layer);
    /// `position` counts from 0 in the list of layers.
    bool Get(int position, Layer* layer);
    bool Exists(const std::string& name) const;
    /// The names of all layers, in an order that stays the same while the database is open.
    /// Asked for with every look-up by index, so it is not copied: it lives until the database
    /// is asked something else.
    const std::vector<std::string>& GetLayerList();
    bool HasError() const;
    /// What is wrong: one line each, at least one when there is an error.
    std::vector<std::string> GetError() const;
    /// Puts the colours that colour indices stand for into `table`. False, and `table` stays,
    /// when there are none.
    bool GetColourTable(std::vector<graphics::RGB>& table) const;

private:
    struct State;
    std::unique_ptr<State> state_;
};

/// The name in the form in which Database::Get wants it.
ZOL_PLATFORM std::string GetValidLayerName(const std::string& name);

}  // namespace zol::design
