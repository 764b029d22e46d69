// The values of a design database library, and its views of the kinds of objects: the part of
// platform/zolDesignExport.h that an object is asked for. What holds for all is told there.
#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "platform/visibility.h"

namespace zol::design {

/// The kind of an object. Callers see these numbers.
enum class ObjectType : std::int32_t {
    kUnknown = 0,
    kPolyline = 1,
    kText = 2,
    k3DText = 3,
    kArrow = 4,
    kDimensionLine = 5,
    kDimensionRadius = 6,
    kDimensionArc = 7,
    kDimensionAngle = 8,
};

/// Where the text of a dimension stands. Callers see each number less 1, so that what the
/// source does not tell is -1 to them.
enum class ObjectDimensionLocation : std::int32_t {
    kUnknown = 0,
    /// In the line, which is broken for it.
    kInLine = 1,
    kAbove = 2,
    /// On the side of the line that is away from what is measured.
    kOutside = 3,
    /// By the Japanese standard: above the line, or outside where there is no room.
    kJapaneseStandard = 4,
    kBelow = 5,
    /// Where somebody has put it.
    kPlaced = 6,
};

/// A colour as a position in the colour table of its database, from 0.
struct ColourIndex {
    std::int32_t index = 0;
};

/// How a line is broken: 0 for an unbroken one, else the position among the other line types
/// of the database, from 1.
struct LineType {
    std::int32_t value = 0;
};

/// How thick a line is: in hundredths of a millimetre; -3 where the source leaves it open.
struct LineCode {
    std::int32_t value = -3;
};

/// A point of a design, a direction or a normal. A value.
class ZOL_PLATFORM Point {
public:
    Point(double x, double y, double z);
    /// `w` is the bulge of the segment that begins here: the tangent of a quarter of its
    /// angle, 0 for a straight one. `t` is 1 where a segment leads here from the point before, 0
    /// at the first point.
    Point(double x, double y, double z, double w, std::int32_t t, std::string name);
    Point(const Point& other);
    Point& operator=(const Point& other);
    ~Point();

    void GetXyz(double* x, double* y, double* z) const;
    void GetXyzwtn(double* x, double* y, double* z, double* w, std::int32_t* t,
                   std::string* name) const;

private:
    double x_;
    double y_;
    double z_;
    double w_ = 0.0;
    std::int32_t t_ = 0;
    std::string name_;
};

/// The named fields of an object, each with a text. A value: copies answer alike.
class ZOL_PLATFORM Metadata {
public:
    struct State;

    explicit Metadata(std::shared_ptr<const State> state);
    Metadata(const Metadata& other);
    Metadata& operator=(const Metadata&) = delete;
    virtual ~Metadata();

    /// True when there is at least one field.
    bool HasMetadata() const;
    int NFields() const;
    bool HasField(const std::string& name) const;
    /// The position, from 0; below 0 when there is no such field.
    int GetFieldIndex(const std::string& name) const;
    /// The name of a field. Only for a position below NFields.
    std::string GetField(int position) const;
    std::string GetValue(int position) const;
    std::string GetValue(const std::string& name) const;

private:
    std::shared_ptr<const State> state_;
};

// The views below belong to their object and live as long as it does. They are values of a
// hidden state, which they share with the object.

/// An ordered run of points.
class ZOL_PLATFORM ObjectPolyline {
public:
    struct State;

    explicit ObjectPolyline(std::shared_ptr<const State> state);
    ~ObjectPolyline();

    LineType GetLineType() const;
    LineCode GetLineCode() const;
    int NPoints() const;
    /// Only for an index below NPoints, as all that take one.
    Point GetPoint(int index) const;
    /// Whether it is closed.
    bool GetPolylineFlagA() const;
    /// Whether it has parts that were flattened from a curve; `part` 0 asks for the whole.
    bool GetPolylineFlagB(int part) const;
    /// Whether the point was made by flattening a curve.
    bool IsPointKindTwo(int index) const;
    /// Whether the source marks the point: a control point, or one that a curve was fitted to.
    bool IsPointKindOne(int index) const;

private:
    std::shared_ptr<const State> state_;
};

/// A text that lies in the plan.
class ZOL_PLATFORM ObjectText {
public:
    struct State;

    explicit ObjectText(std::shared_ptr<const State> state);
    ~ObjectText();

    int NRecords() const;
    /// A line of the text; empty one past the last. Not for any other index outside.
    std::string GetRecord(int index) const;
    Point GetOrigin() const;
    /// The height of a letter.
    double GetTextNumberA() const;
    /// Which point of the text its origin is: "baseline", "bottom", "middle" or "top", a
    /// blank, and "left", "centre" or "right".
    std::string GetTextStringB() const;
    /// The angle of the text, counter-clockwise from the x axis.
    double GetTextNumberB() const;
    /// The width of a letter in relation to the usual one.
    double GetTextNumberC() const;
    /// The name of the text style.
    std::string GetTextStringA() const;
    /// Whether it is mirrored at a line across it. One that is upside down is so too, and
    /// turned by 180 degrees.
    bool GetTextFlag() const;

private:
    std::shared_ptr<const State> state_;
};

/// A text with a place and a direction in space.
class ZOL_PLATFORM Object3DText {
public:
    struct State;

