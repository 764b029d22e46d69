// Which lattice the spans of an axis are taken for.
#include "engine/block/axis_survey.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

#include "engine/formats/number_text.h"

namespace {

using zol::engine::number_text;
using zol::engine::block::AxisFacts;
using zol::engine::block::AxisPlan;
using zol::engine::block::common_gap;
using zol::engine::block::plan_axis;
using zol::engine::block::Span;
using zol::engine::block::SpanSet;

SpanSet set_of(const std::vector<Span>& spans) {
    SpanSet set;
    for (const Span& span : spans) {
        set.Add(span);
    }
    return set;
}

std::string plan_text(const AxisPlan& plan) {
    const char* kinds[] = {"regular", "fractions", "inside", "free"};
    std::string text = kinds[static_cast<int>(plan.kind)];
    if (plan.kind != AxisPlan::Kind::Free) {
        text += " " + number_text(plan.lower) + " " + number_text(plan.parent) + " x" +
                std::to_string(plan.count) + " /" + std::to_string(plan.parts);
    }
    return text;
}

TEST(PlanAxis, RecognisesLattices) {
    struct Case {
        const char* name;
        std::vector<Span> spans;
        AxisFacts facts;
        const char* expected;
    };
    const Case cases[] = {
        {"one size", {{5, 10}, {25, 10}, {15, 10}}, {}, "regular 0 10 x3 /1"},
        {"one block", {{5, 10}}, {}, "regular 0 10 x1 /1"},
        {"stated lower corner", {{25, 10}}, {0.0, {}}, "regular 0 10 x3 /1"},
        {"halves", {{5, 10}, {12.5, 5}, {17.5, 5}}, {}, "fractions 0 10 x2 /2"},
        {"halves below a parent", {{7.5, 5}, {15, 10}}, {}, "fractions 0 10 x2 /2"},
        {"thirds, rounded",
         {{5, 10}, {11.6667, 3.3333}, {16.6667, 6.6667}},
         {},
         "fractions 0 10 x2 /3"},
        {"all halves of a stated parent", {{2.5, 5}, {7.5, 5}}, {{}, 10.0}, "fractions 0 10 x1 /2"},
        {"any size inside parents",
         {{5, 10}, {10.05, 0.1}, {15.06, 9.87}},
         {},
         "inside 0 10 x2 /1"},
        {"across parents", {{5, 10}, {15, 10}, {10, 4}}, {}, "free"},
        {"rounded sizes",
         {{500005, 12.49995}, {500017.5, 12.5}},
         {},
         "regular 499998.75 12.5 x2 /1"},
        {"more cells than can be", {{0, 1e-9}, {1e12, 1e-9}}, {}, "free"},
        {"huge", {{0, 1e308}, {1e308, 1e308}}, {}, "free"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        EXPECT_EQ(plan_text(plan_axis(set_of(c.spans), c.facts)), c.expected);
    }
}

TEST(CommonGap, DividesAllGaps) {
    const auto gap_of = [](std::vector<double> centroids) {
        std::vector<Span> spans;
        for (const double centroid : centroids) {
            spans.push_back({centroid, 0});
        }
        return common_gap(set_of(spans).Sorted());
    };
    EXPECT_EQ(gap_of({0, 10, 30, 70}), 10.0);
    EXPECT_EQ(gap_of({0, 10, 15, 30}), 5.0);
    EXPECT_FALSE(gap_of({5}));
    EXPECT_FALSE(gap_of({0, 10, 17}));
    // Thirds rounded to five decimals, over a range that shows what they stand for.
    EXPECT_NEAR(*gap_of({0.33333, 0.66667, 1.0, 1.33333, 100.0}), 1.0 / 3, 1e-7);
}

TEST(SpanSet, HoldsEachSpanOnceUpToItsLimit) {
    std::mt19937_64 random(2);
    SpanSet left;
    SpanSet right;
    for (int i = 0; i < 100000; ++i) {
        (i % 2 == 0 ? left : right)
            .Add({static_cast<double>(random() % 1000), 1.0 + static_cast<double>(random() % 2)});
    }
    left.Merge(right);
    EXPECT_EQ(left.Sorted().size(), 2000U);
    EXPECT_EQ(left.Lower(), -1.0);
    EXPECT_EQ(left.Upper(), 1000.0);
    EXPECT_EQ(left.Shifted(5).Sorted().front().centroid, 5.0);

    SpanSet many;
    for (std::size_t i = 0; i <= SpanSet::kMost + 5; ++i) {
        many.Add({static_cast<double>(i), 1.0});
    }
    EXPECT_TRUE(many.Overflowed());
    left.Merge(many);
    EXPECT_TRUE(left.Overflowed());
    EXPECT_EQ(left.Upper(), static_cast<double>(SpanSet::kMost + 5) + 0.5);
    EXPECT_EQ(plan_text(plan_axis(left, {})), "free");
}

}  // namespace
