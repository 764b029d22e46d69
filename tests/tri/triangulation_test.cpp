// The triangulation family over a scripted library: life cycle, indices, shape and looks.
#include <gtest/gtest.h>

#include <array>
#include <string>
#include <vector>

#include "tests/tri/export_table.h"
#include "tests/tri/fixture.h"

namespace zol::testing {
namespace {

using doubles::triangulation_journal;
using doubles::triangulation_script;

class TriangulationTest : public TriangulationFixture {};

TEST_F(TriangulationTest, TheTableHoldsEveryExportOfTheFamily) {
    expect_whole_table(triangulation_family(), ZOL_EXPORTS_FILE);
}

TEST_F(TriangulationTest, WithoutATriangulationEachFailsInItsOwnWords) {
    TriangulationHandle empty;
    expect_failure_of_undefined(triangulation_family(),
                                {static_cast<TriangulationHandle*>(nullptr), &empty});
}

TEST_F(TriangulationTest, ASuccessEmptiesTheErrorAndLogsTheOwnNameOnce) {
    script_triangulation();
    expect_success_of_all(triangulation_family());
}

TEST_F(TriangulationTest, WhatTheLibraryUnderneathThrowsTellsTheOrder) {
    script_triangulation();
    expect_order_of_all<doubles::TriangulationFailure>(triangulation_family());
}

TEST_F(TriangulationTest, OneThatCannotBeReadIsDestroyedAndNamedAsPassed) {
    triangulation_script.points = 0;
    for (const std::string& name :
         {std::string("no such file.obj"), std::string(), std::string(300, 'n')}) {
        EXPECT_EQ(ZOL_Triangulation_Open(name.c_str()), nullptr);
        EXPECT_EQ(triangulation_journal.back(), "Triangulation::~Triangulation");
        EXPECT_EQ(pending_error(),
                  ("ZOL_Triangulation_Open error opening/loading " + name).substr(0, 254));
    }
    triangulation_script.throwing = "Triangulation::NumPoints";
    EXPECT_THROW(ZOL_Triangulation_Open("mesh"), doubles::TriangulationFailure);
    EXPECT_EQ(triangulation_journal.back(), "Triangulation::~Triangulation");
}

TEST_F(TriangulationTest, EachHandleIsATriangulationOfItsOwn) {
    TriangulationHandle* const other = ZOL_Triangulation_Open("mesh");
    ASSERT_NE(other, mesh_);
    EXPECT_EQ(ZOL_Triangulation_Close(other), 0);
    EXPECT_EQ(triangulation_journal,
              (Texts{"Triangulation::Triangulation mesh", "Triangulation::NumPoints",
                     "Triangulation::~Triangulation"}));
    EXPECT_EQ(ZOL_Triangulation_IsValid(mesh_), 1);
}

// A count is never below 0 and any other than 0 will do; without points it is no false,
// but a failure.
TEST_F(TriangulationTest, ValidityIsOneOrAFailure) {
    for (const int points : {1, -1}) {
        triangulation_script.points = points;
        EXPECT_EQ(ZOL_Triangulation_IsValid(mesh_), 1);
        EXPECT_EQ(pending_error(), "");
    }
    triangulation_script.points = 0;
    EXPECT_EQ(ZOL_Triangulation_IsValid(mesh_), -1);
    EXPECT_EQ(pending_error(), "ZOL_Triangulation_IsValid Triangulation contains zero points.");
}

TEST_F(TriangulationTest, OnlyIndicesOfTheMeshReachTheLibrary) {
    triangulation_script.point = {600000.25, 7000000.123, -45.5};
    triangulation_script.triangle = {7, 8, 9};
    struct Row {
        int index;
        bool is_point;
        bool is_triangle;
    };
    const int most = 2147483647;
    for (const Row& row :
         {Row{0, true, true}, Row{3, true, true}, Row{4, true, false}, Row{5, false, false},
          Row{-1, false, false}, Row{most, false, false}, Row{-most - 1, false, false}}) {
        SCOPED_TRACE(row.index);
        std::array<double, 3> point{-1.0, -2.0, -3.0};
        triangulation_journal.clear();
        EXPECT_EQ(ZOL_Triangulation_GetPoint(mesh_, &row.index, &point[0], &point[1], &point[2]),
                  row.is_point ? 0 : 1);
        EXPECT_EQ(pending_error(),
                  row.is_point ? "" : "ZOL_Triangulation_GetPoint Invalid point index.");
        EXPECT_EQ(point,
                  row.is_point ? triangulation_script.point : (std::array{-1.0, -2.0, -3.0}));
        EXPECT_EQ(triangulation_journal.back(),
                  row.is_point ? "Triangulation::GetPoint " + std::to_string(row.index) + " 0 0 0"
                               : "Triangulation::NumPoints");

        std::array<int, 3> corners{-4, -5, -6};
        EXPECT_EQ(
            ZOL_Triangulation_GetTriangle(mesh_, &row.index, &corners[0], &corners[1], &corners[2]),
            row.is_triangle ? 0 : 1);
        EXPECT_EQ(pending_error(),
                  row.is_triangle ? "" : "ZOL_Triangulation_GetTriangle triangle index invalid");
        EXPECT_EQ(corners, row.is_triangle ? (std::array{7, 8, 9}) : (std::array{-4, -5, -6}));
        EXPECT_EQ(triangulation_journal.back(),
                  row.is_triangle
                      ? "Triangulation::GetTriangle " + std::to_string(row.index) + " -1 -1 -1"
                      : "Triangulation::NumTriangles");
    }
}

TEST_F(TriangulationTest, PredicatesAnswerAsTheLibraryDoes) {
    const double x = 1.5;
    const double y = 2.5;
    const double z = 3.5;
    const double tolerance = -0.25;
    for (const bool answer : {true, false}) {
        triangulation_script.predicate = answer;
        const int expected = answer ? 1 : 0;
        for (const auto ask : {ZOL_Triangulation_IsSolid, ZOL_Triangulation_IsSurface,
                               ZOL_Triangulation_IsCrossing, ZOL_Triangulation_IsConsistent,
                               ZOL_Triangulation_IsTextured, ZOL_Triangulation_IsTranslucent}) {
            EXPECT_EQ(ask(mesh_), expected);
        }
        EXPECT_EQ(ZOL_Triangulation_IsPointInside(mesh_, &x, &y, &z), expected);
        EXPECT_EQ(triangulation_journal.back(), "Triangulation::IsPointInside 1.5 2.5 3.5");
        EXPECT_EQ(ZOL_Triangulation_IsPointOn(mesh_, &x, &y, &z, &tolerance), expected);
        EXPECT_EQ(triangulation_journal.back(), "Triangulation::IsPointOn 1.5 2.5 3.5 -0.25");
    }
}

TEST_F(TriangulationTest, TakesTheColourApartFromTheLowestByteUp) {
    triangulation_script.colour = 0xFF332211;
    std::array<int, 3> colour{};
    EXPECT_EQ(ZOL_Triangulation_GetColour(mesh_, &colour[0], &colour[1], &colour[2]), 0);
    EXPECT_EQ(colour, (std::array{17, 34, 51}));
}

TEST_F(TriangulationTest, AColourThatCannotBeHadIsCleared) {
    triangulation_script.throwing = "TriProperties::TriProperties";
    std::array<int, 3> colour{-1, -1, -1};
    EXPECT_THROW(ZOL_Triangulation_GetColour(mesh_, &colour[0], &colour[1], &colour[2]),
                 doubles::TriangulationFailure);
    EXPECT_EQ(colour, (std::array{0, 0, 0}));
}

TEST_F(TriangulationTest, TranslucencyIsWidened) {
    triangulation_script.translucency = 0.1F;
    EXPECT_EQ(ZOL_Triangulation_GetTranslucency(mesh_), static_cast<double>(0.1F));
    triangulation_script.translucency = -1.0F;
    EXPECT_EQ(ZOL_Triangulation_GetTranslucency(mesh_), -1.0);
    EXPECT_EQ(ZOL_API_HasError(), 0) << "which tells it from a failure";
}

// The name is handed out whether there is a texture or not, and nobody asks.
TEST_F(TriangulationTest, ATextureNameIsCutTo254Characters) {
    triangulation_script.predicate = false;
    for (const std::size_t length : {0U, 12U, 254U, 255U, 300U}) {
        SCOPED_TRACE(length);
        triangulation_script.texture = std::string(length, 't');
        triangulation_journal.clear();
        EXPECT_EQ(text_of_call(
                      [this](char* buffer) { return ZOL_Triangulation_GetTexture(mesh_, buffer); }),
                  std::string(std::min<std::size_t>(length, 254), 't'));
        EXPECT_EQ(triangulation_journal,
                  (Texts{"TriProperties::TriProperties", "TriProperties::GetTexture"}));
    }
}

}  // namespace
}  // namespace zol::testing