    explicit Object3DText(std::shared_ptr<const State> state);
    ~Object3DText();

    int NRecords() const;
    /// A line of the text; empty one past the last. Not for any other index outside.
    std::string GetRecord(int index) const;
    Point GetOrigin() const;
    /// Along the text, of length 1.
    Point GetDirection() const;
    /// Out of the plane of the text, of length 1.
    Point GetNormal() const;
    /// The name of the font.
    std::string Get3DTextStringB() const;
    /// The width of a letter in relation to the usual one.
    double Get3DTextNumberB() const;
    /// The height of a letter.
    double Get3DTextNumberA() const;
    /// Whether it is mirrored at a line across it.
    bool Get3DTextFlag() const;
    /// Which point of the text its origin is: 1 left, 2 centre, 3 right; 0 unknown.
    int GetOriginPositionFirst() const;
    /// 1 baseline, 2 bottom, 3 middle, 4 top; 0 unknown.
    int GetOriginPositionSecond() const;
    /// The name of the text style.
    std::string Get3DTextStringA() const;

private:
    std::shared_ptr<const State> state_;
};

/// A line with a head at its start, such as leads from a note to what it speaks of.
class ZOL_PLATFORM ObjectArrow {
public:
    struct State;

    explicit ObjectArrow(std::shared_ptr<const State> state);
    ~ObjectArrow();

    Point GetStart() const;
    Point GetEnd() const;
    /// Out of the plane of the arrow, of length 1.
    Point GetNormal() const;
    /// Whether the head is drawn.
    bool GetArrowFlagA() const;
    /// Whether the line is curved.
    bool GetArrowFlagB() const;
    /// What stands at its end: 0 a text, 1 a tolerance, 2 a block, 3 nothing.
    std::int32_t GetArrowCodeA() const;
    /// Lengths of the head are the first of two, widths the second: in the unit of the
    /// coordinates as drawn (scaled), before the scale of the drawing's style (plain), and as
    /// a part of the distance from start to end (relative; 0 where that distance is 0).
    double GetScaledHeadFirst() const;
    double GetHeadFirst() const;
    double GetScaledHeadSecond() const;
    double GetHeadSecond() const;
    double GetRelativeHeadFirst() const;
    double GetRelativeHeadSecond() const;
    /// The short line that leads to the text: 0 none, 1 along the text, 2 against it.
    std::int32_t GetArrowCodeB() const;

private:
    std::shared_ptr<const State> state_;
};

/// What all dimensions have. A measure is a length, of an angle dimension in degrees.
class ZOL_PLATFORM ObjectDimension {
public:
    struct State;

    /// The text as shown, the measure written out in it.
    std::string GetDimensionTextA() const;
    /// The height of a letter.
    double GetDimensionTextNumber() const;
    /// The name of the text style.
    std::string GetDimensionTextB() const;
    /// The name of the dimension style.
    std::string GetDimensionString() const;
    /// The length of an arrow head.
    double GetDimensionNumberB() const;
    /// The measure.
    double GetDimensionNumberA() const;
    /// How far the lines at the ends reach beyond the dimension line.
    double GetDimensionNumberC() const;
    /// How far they stay away from what is measured.
    double GetDimensionNumberD() const;
    /// The gap round the text.
    double GetDimensionNumberE() const;

    ObjectDimensionLocation GetTextLocation() const;

protected:
    explicit ObjectDimension(std::shared_ptr<const State> state);
    ~ObjectDimension();

    const State& Shared() const { return *state_; }

private:
    std::shared_ptr<const State> state_;
};

/// A distance along a line. Its start and end are those of the line that is drawn with the
/// text, not of what is measured.
class ZOL_PLATFORM ObjectDimensionLine final : public ObjectDimension {
public:
    explicit ObjectDimensionLine(std::shared_ptr<const State> state);

    Point GetStart() const;
    Point GetEnd() const;
    Point GetNormal() const;
};

/// A radius, which starts at the centre, or a diameter, which starts at the circle.
class ZOL_PLATFORM ObjectDimensionRadius final : public ObjectDimension {
public:
    explicit ObjectDimensionRadius(std::shared_ptr<const State> state);

    Point GetStart() const;
    Point GetEnd() const;
    Point GetNormal() const;
};

/// The length of an arc. The arc with the text runs from the point of the radius to that of
/// the sweep, counter-clockwise as seen from above, round the origin.
class ZOL_PLATFORM ObjectDimensionArc final : public ObjectDimension {
public:
    explicit ObjectDimensionArc(std::shared_ptr<const State> state);

    Point GetOrigin() const;
    Point GetRadius() const;
    Point GetSweep() const;
};

/// The angle at the origin, with an arc like that of an arc dimension.
class ZOL_PLATFORM ObjectDimensionAngle final : public ObjectDimension {
public:
    explicit ObjectDimensionAngle(std::shared_ptr<const State> state);

    Point GetOrigin() const;
    Point GetRadius() const;
    Point GetSweep() const;
};

}  // namespace zol::design
