// What the kinds of objects answer: which operation fills which output, in which order, and
// which indices reach them.
#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <cstring>
#include <string>

#include "tests/design/fixture.h"

namespace zol::testing {
namespace {

using doubles::design_journal;
using doubles::design_script;
using doubles::number_of;
using doubles::text_of;

/// An export and what it asks, in order. An entry is a letter for what becomes of the answer, a
/// blank, and the operation as the journal has it. Outputs are filled in the order of the
/// entries: N result, T text, R real, W whole, S whole less 1, B truth, P point, Q point with all
/// that belongs to it; - none.
struct Reading {
    const char* name;
    std::vector<std::string> asks;
};

const Reading kReadings[] = {
    {"ZOL_Object_GetValue", {"R Object::GetValue"}},
    {"ZOL_Object_NMetadataFields", {"- Object::GetMetadata", "N Metadata::NFields"}},
    {"ZOL_Object_GetMetadataFieldIndex",
     {"- Object::GetMetadata", "W Metadata::GetFieldIndex pit"}},
    {"ZOL_Object_GetMetadataFieldName",
     {"- Object::GetMetadata", "- Metadata::NFields", "O Metadata::GetField 1"}},
    {"ZOL_Object_GetMetadataFieldValue_Index",
     {"- Object::GetMetadata", "- Metadata::NFields", "O Metadata::GetValue 1"}},
    {"ZOL_Layer_NObjects", {"N Layer::NObjects"}},

    {"ZOL_Object_Polyline_NPoints",
     {"- Object::IsPolyline", "- Object::AsPolyline", "N ObjectPolyline::NPoints"}},
    {"ZOL_Object_Polyline_GetLineType",
     {"- Object::IsPolyline", "- Object::AsPolyline", "W ObjectPolyline::GetLineType"}},
    {"ZOL_Object_Polyline_GetAttributes",
     {"- Object::IsPolyline", "- Object::AsPolyline", "W ObjectPolyline::GetLineType",
      "W ObjectPolyline::GetLineCode", "B ObjectPolyline::GetPolylineFlagA",
      "B ObjectPolyline::GetPolylineFlagB 0"}},
    {"ZOL_Object_Polyline_GetPointInfo",
     {"- Object::IsPolyline", "- Object::AsPolyline", "- ObjectPolyline::NPoints",
      "Q ObjectPolyline::GetPoint 1"}},

    {"ZOL_Object_Text_NRecords",
     {"- Object::IsText", "- Object::AsText", "N ObjectText::NRecords"}},
    {"ZOL_Object_Text_GetRecord",
     {"- Object::IsText", "- Object::AsText", "- ObjectText::NRecords",
      "T ObjectText::GetRecord 1"}},
    {"ZOL_Object_Text_GetOrigin",
     {"- Object::IsText", "- Object::AsText", "P ObjectText::GetOrigin"}},
    {"ZOL_Object_Text_GetAttributes",
     {"- Object::IsText", "- Object::AsText", "T ObjectText::GetTextStringA",
      "T ObjectText::GetTextStringB", "R ObjectText::GetTextNumberA",
      "R ObjectText::GetTextNumberB", "R ObjectText::GetTextNumberC", "B ObjectText::GetTextFlag"}},

    {"ZOL_Object_3DText_NRecords",
     {"- Object::Is3DText", "- Object::As3DText", "N Object3DText::NRecords"}},
    {"ZOL_Object_3DText_GetRecord",
     {"- Object::Is3DText", "- Object::As3DText", "- Object3DText::NRecords",
      "T Object3DText::GetRecord 1"}},
    {"ZOL_Object_3DText_GetOrigin",
     {"- Object::Is3DText", "- Object::As3DText", "P Object3DText::GetOrigin"}},
    {"ZOL_Object_3DText_GetDirection",
     {"- Object::Is3DText", "- Object::As3DText", "P Object3DText::GetDirection"}},
    {"ZOL_Object_3DText_GetNormal",
     {"- Object::Is3DText", "- Object::As3DText", "P Object3DText::GetNormal"}},
    {"ZOL_Object_3DText_GetOriginPosition",
     {"- Object::Is3DText", "- Object::As3DText", "S Object3DText::GetOriginPositionFirst",
      "S Object3DText::GetOriginPositionSecond"}},
    {"ZOL_Object_3DText_GetAttributes",
     {"- Object::Is3DText", "- Object::As3DText", "T Object3DText::Get3DTextStringA",
      "T Object3DText::Get3DTextStringB", "R Object3DText::Get3DTextNumberA",
      "R Object3DText::Get3DTextNumberB", "B Object3DText::Get3DTextFlag"}},

    {"ZOL_Object_Arrow_GetStart",
     {"- Object::IsArrow", "- Object::AsArrow", "P ObjectArrow::GetStart"}},
    {"ZOL_Object_Arrow_GetEnd",
     {"- Object::IsArrow", "- Object::AsArrow", "P ObjectArrow::GetEnd"}},
    {"ZOL_Object_Arrow_GetNormal",
     {"- Object::IsArrow", "- Object::AsArrow", "P ObjectArrow::GetNormal"}},
    {"ZOL_Object_Arrow_GetHeadInfo",
     {"- Object::IsArrow", "- Object::AsArrow", "R ObjectArrow::GetHeadFirst",
      "R ObjectArrow::GetHeadSecond"}},
    {"ZOL_Object_Arrow_GetScaledHeadInfo",
     {"- Object::IsArrow", "- Object::AsArrow", "R ObjectArrow::GetScaledHeadFirst",
      "R ObjectArrow::GetScaledHeadSecond"}},
    {"ZOL_Object_Arrow_GetRelativeHeadInfo",
     {"- Object::IsArrow", "- Object::AsArrow", "R ObjectArrow::GetRelativeHeadFirst",
      "R ObjectArrow::GetRelativeHeadSecond"}},
    {"ZOL_Object_Arrow_GetAttributes",
     {"- Object::IsArrow", "- Object::AsArrow", "B ObjectArrow::GetArrowFlagA",
      "B ObjectArrow::GetArrowFlagB", "W ObjectArrow::GetArrowCodeA",
      "W ObjectArrow::GetArrowCodeB"}},
};

std::string operation_of(const std::string& ask) {
    return ask.substr(2, ask.find(' ', 2) - 2);
}

/// Reads an export, and compares the outputs, the result and the journal with the entries.
class ReadingTest : public DesignFixture {
protected:
    void Expect(const Reading& reading) {
        DesignOutputs expected;
        std::size_t texts = 0;
        std::size_t reals = 0;
        std::size_t wholes = 0;
        double result = 0.0;
        Texts journal;
        const auto add_text = [&](const std::string& text, std::size_t bytes) {
            auto& buffer = expected.texts.at(texts++);
            std::fill_n(buffer.begin(), bytes, '\0');
            std::copy(text.begin(), text.end(), buffer.begin());
        };
        const auto add_real = [&](double value) { expected.reals.at(reals++) = value; };
        const auto add_whole = [&](double value) {
            expected.wholes.at(wholes++) = static_cast<int>(value);
        };
        for (const std::string& ask : reading.asks) {
            const std::string operation = operation_of(ask);
            const double number = number_of(operation);
            journal.push_back(ask.substr(2));
            switch (ask[0]) {
                case 'N':
                    result = number;
                    break;
                case 'T':
                    add_text(text_of(operation), 255);
                    break;
                case 'O':
                    add_text(text_of(operation), 254);
                    break;
                case 'R':
                    add_real(number);
                    break;
                case 'W':
                    add_whole(number);
                    break;
                case 'S':
                    add_whole(number - 1);
                    break;
                case 'B':
                    add_whole(design_script.true_of.contains(operation) ? 1 : 0);
                    break;
                case 'Q':
                case 'P':
                    for (const int i : {0, 1, 2}) add_real(number + i);
                    if (ask[0] == 'Q') {
                        add_real(number + 3);
                        add_whole(number + 4);
                        add_text(text_of(operation), 255);
                    }
                    journal.emplace_back(ask[0] == 'Q' ? "Point::GetXyzwtn" : "Point::GetXyz");
                    break;
                default:
                    break;
            }
        }
        design_journal.clear();
        DesignOutputs outputs;
        EXPECT_EQ(Call(reading.name, outputs), result);
        EXPECT_EQ(outputs, expected);
        EXPECT_EQ(design_journal, journal);
    }

