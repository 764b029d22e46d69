// What readers hand over, and the number or text that callers get of it.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <cfenv>
#include <string>
#include <utility>

#include "engine/design/object_state.h"
#include "platform/zolDesignExport.h"

namespace {

using testing::ElementsAre;
using zol::design::Object;
using zol::design::ObjectDimensionLocation;
using zol::design::Point;
using zol::engine::DimensionTextPlace;
using zol::engine::DrawingArrow;
using zol::engine::DrawingDimension;
using zol::engine::DrawingKind;
using zol::engine::DrawingText;
using zol::engine::PointMark;
using zol::engine::TextAcross;
using zol::engine::TextUp;
using zol::engine::design::ObjectRecord;
using zol::engine::design::ObjectShape;
using zol::engine::design::PolylineShape;

/// Made of a shape alone.
class Made {
public:
    Made(DrawingKind kind, ObjectShape shape) {
        ObjectRecord record;
        record.kind = kind;
        record.shape = std::move(shape);
        fill(object_, std::move(record));
    }

    Object* operator->() { return &object_; }

private:
    Object object_;
};

std::array<double, 3> place(const Point& point) {
    std::array<double, 3> xyz{};
    point.GetXyz(&xyz[0], &xyz[1], &xyz[2]);
    return xyz;
}

TEST(PolylineView, TellsEachNumberWhereItBelongs) {
    PolylineShape shape;
    shape.line.points = {{{1, 2, 3}, 0.5, PointMark::Control}, {{4, 5, 6}, 0, PointMark::None}};
    shape.point_names = {"peg 1", "peg 2"};
    shape.line_type = 7;
    shape.line_weight = 25;
    Made object(DrawingKind::Polyline, shape);
    auto& line = object->AsPolyline();
    EXPECT_EQ(line.GetLineType().value, 7);
    EXPECT_EQ(line.GetLineCode().value, 25);
    EXPECT_FALSE(line.GetPolylineFlagA());
    EXPECT_TRUE(line.IsPointKindOne(0));
    EXPECT_FALSE(line.IsPointKindOne(1));
    double x = 0;
    double y = 0;
    double z = 0;
    double w = 0;
    std::int32_t t = 0;
    std::string name;
    line.GetPoint(1).GetXyzwtn(&x, &y, &z, &w, &t, &name);
    EXPECT_THAT((std::array{x, y, z, w}), ElementsAre(4, 5, 6, 0));
    EXPECT_EQ(t, 1);
    EXPECT_EQ(name, "peg 2");
}

DrawingText odd_text() {
    DrawingText text;
    text.lines = {"one", "two"};
    text.origin = {1, 2, 3};
    text.direction = {0, 1, 0};
    text.normal = {1, 0, 0};
    text.rotation = 30;
    text.height = 2.5;
    text.width = 0.8;
    text.is_mirrored = true;
    text.across = TextAcross::Right;
    text.up = TextUp::Top;
    text.style = "NOTES";
    text.font = "arial.ttf";
    return text;
}

TEST(TextView, TellsEachNumberWhereItBelongs) {
    Made object(DrawingKind::Text, odd_text());
    auto& text = object->AsText();
    EXPECT_EQ(text.GetTextNumberA(), 2.5);
    EXPECT_EQ(text.GetTextNumberB(), 30);
    EXPECT_EQ(text.GetTextNumberC(), 0.8);
    EXPECT_EQ(text.GetTextStringA(), "NOTES");
    EXPECT_EQ(text.GetTextStringB(), "top right");
    EXPECT_TRUE(text.GetTextFlag());
    EXPECT_THAT(place(text.GetOrigin()), ElementsAre(1, 2, 3));
    EXPECT_EQ(text.GetRecord(1), "two");
    EXPECT_EQ(text.GetRecord(2), "");
}

TEST(TextView, NamesEachOriginInWordsAndNumbers) {
    struct Case {
        TextUp up;
        TextAcross across;
        const char* words;
        int first;
        int second;
    };
    const Case cases[] = {
        {TextUp::Baseline, TextAcross::Left, "baseline left", 1, 1},
        {TextUp::Bottom, TextAcross::Centre, "bottom centre", 2, 2},
        {TextUp::Middle, TextAcross::Right, "middle right", 3, 3},
        {TextUp::Top, TextAcross::Left, "top left", 1, 4},
        {TextUp::Unknown, TextAcross::Unknown, "baseline left", 0, 0},
    };
    for (const Case& row : cases) {
        SCOPED_TRACE(row.words);
        DrawingText text = odd_text();
        text.up = row.up;
        text.across = row.across;
        EXPECT_EQ(Made(DrawingKind::Text, text)->AsText().GetTextStringB(), row.words);
        Made in_space(DrawingKind::Text3D, text);
        EXPECT_EQ(in_space->As3DText().GetOriginPositionFirst(), row.first);
        EXPECT_EQ(in_space->As3DText().GetOriginPositionSecond(), row.second);
    }
}

TEST(Text3DView, TellsEachNumberWhereItBelongs) {
    Made object(DrawingKind::Text3D, odd_text());
    auto& text = object->As3DText();
    EXPECT_EQ(text.Get3DTextNumberA(), 2.5);
    EXPECT_EQ(text.Get3DTextNumberB(), 0.8);
    EXPECT_EQ(text.Get3DTextStringA(), "NOTES");
    EXPECT_EQ(text.Get3DTextStringB(), "arial.ttf");
    EXPECT_TRUE(text.Get3DTextFlag());
    EXPECT_THAT(place(text.GetOrigin()), ElementsAre(1, 2, 3));
    EXPECT_THAT(place(text.GetDirection()), ElementsAre(0, 1, 0));
    EXPECT_THAT(place(text.GetNormal()), ElementsAre(1, 0, 0));
    EXPECT_EQ(text.NRecords(), 2);
    EXPECT_EQ(text.GetRecord(0), "one");
}

TEST(ArrowView, TellsItsHeadInThreeMeasures) {
    DrawingArrow arrow;
    arrow.points = {{0, 0, 0}, {7, 7, 7}, {3, 4, 0}};
    arrow.normal = {0, 1, 0};
    arrow.has_head = false;
    arrow.is_curved = true;
    arrow.annotation = 2;
    arrow.hook = 1;
    arrow.head_length = 3;
    arrow.scale = 4;
    Made object(DrawingKind::Arrow, arrow);
    auto& view = object->AsArrow();
    EXPECT_THAT(place(view.GetStart()), ElementsAre(0, 0, 0));
    EXPECT_THAT(place(view.GetEnd()), ElementsAre(3, 4, 0));
    EXPECT_THAT(place(view.GetNormal()), ElementsAre(0, 1, 0));
    EXPECT_FALSE(view.GetArrowFlagA());
    EXPECT_TRUE(view.GetArrowFlagB());
    EXPECT_EQ(view.GetArrowCodeA(), 2);
    EXPECT_EQ(view.GetArrowCodeB(), 1);
    EXPECT_EQ(view.GetHeadFirst(), 3);
    EXPECT_EQ(view.GetHeadSecond(), 1);
    EXPECT_EQ(view.GetScaledHeadFirst(), 12);
    EXPECT_EQ(view.GetScaledHeadSecond(), 4);
    EXPECT_EQ(view.GetRelativeHeadFirst(), 2.4);
    EXPECT_EQ(view.GetRelativeHeadSecond(), 0.8);
    // Asked by a caller who rounds in another way.
    std::fesetround(FE_UPWARD);
    const double second = view.GetRelativeHeadSecond();
    std::fesetround(FE_TONEAREST);
    EXPECT_EQ(second, 0.8);

    arrow.points = {{1, 1, 1}, {1, 1, 1}};
    EXPECT_EQ(Made(DrawingKind::Arrow, arrow)->AsArrow().GetRelativeHeadFirst(), 0)
        << "without a length there is nothing to relate to";
}

DrawingDimension odd_dimension() {
    DrawingDimension dimension;
    dimension.first = {1, 2, 3};
    dimension.second = {4, 5, 6};
    dimension.third = {7, 8, 9};
    dimension.measure = 10;
    dimension.text = "10 m";
    dimension.text_style = "NOTES";
    dimension.style = "MINE";
    dimension.text_height = 11;
    dimension.arrow_length = 12;
    dimension.extension = 13;
    dimension.offset = 14;
    dimension.gap = 15;
    return dimension;
}

TEST(DimensionView, TellsEachNumberWhereItBelongs) {
    Made object(DrawingKind::DimensionLine, odd_dimension());
    for (const zol::design::ObjectDimension* const view :
         std::initializer_list<const zol::design::ObjectDimension*>{&object->AsDimensionLine(),
                                                                    &object->AsDimensionRadius()}) {
        EXPECT_EQ(view->GetDimensionTextA(), "10 m");
        EXPECT_EQ(view->GetDimensionTextB(), "NOTES");
        EXPECT_EQ(view->GetDimensionString(), "MINE");
        EXPECT_EQ(view->GetDimensionTextNumber(), 11);
        EXPECT_EQ(view->GetDimensionNumberA(), 10);
        EXPECT_EQ(view->GetDimensionNumberB(), 12);
        EXPECT_EQ(view->GetDimensionNumberC(), 13);
        EXPECT_EQ(view->GetDimensionNumberD(), 14);
        EXPECT_EQ(view->GetDimensionNumberE(), 15);
    }
}

TEST(DimensionView, TellsItsThreePlaces) {
    Made line(DrawingKind::DimensionLine, odd_dimension());
    Made radius(DrawingKind::DimensionRadius, odd_dimension());
    Made arc(DrawingKind::DimensionArc, odd_dimension());
    Made angle(DrawingKind::DimensionAngle, odd_dimension());
    const std::array<std::array<double, 3>, 4> first = {
        place(line->AsDimensionLine().GetStart()), place(radius->AsDimensionRadius().GetStart()),
        place(arc->AsDimensionArc().GetOrigin()), place(angle->AsDimensionAngle().GetOrigin())};
    const std::array<std::array<double, 3>, 4> second = {
        place(line->AsDimensionLine().GetEnd()), place(radius->AsDimensionRadius().GetEnd()),
        place(arc->AsDimensionArc().GetRadius()), place(angle->AsDimensionAngle().GetRadius())};
    const std::array<std::array<double, 3>, 4> third = {
        place(line->AsDimensionLine().GetNormal()), place(radius->AsDimensionRadius().GetNormal()),
        place(arc->AsDimensionArc().GetSweep()), place(angle->AsDimensionAngle().GetSweep())};
    EXPECT_THAT(first, testing::Each(ElementsAre(1, 2, 3)));
    EXPECT_THAT(second, testing::Each(ElementsAre(4, 5, 6)));
    EXPECT_THAT(third, testing::Each(ElementsAre(7, 8, 9)));
}

TEST(DimensionView, TellsWhereItsTextStands) {
    const std::pair<DimensionTextPlace, ObjectDimensionLocation> cases[] = {
        {DimensionTextPlace::InLine, ObjectDimensionLocation::kInLine},
        {DimensionTextPlace::Above, ObjectDimensionLocation::kAbove},
        {DimensionTextPlace::Outside, ObjectDimensionLocation::kOutside},
        {DimensionTextPlace::Standard, ObjectDimensionLocation::kJapaneseStandard},
        {DimensionTextPlace::Below, ObjectDimensionLocation::kBelow},
        {DimensionTextPlace::Placed, ObjectDimensionLocation::kPlaced},
    };
    for (const auto& [place, location] : cases) {
        DrawingDimension dimension = odd_dimension();
        dimension.place = place;
        Made object(DrawingKind::DimensionRadius, dimension);
        EXPECT_EQ(object->AsDimensionRadius().GetTextLocation(), location);
    }
}

}  // namespace
