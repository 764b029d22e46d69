// The views of the kinds of objects.
#include "tests/doubles/scripted_design.h"

#include <utility>

#include "tests/doubles/scripted_design_answers.h"

namespace zol::design {

using doubles::point;
using doubles::real;
using doubles::text;
using doubles::truth;
using doubles::whole;

struct ObjectPolyline::State {};

ObjectPolyline::ObjectPolyline(std::shared_ptr<const State> state) : state_(std::move(state)) {}

ObjectPolyline::~ObjectPolyline() = default;

LineType ObjectPolyline::GetLineType() const {
    return {whole("ObjectPolyline::GetLineType")};
}

LineCode ObjectPolyline::GetLineCode() const {
    return {whole("ObjectPolyline::GetLineCode")};
}

int ObjectPolyline::NPoints() const {
    return whole("ObjectPolyline::NPoints");
}

Point ObjectPolyline::GetPoint(int index) const {
    return point("ObjectPolyline::GetPoint", index);
}

bool ObjectPolyline::GetPolylineFlagA() const {
    return truth("ObjectPolyline::GetPolylineFlagA");
}

bool ObjectPolyline::GetPolylineFlagB(int part) const {
    return truth("ObjectPolyline::GetPolylineFlagB", part);
}

bool ObjectPolyline::IsPointKindTwo(int index) const {
    return truth("ObjectPolyline::IsPointKindTwo", index);
}

bool ObjectPolyline::IsPointKindOne(int index) const {
    return truth("ObjectPolyline::IsPointKindOne", index);
}

struct ObjectText::State {};

ObjectText::ObjectText(std::shared_ptr<const State> state) : state_(std::move(state)) {}

ObjectText::~ObjectText() = default;

int ObjectText::NRecords() const {
    return whole("ObjectText::NRecords");
}

std::string ObjectText::GetRecord(int index) const {
    return text("ObjectText::GetRecord", index);
}

Point ObjectText::GetOrigin() const {
    return point("ObjectText::GetOrigin");
}

double ObjectText::GetTextNumberA() const {
    return real("ObjectText::GetTextNumberA");
}

std::string ObjectText::GetTextStringB() const {
    return text("ObjectText::GetTextStringB");
}

double ObjectText::GetTextNumberB() const {
    return real("ObjectText::GetTextNumberB");
}

double ObjectText::GetTextNumberC() const {
    return real("ObjectText::GetTextNumberC");
}

std::string ObjectText::GetTextStringA() const {
    return text("ObjectText::GetTextStringA");
}

bool ObjectText::GetTextFlag() const {
    return truth("ObjectText::GetTextFlag");
}

struct Object3DText::State {};

Object3DText::Object3DText(std::shared_ptr<const State> state) : state_(std::move(state)) {}

Object3DText::~Object3DText() = default;

int Object3DText::NRecords() const {
    return whole("Object3DText::NRecords");
}

std::string Object3DText::GetRecord(int index) const {
    return text("Object3DText::GetRecord", index);
}

Point Object3DText::GetOrigin() const {
    return point("Object3DText::GetOrigin");
}

Point Object3DText::GetDirection() const {
    return point("Object3DText::GetDirection");
}

Point Object3DText::GetNormal() const {
    return point("Object3DText::GetNormal");
}

std::string Object3DText::Get3DTextStringB() const {
    return text("Object3DText::Get3DTextStringB");
}

double Object3DText::Get3DTextNumberB() const {
    return real("Object3DText::Get3DTextNumberB");
}

double Object3DText::Get3DTextNumberA() const {
    return real("Object3DText::Get3DTextNumberA");
}

bool Object3DText::Get3DTextFlag() const {
    return truth("Object3DText::Get3DTextFlag");
}

int Object3DText::GetOriginPositionFirst() const {
    return whole("Object3DText::GetOriginPositionFirst");
}

int Object3DText::GetOriginPositionSecond() const {
    return whole("Object3DText::GetOriginPositionSecond");
}

std::string Object3DText::Get3DTextStringA() const {
    return text("Object3DText::Get3DTextStringA");
}

struct ObjectArrow::State {};

ObjectArrow::ObjectArrow(std::shared_ptr<const State> state) : state_(std::move(state)) {}

ObjectArrow::~ObjectArrow() = default;

Point ObjectArrow::GetStart() const {
    return point("ObjectArrow::GetStart");
}

Point ObjectArrow::GetEnd() const {
    return point("ObjectArrow::GetEnd");
}

Point ObjectArrow::GetNormal() const {
    return point("ObjectArrow::GetNormal");
}

bool ObjectArrow::GetArrowFlagA() const {
    return truth("ObjectArrow::GetArrowFlagA");
}

bool ObjectArrow::GetArrowFlagB() const {
    return truth("ObjectArrow::GetArrowFlagB");
}

std::int32_t ObjectArrow::GetArrowCodeA() const {
    return whole("ObjectArrow::GetArrowCodeA");
}

double ObjectArrow::GetScaledHeadFirst() const {
    return real("ObjectArrow::GetScaledHeadFirst");
}

double ObjectArrow::GetHeadFirst() const {
    return real("ObjectArrow::GetHeadFirst");
}

double ObjectArrow::GetScaledHeadSecond() const {
    return real("ObjectArrow::GetScaledHeadSecond");
}

double ObjectArrow::GetHeadSecond() const {
    return real("ObjectArrow::GetHeadSecond");
}

double ObjectArrow::GetRelativeHeadFirst() const {
    return real("ObjectArrow::GetRelativeHeadFirst");
}

double ObjectArrow::GetRelativeHeadSecond() const {
    return real("ObjectArrow::GetRelativeHeadSecond");
}

std::int32_t ObjectArrow::GetArrowCodeB() const {
    return whole("ObjectArrow::GetArrowCodeB");
}

struct ObjectDimension::State {};

ObjectDimension::ObjectDimension(std::shared_ptr<const State> state) : state_(std::move(state)) {}

ObjectDimension::~ObjectDimension() = default;

std::string ObjectDimension::GetDimensionTextA() const {
    return text("ObjectDimension::GetDimensionTextA");
}

double ObjectDimension::GetDimensionTextNumber() const {
    return real("ObjectDimension::GetDimensionTextNumber");
}

std::string ObjectDimension::GetDimensionTextB() const {
    return text("ObjectDimension::GetDimensionTextB");
}

std::string ObjectDimension::GetDimensionString() const {
    return text("ObjectDimension::GetDimensionString");
}

double ObjectDimension::GetDimensionNumberB() const {
    return real("ObjectDimension::GetDimensionNumberB");
}

double ObjectDimension::GetDimensionNumberA() const {
    return real("ObjectDimension::GetDimensionNumberA");
}

double ObjectDimension::GetDimensionNumberC() const {
    return real("ObjectDimension::GetDimensionNumberC");
}

double ObjectDimension::GetDimensionNumberD() const {
    return real("ObjectDimension::GetDimensionNumberD");
}

double ObjectDimension::GetDimensionNumberE() const {
    return real("ObjectDimension::GetDimensionNumberE");
}

ObjectDimensionLocation ObjectDimension::GetTextLocation() const {
    return static_cast<ObjectDimensionLocation>(whole("ObjectDimension::GetTextLocation"));
}

ObjectDimensionLine::ObjectDimensionLine(std::shared_ptr<const State> state)
    : ObjectDimension(std::move(state)) {}

Point ObjectDimensionLine::GetStart() const {
    return point("ObjectDimensionLine::GetStart");
}

Point ObjectDimensionLine::GetEnd() const {
    return point("ObjectDimensionLine::GetEnd");
}

Point ObjectDimensionLine::GetNormal() const {
    return point("ObjectDimensionLine::GetNormal");
}

ObjectDimensionRadius::ObjectDimensionRadius(std::shared_ptr<const State> state)
    : ObjectDimension(std::move(state)) {}

Point ObjectDimensionRadius::GetStart() const {
    return point("ObjectDimensionRadius::GetStart");
}

Point ObjectDimensionRadius::GetEnd() const {
    return point("ObjectDimensionRadius::GetEnd");
}

Point ObjectDimensionRadius::GetNormal() const {
    return point("ObjectDimensionRadius::GetNormal");
}

ObjectDimensionArc::ObjectDimensionArc(std::shared_ptr<const State> state)
    : ObjectDimension(std::move(state)) {}

Point ObjectDimensionArc::GetOrigin() const {
    return point("ObjectDimensionArc::GetOrigin");
}

Point ObjectDimensionArc::GetRadius() const {
    return point("ObjectDimensionArc::GetRadius");
}

Point ObjectDimensionArc::GetSweep() const {
    return point("ObjectDimensionArc::GetSweep");
}

ObjectDimensionAngle::ObjectDimensionAngle(std::shared_ptr<const State> state)
    : ObjectDimension(std::move(state)) {}

Point ObjectDimensionAngle::GetOrigin() const {
    return point("ObjectDimensionAngle::GetOrigin");
}

Point ObjectDimensionAngle::GetRadius() const {
    return point("ObjectDimensionAngle::GetRadius");
}

Point ObjectDimensionAngle::GetSweep() const {
    return point("ObjectDimensionAngle::GetSweep");
}

}  // namespace zol::design