    /// Once with no flag set, and once with each.
    void ExpectWithFlags(const Reading& reading) {
        SCOPED_TRACE(reading.name);
        script_design();
        Expect(reading);
        for (const std::string& ask : reading.asks) {
            if (ask[0] != 'B') continue;
            script_design();
            design_script.true_of.insert(operation_of(ask));
            Expect(reading);
        }
    }
};

TEST_F(ReadingTest, EachOutputComesFromItsOperationInOrder) {
    for (const Reading& reading : kReadings) ExpectWithFlags(reading);
}

TEST_F(ReadingTest, DimensionsAreReadAlikeButForTheirPoints) {
    struct Row {
        std::string kind;
        std::vector<std::string> points;
        std::string text_test;
    };
    const Row rows[] = {{"Line", {"Start", "End", "Normal"}, "Line"},
                        {"Radius", {"Start", "End", "Normal"}, "Line"},
                        {"Arc", {"Origin", "Radius", "Sweep"}, "Arc"},
                        {"Angle", {"Origin", "Radius", "Sweep"}, "Angle"}};
    for (const Row& row : rows) {
        const std::string prefix = "ZOL_Object_Dimension" + row.kind + "_Get";
        const std::string test = "- Object::IsDimension";
        const std::string view = "- Object::AsDimension" + row.kind;
        const std::string attributes = prefix + "Attributes";
        ExpectWithFlags(
            {attributes.c_str(),
             {test + row.kind, view, "T ObjectDimension::GetDimensionString",
              "R ObjectDimension::GetDimensionNumberA", "R ObjectDimension::GetDimensionNumberB",
              "R ObjectDimension::GetDimensionNumberC", "R ObjectDimension::GetDimensionNumberD",
              "R ObjectDimension::GetDimensionNumberE"}});
        const std::string text = prefix + "TextAttributes";
        ExpectWithFlags(
            {text.c_str(),
             {test + row.text_test, view, "T ObjectDimension::GetDimensionTextA",
              "O ObjectDimension::GetDimensionTextB", "R ObjectDimension::GetDimensionTextNumber",
              "S ObjectDimension::GetTextLocation"}});
        for (const std::string& point : row.points) {
            const std::string name = prefix + point;
            ExpectWithFlags(
                {name.c_str(),
                 {test + row.kind, view, "P ObjectDimension" + row.kind + "::Get" + point}});
        }
    }
}

class ViewsTest : public DesignFixture {
protected:
    ViewsTest() { script_design(); }
};

TEST_F(ViewsTest, OnlyPointsOfThePolylineAreReached) {
    for (const int count : {0, 3}) {
        design_script.numbers["ObjectPolyline::NPoints"] = count;
        EXPECT_EQ(ZOL_Object_Polyline_NPoints(object_.get()), count);
        for (const int index : {0, 2, 3, -1, INT_MIN, INT_MAX}) {
            SCOPED_TRACE(std::to_string(index) + " of " + std::to_string(count));
            const bool is_point = 0 <= index && index < count;
            design_journal.clear();
            DesignOutputs to;
            EXPECT_EQ(ZOL_Object_Polyline_GetPointInfo(object_.get(), &index, &to.reals[0],
                                                       &to.reals[1], &to.reals[2], &to.reals[3],
                                                       &to.wholes[0], to.texts[0].data()),
                      is_point ? 0 : 1);
            EXPECT_EQ(pending_error(),
                      is_point ? "" : "ZOL_Object_Polyline_GetPointInfo Invalid index.");
            EXPECT_EQ(to == DesignOutputs(), !is_point);
            EXPECT_EQ(design_journal.back(),
                      is_point ? "Point::GetXyzwtn" : "ObjectPolyline::NPoints");

            int type = -77;
            EXPECT_EQ(ZOL_Object_Polyline_GetPointType(object_.get(), &index, &type),
                      is_point ? 0 : 1);
            EXPECT_EQ(pending_error(),
                      is_point ? "" : "ZOL_Object_Polyline_GetPointType Invalid index.");
            EXPECT_EQ(type, is_point ? 0 : -77);
        }
    }
}

TEST_F(ViewsTest, AMadePointGoesBeforeAMarkedOne) {
    struct Row {
        bool two;
        bool one;
        int type;
        Texts asked;
    };
    const std::string two = "ObjectPolyline::IsPointKindTwo";
    const std::string one = "ObjectPolyline::IsPointKindOne";
    for (const Row& row : {Row{true, true, 2, {two + " 1"}}, Row{true, false, 2, {two + " 1"}},
                           Row{false, true, 1, {two + " 1", one + " 1"}},
                           Row{false, false, 0, {two + " 1", one + " 1"}}}) {
        script_design();
        if (row.two) design_script.true_of.insert(two);
        if (row.one) design_script.true_of.insert(one);
        design_journal.clear();
        int type = -77;
        EXPECT_EQ(ZOL_Object_Polyline_GetPointType(object_.get(), &kIndex, &type), 0);
        EXPECT_EQ(type, row.type);
        ASSERT_GT(design_journal.size(), 3U);
        EXPECT_EQ(Texts(design_journal.begin() + 3, design_journal.end()), row.asked);
    }
}

TEST_F(ViewsTest, OnePastTheLastRecordIsTheViewsToAnswer) {
    struct Row {
        std::string name;
        std::string view;
        int (*get)(ObjectHandle*, const int*, char*);
    };
    for (const Row& row :
         {Row{"ZOL_Object_Text_GetRecord", "ObjectText", ZOL_Object_Text_GetRecord},
          Row{"ZOL_Object_3DText_GetRecord", "Object3DText", ZOL_Object_3DText_GetRecord}}) {
        for (const int index : {0, 2, 3, 4, -1, INT_MIN, INT_MAX}) {
            SCOPED_TRACE(row.name + ", " + std::to_string(index));
            const bool reached = 0 <= index && index <= 3;
            design_journal.clear();
            DesignOutputs to;
            EXPECT_EQ(row.get(object_.get(), &index, to.texts[0].data()), reached ? 0 : -1);
            EXPECT_EQ(pending_error(), reached ? "" : row.name + " Invalid index.");
            EXPECT_EQ(to == DesignOutputs(), !reached);
            if (reached) {
                EXPECT_EQ(design_journal.back(), row.view + "::GetRecord " + std::to_string(index));
            }
        }
    }
}

TEST_F(ViewsTest, WhatIsUnknownIsOneBelowTheFirst) {
    design_script.numbers["Object3DText::GetOriginPositionFirst"] = 0;
    design_script.numbers["Object3DText::GetOriginPositionSecond"] = 1;
    int across = -77;
    int up = -77;
    EXPECT_EQ(ZOL_Object_3DText_GetOriginPosition(object_.get(), &across, &up), 0);
    EXPECT_EQ(across, -1);
    EXPECT_EQ(up, 0);
}

}  // namespace
}  // namespace zol::testing
