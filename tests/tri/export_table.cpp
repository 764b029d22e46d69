#include "tests/tri/export_table.h"

#include <string>

namespace zol::testing {

namespace {

using Handle = TriangulationHandle;
using Outputs = TriangulationOutputs;

constexpr int kIndex = 3;
constexpr double kX = 1.5;
constexpr double kY = 2.5;
constexpr double kZ = 3.5;
constexpr double kTolerance = -0.25;

template <auto Function>
double plain(Handle* handle, Outputs&) {
    return static_cast<double>(Function(handle));
}

template <auto Function>
double into_text(Handle* handle, Outputs& to) {
    return Function(handle, to.text.data());
}

// clang-format off
constexpr TriangulationExport kExports[] = {
    {"ZOL_Triangulation_Open",
     [](Handle*, Outputs& to) {
         to.made = ZOL_Triangulation_Open("mesh");
         return to.made == nullptr ? 0.0 : 1.0;
     },
     0, 0, nullptr, "Triangulation::Triangulation"},
    {"ZOL_Triangulation_Close", plain<ZOL_Triangulation_Close>, -1, 1,
     "ZOL_Triangulation_Close Triangulation not defined.", nullptr},
    {"ZOL_Triangulation_IsValid", plain<ZOL_Triangulation_IsValid>, -1, -1,
     "ZOL_Triangulation_IsValid Triangulation not defined.", "Triangulation::NumPoints"},
    {"ZOL_Triangulation_GetColour",
     [](Handle* mesh, Outputs& to) -> double {
         return ZOL_Triangulation_GetColour(mesh, &to.wholes[0], &to.wholes[1], &to.wholes[2]);
     },
     -1, 1, "ZOL_Triangulation_GetColour Triangulation not defined.",
     "TriProperties::TriProperties"},
    {"ZOL_Triangulation_IsTranslucent", plain<ZOL_Triangulation_IsTranslucent>, -1, -1,
     "ZOL_Triangulation_IsTranslucent Triangulation not defined.", "TriProperties::TriProperties"},
    {"ZOL_Triangulation_GetTranslucency", plain<ZOL_Triangulation_GetTranslucency>, -1.0, -1.0,
     "ZOL_Triangulation_GetTranslucency Triangulation not defined.",
     "TriProperties::TriProperties"},
    {"ZOL_Triangulation_IsTextured", plain<ZOL_Triangulation_IsTextured>, -1, -1,
     "ZOL_Triangulation_IsTextured Triangulation not defined.", "TriProperties::TriProperties"},
    {"ZOL_Triangulation_GetTexture", into_text<ZOL_Triangulation_GetTexture>, -1, 1,
     "ZOL_Triangulation_GetTexture Triangulation not defined.", "TriProperties::TriProperties"},
    {"ZOL_Triangulation_NumPoints", plain<ZOL_Triangulation_NumPoints>, -1, -1,
     "ZOL_Triangulation_NumPoints Triangulation not defined.", "Triangulation::NumPoints",
     Order::kSuccessFirst},
    {"ZOL_Triangulation_GetPoint",
     [](Handle* mesh, Outputs& to) -> double {
         return ZOL_Triangulation_GetPoint(mesh, &kIndex, &to.reals[0], &to.reals[1],
                                           &to.reals[2]);
     },
     -1, 1, "ZOL_Triangulation_GetPoint Triangulation not defined.", "Triangulation::NumPoints"},
    {"ZOL_Triangulation_NumTriangles", plain<ZOL_Triangulation_NumTriangles>, -1, -1,
     "ZOL_Triangulation_NumTriangles Triangulation not defined.", "Triangulation::NumTriangles",
     Order::kSuccessFirst},
    {"ZOL_Triangulation_GetTriangle",
     [](Handle* mesh, Outputs& to) -> double {
         return ZOL_Triangulation_GetTriangle(mesh, &kIndex, &to.wholes[0], &to.wholes[1],
                                              &to.wholes[2]);
     },
     -1, 1, "ZOL_Triangulation_GetTriangle Triangulation not defined.",
     "Triangulation::NumTriangles"},
    {"ZOL_Triangulation_GetVolume",
     [](Handle* mesh, Outputs& to) -> double {
         return ZOL_Triangulation_GetVolume(mesh, &to.reals[0]);
     },
     -1, 1, "ZOL_Triangulation_GetVolume Triangulation not defined.", "Triangulation::GetVolume"},
    {"ZOL_Triangulation_IsSolid", plain<ZOL_Triangulation_IsSolid>, -1, -1,
     "ZOL_Triangulation_IsSolid Triangulation not defined.", "Triangulation::IsSolid"},
    {"ZOL_Triangulation_IsSurface", plain<ZOL_Triangulation_IsSurface>, -1, -1,
     "ZOL_Triangulation_IsSurface Triangulation not defined.", "Triangulation::IsSurface"},
    {"ZOL_Triangulation_IsCrossing", plain<ZOL_Triangulation_IsCrossing>, -1, -1,
     "ZOL_Triangulation_IsCrossing Triangulation not defined.", "Triangulation::IsCrossing"},
    {"ZOL_Triangulation_IsConsistent", plain<ZOL_Triangulation_IsConsistent>, -1, -1,
     "ZOL_Triangulation_IsConsistent Triangulation not defined.", "Triangulation::IsConsistent"},
    {"ZOL_Triangulation_IsPointInside",
     [](Handle* mesh, Outputs&) -> double {
         return ZOL_Triangulation_IsPointInside(mesh, &kX, &kY, &kZ);
     },
     -1, -1, "ZOL_Triangulation_IsPointInside Triangulation not defined.",
     "Triangulation::IsPointInside"},
    {"ZOL_Triangulation_IsPointOn",
     [](Handle* mesh, Outputs&) -> double {
         return ZOL_Triangulation_IsPointOn(mesh, &kX, &kY, &kZ, &kTolerance);
     },
     -1, -1, "ZOL_Triangulation_IsPointOn Triangulation not defined.",
     "Triangulation::IsPointOn"},
    {"ZOL_Triangulation_GetAttributeNames",
     [](Handle* mesh, Outputs& to) -> double {
         char* const names[] = {to.text.data(), to.text.data()};
         return ZOL_Triangulation_GetAttributeNames(mesh, const_cast<char**>(names),
                                                    &to.wholes[0]);
     },
     -1, 1, "ZOL_Triangulation_GetAttributeNames Triangulation not defined.",
     "Triangulation::GetAttributes"},
    {"ZOL_Triangulation_GetAttributeType",
     [](Handle* mesh, Outputs& to) -> double {
         return ZOL_Triangulation_GetAttributeType(mesh, "benches", &to.wholes[0]);
     },
     -1, 1, "ZOL_Triangulation_GetAttributeType Triangulation not defined.",
     "Triangulation::GetAttributes"},
    {"ZOL_Triangulation_GetAttributeAsInt32",
     [](Handle* mesh, Outputs& to) -> double {
         return ZOL_Triangulation_GetAttributeAsInt32(mesh, "benches", &to.wholes[0]);
     },
     -1, 1, "ZOL_Triangulation_GetAttributeAsInt32 Triangulation not defined.",
     "Triangulation::GetAttributes"},
    {"ZOL_Triangulation_GetAttributeAsInt64",
     [](Handle* mesh, Outputs& to) -> double {
         return ZOL_Triangulation_GetAttributeAsInt64(mesh, "benches", &to.wide);
     },
     -1, 1, "ZOL_Triangulation_GetAttributeAsInt64 Triangulation not defined.",
     "Triangulation::GetAttributes"},
    {"ZOL_Triangulation_GetAttributeAsBoolean",
     [](Handle* mesh, Outputs& to) -> double {
         return ZOL_Triangulation_GetAttributeAsBoolean(mesh, "benches", &to.wholes[0]);
     },
     -1, 1, "ZOL_Triangulation_GetAttributeAsBoolean Triangulation not defined.",
     "Triangulation::GetAttributes"},
    {"ZOL_Triangulation_GetAttributeAsDouble",
     [](Handle* mesh, Outputs& to) -> double {
         return ZOL_Triangulation_GetAttributeAsDouble(mesh, "benches", &to.reals[0]);
     },
     -1, 1, "ZOL_Triangulation_GetAttributeAsDouble Triangulation not defined.",
     "Triangulation::GetAttributes"},
    {"ZOL_Triangulation_GetAttributeAsString",
     [](Handle* mesh, Outputs& to) -> double {
         return ZOL_Triangulation_GetAttributeAsString(mesh, "surveyed", to.text.data());
     },
     -1, 1, "ZOL_Triangulation_GetAttributeAsString Triangulation not defined.",
     "Triangulation::GetAttributes"},
    {"ZOL_Triangulation_GetAttributeAsDate",
     [](Handle* mesh, Outputs& to) -> double {
         return ZOL_Triangulation_GetAttributeAsDate(mesh, "surveyed", &to.wholes[0],
                                                     &to.wholes[1], &to.wholes[2]);
     },
     -1, 1, "ZOL_Triangulation_GetAttributeAsDate Triangulation not defined.",
     "Triangulation::GetAttributes"},
};
// clang-format on

}  // namespace

void script_triangulation() {
    static const ubx::object::TypeDescriptor whole{3, "INT32"};
    static const ubx::object::TypeDescriptor date{7, "Types.YMD_Date"};
    doubles::triangulation_script = {};
    doubles::triangulation_script.Add("benches", &whole, {.int32 = 12});
    doubles::triangulation_script.Add("surveyed", &date, {.text = "2026/05/28"});
}

ExportFamily<Handle, Outputs> triangulation_family() {
    return {"ZOL_Triangulation_",
            kExports,
            [](const TriangulationExport&) { return ZOL_Triangulation_Open("mesh"); },
            ZOL_Triangulation_Close,
            &doubles::triangulation_journal,
            &doubles::triangulation_script.throwing};
}

}  // namespace zol::testing
