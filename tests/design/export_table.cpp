#include "tests/design/export_table.h"

#include <string>

namespace zol::testing {

namespace {

using Outputs = DesignOutputs;

constexpr const char* kName = "pit";

// The shapes of arguments that several exports share.

template <auto Function, class Handle>
double plain(Handle* handle, Outputs&) {
    return Function(handle);
}

template <auto Function, class Handle>
double named(Handle* handle, Outputs&) {
    return Function(handle, kName);
}

template <auto Function, class Handle>
double text(Handle* handle, Outputs& to) {
    return Function(handle, to.texts[0].data());
}

template <auto Function, class Handle>
double indexed_text(Handle* handle, Outputs& to) {
    return Function(handle, &kIndex, to.texts[0].data());
}

template <auto Function>
double whole(ObjectHandle* handle, Outputs& to) {
    return Function(handle, &to.wholes[0]);
}

template <auto Function>
double wholes_3(ObjectHandle* handle, Outputs& to) {
    return Function(handle, &to.wholes[0], &to.wholes[1], &to.wholes[2]);
}

template <auto Function>
double wholes_4(ObjectHandle* handle, Outputs& to) {
    return Function(handle, &to.wholes[0], &to.wholes[1], &to.wholes[2], &to.wholes[3]);
}

template <auto Function>
double real(ObjectHandle* handle, Outputs& to) {
    return Function(handle, &to.reals[0]);
}

template <auto Function>
double reals_2(ObjectHandle* handle, Outputs& to) {
    return Function(handle, &to.reals[0], &to.reals[1]);
}

template <auto Function>
double point(ObjectHandle* handle, Outputs& to) {
    return Function(handle, &to.reals[0], &to.reals[1], &to.reals[2]);
}

template <auto Function>
double dimension(ObjectHandle* handle, Outputs& to) {
    return Function(handle, to.texts[0].data(), &to.reals[0], &to.reals[1], &to.reals[2],
                    &to.reals[3], &to.reals[4]);
}

template <auto Function>
double dimension_text(ObjectHandle* handle, Outputs& to) {
    return Function(handle, to.texts[0].data(), to.texts[1].data(), &to.reals[0], &to.wholes[0]);
}

// clang-format off
constexpr ExportRow<DatabaseHandle, Outputs> kDatabaseExports[] = {
    {"ZOL_Database_Open", [](DatabaseHandle*, Outputs& to) {
         to.database.reset(ZOL_Database_Open("mine"));
         return to.database == nullptr ? 0.0 : 1.0;
     },
     0, 0, nullptr,
     "Database::GetColourTable"},
    {"ZOL_Database_Close", plain<ZOL_Database_Close>,
     -1, 1, "ZOL_Database_Close Database not defined.",
     "Database::HasError"},
    {"ZOL_Database_IsOpen", plain<ZOL_Database_IsOpen>,
     -1, -1, "ZOL_Database_IsOpen Database not defined.",
     "Database::IsOpen", Order::kSuccessFirst},
    {"ZOL_Database_GetName", text<ZOL_Database_GetName>,
     -1, 1, "ZOL_Database_GetName Database not defined.",
     "Database::GetName"},
    {"ZOL_Database_NLayers", plain<ZOL_Database_NLayers>,
     -1, -1, "ZOL_Database_NLayers Database not defined.",
     "Database::GetLayerList", Order::kEmptiedThenCounted},
    {"ZOL_Database_LayerExists", named<ZOL_Database_LayerExists>,
     -1, -1, "ZOL_Database_LayerExists Database not defined.",
     "Database::Exists"},
    {"ZOL_Database_GetLayerNameByIndex", indexed_text<ZOL_Database_GetLayerNameByIndex>,
     -1, 1, "ZOL_Database_GetLayerNameByIndex Database not defined.",
     "Database::GetLayerList"},
    {"ZOL_Database_GetLayerByIndex", [](DatabaseHandle* handle, Outputs& to) {
         to.layer.reset(ZOL_Database_GetLayerByIndex(handle, &kIndex));
         return to.layer == nullptr ? 0.0 : 1.0;
     },
     0, 0, "ZOL_Database_GetLayerByIndex Database not defined.",
     "Database::Get"},
    {"ZOL_Database_GetLayerByName", [](DatabaseHandle* handle, Outputs& to) {
         to.layer.reset(ZOL_Database_GetLayerByName(handle, kName));
         return to.layer == nullptr ? 0.0 : 1.0;
     },
     0, 0, "ZOL_Database_GetLayerByName Database not defined.",
     "Database::Get"},
};

constexpr ExportRow<LayerHandle, Outputs> kLayerExports[] = {
    {"ZOL_Layer_Close", plain<ZOL_Layer_Close>,
     -1, -1, "ZOL_Layer_Close Layer not defined.",
     nullptr},
    {"ZOL_Layer_GetName", text<ZOL_Layer_GetName>,
     -1, 1, "ZOL_Layer_GetName Layer not defined.",
     "Layer::GetName"},
    {"ZOL_Layer_GetDescription", text<ZOL_Layer_GetDescription>,
     -1, 1, "ZOL_Layer_GetDescription Layer not defined.",
     "Layer::GetDescription"},
    {"ZOL_Layer_IsEdited", plain<ZOL_Layer_IsEdited>,
     -1, -1, "ZOL_Layer_IsEdited Layer not defined.",
     "Layer::IsEdited"},
    {"ZOL_Layer_NObjects", plain<ZOL_Layer_NObjects>,
     -1, -1, "ZOL_Layer_NObjects Layer not defined.",
     "Layer::NObjects", Order::kSuccessFirst},
    {"ZOL_Layer_GetObject", [](LayerHandle* handle, Outputs& to) {
         to.object.reset(ZOL_Layer_GetObject(handle, &kIndex));
         return to.object == nullptr ? 0.0 : 1.0;
     },
     0, 0, "ZOL_Layer_GetObject Layer not defined.",
     "Layer::GetObject"},
};

constexpr ExportRow<ObjectHandle, Outputs> kObjectExports[] = {
    {"ZOL_Object_Close", plain<ZOL_Object_Close>,
     -1, -1, "ZOL_Object_Close Object not defined.",
     nullptr},
    {"ZOL_Object_GetType", whole<ZOL_Object_GetType>,
     -1, 1, "ZOL_Object_GetType Object not defined.",
     "Object::HasError"},
    {"ZOL_Object_GetName", text<ZOL_Object_GetName>,
     -1, 1, "ZOL_Object_GetName Object not defined.",
     "Object::GetName"},
    {"ZOL_Object_GetDescription", text<ZOL_Object_GetDescription>,
     -1, 1, "ZOL_Object_GetDescription Object not defined.",
     "Object::GetDescription"},
    {"ZOL_Object_GetFeature", text<ZOL_Object_GetFeature>,
     -1, 1, "ZOL_Object_GetFeature Object not defined.",
     "Object::GetFeature"},
    {"ZOL_Object_GetGroup", text<ZOL_Object_GetGroup>,
     -1, 1, "ZOL_Object_GetGroup Object not defined.",
     "Object::GetGroup"},
    {"ZOL_Object_GetPrimitive", text<ZOL_Object_GetPrimitive>,
     -1, 1, "ZOL_Object_GetPrimitive Object not defined.",
     "Object::GetPrimitive"},
    {"ZOL_Object_GetValue", real<ZOL_Object_GetValue>,
     -1, 1, "ZOL_Object_GetValue Object not defined.",
     "Object::GetValue"},
    {"ZOL_Object_GetColourIndex", whole<ZOL_Object_GetColourIndex>,
     -1, 1, "ZOL_Object_GetColourIndex Object not defined.",
     "Object::GetColour"},
    {"ZOL_Object_GetColour", wholes_3<ZOL_Object_GetColour>,
     -1, 1, "ZOL_Object_GetColour Object not defined.",
     "Object::GetColour"},
    {"ZOL_Object_HasMetadata", plain<ZOL_Object_HasMetadata>,
     -1, -1, "ZOL_Object_HasMetadata Object not defined.",
     "Metadata::HasMetadata"},
    {"ZOL_Object_NMetadataFields", plain<ZOL_Object_NMetadataFields>,
     -1, -1, "ZOL_Object_NMetadataFields Object not defined.",
     "Metadata::NFields"},
    {"ZOL_Object_HasMetadataField", named<ZOL_Object_HasMetadataField>,
     -1, -1, "ZOL_Object_HasMetadataField Object not defined.",
     "Metadata::HasField"},
    {"ZOL_Object_GetMetadataFieldIndex", [](ObjectHandle* handle, Outputs& to) -> double {
         return ZOL_Object_GetMetadataFieldIndex(handle, kName, &to.wholes[0]);
     },
     -1, 1, "ZOL_Object_GetMetadataFieldIndex Object not defined.",
     "Metadata::GetFieldIndex"},
    {"ZOL_Object_GetMetadataFieldName", indexed_text<ZOL_Object_GetMetadataFieldName>,
     -1, 1, "ZOL_Object_GetMetadataFieldName Object not defined.",
     "Metadata::GetField"},
    {"ZOL_Object_GetMetadataFieldValue_Index", indexed_text<ZOL_Object_GetMetadataFieldValue_Index>,
     -1, 1, "ZOL_Object_GetMetadataFieldValue_Index Object not defined.",
     "Metadata::GetValue"},
    {"ZOL_Object_GetMetadataFieldValue_Name", [](ObjectHandle* handle, Outputs& to) -> double {
         return ZOL_Object_GetMetadataFieldValue_Name(handle, kName, to.texts[0].data());
     },
     -1, 1, "ZOL_Object_GetMetadataFieldValue_Name Object not defined.",
     "Metadata::GetValue"},
    {"ZOL_Object_Polyline_NPoints", plain<ZOL_Object_Polyline_NPoints>,
     -1, 1, "ZOL_Object_Polyline_NPoints Object not defined.",
     "ObjectPolyline::NPoints", Order::kSuccessFirst},
    {"ZOL_Object_Polyline_GetLineType", whole<ZOL_Object_Polyline_GetLineType>,
     -1, 1, "ZOL_Object_Polyline_GetLineType Object not defined.",
     "ObjectPolyline::GetLineType"},
    {"ZOL_Object_Polyline_GetAttributes", wholes_4<ZOL_Object_Polyline_GetAttributes>,
     -1, 1, "ZOL_Object_Polyline_GetAttributes Object not defined.",
     "ObjectPolyline::GetPolylineFlagB"},
    {"ZOL_Object_Polyline_GetPointInfo", [](ObjectHandle* handle, Outputs& to) -> double {
         return ZOL_Object_Polyline_GetPointInfo(handle, &kIndex, &to.reals[0], &to.reals[1],
                                                 &to.reals[2], &to.reals[3], &to.wholes[0],
                                                 to.texts[0].data());
     },
     -1, 1, "ZOL_Object_Polyline_GetPointInfo Object not defined.",
     "Point::GetXyzwtn"},
    {"ZOL_Object_Polyline_GetPointType", [](ObjectHandle* handle, Outputs& to) -> double {
         return ZOL_Object_Polyline_GetPointType(handle, &kIndex, &to.wholes[0]);
     },
     -1, 1, "ZOL_Object_Polyline_GetPointType Object not defined.",
     "ObjectPolyline::IsPointKindOne"},
    {"ZOL_Object_Text_NRecords", plain<ZOL_Object_Text_NRecords>,
     -1, -1, "ZOL_Object_3DText_GetOrigin Object not defined.",
     "ObjectText::NRecords", Order::kSuccessFirst},
    {"ZOL_Object_Text_GetRecord", indexed_text<ZOL_Object_Text_GetRecord>,
     -1, -1, "ZOL_Object_Text_GetRecord Object not defined.",
     "ObjectText::GetRecord"},
    {"ZOL_Object_Text_GetOrigin", point<ZOL_Object_Text_GetOrigin>,
     -1, 1, "ZOL_Object_Text_GetOrigin Object not defined.",
     "Point::GetXyz"},
    {"ZOL_Object_Text_GetAttributes", [](ObjectHandle* handle, Outputs& to) -> double {
         return ZOL_Object_Text_GetAttributes(handle, to.texts[0].data(), to.texts[1].data(),
                                              &to.reals[0], &to.reals[1], &to.reals[2],
                                              &to.wholes[0]);
     },
     -1, 1, "ZOL_Object_Text_GetAttributes Object not defined.",
     "ObjectText::GetTextFlag"},
    {"ZOL_Object_3DText_NRecords", plain<ZOL_Object_3DText_NRecords>,
     -1, -1, "ZOL_Object_3DText_GetOrigin Object not defined.",
     "Object3DText::NRecords", Order::kSuccessFirst},
    {"ZOL_Object_3DText_GetRecord", indexed_text<ZOL_Object_3DText_GetRecord>,
     -1, -1, "ZOL_Object_3DText_GetRecord Object not defined.",
     "Object3DText::GetRecord"},
    {"ZOL_Object_3DText_GetOrigin", point<ZOL_Object_3DText_GetOrigin>,
     -1, 1, "ZOL_Object_3DText_GetOrigin Object not defined.",
     "Point::GetXyz"},
    {"ZOL_Object_3DText_GetOriginPosition", [](ObjectHandle* handle, Outputs& to) -> double {
         return ZOL_Object_3DText_GetOriginPosition(handle, &to.wholes[0], &to.wholes[1]);
     },
     -1, 1, "ZOL_Object_3DText_GetOriginPosition Object not defined.",
     "Object3DText::GetOriginPositionSecond"},
    {"ZOL_Object_3DText_GetDirection", point<ZOL_Object_3DText_GetDirection>,
     -1, 1, "ZOL_Object_3DText_GetDirection Object not defined.",
     "Point::GetXyz"},
    {"ZOL_Object_3DText_GetNormal", point<ZOL_Object_3DText_GetNormal>,
     -1, 1, "ZOL_Object_3DText_GetNormal Object not defined.",
     "Point::GetXyz"},
    {"ZOL_Object_3DText_GetAttributes", [](ObjectHandle* handle, Outputs& to) -> double {
         return ZOL_Object_3DText_GetAttributes(handle, to.texts[0].data(), to.texts[1].data(),
                                                &to.reals[0], &to.reals[1], &to.wholes[0]);
     },
     -1, 1, "ZOL_Object_3DText_GetAttributes Object not defined.",
     "Object3DText::Get3DTextFlag"},
    {"ZOL_Object_Arrow_GetStart", point<ZOL_Object_Arrow_GetStart>,
     -1, -1, "ZOL_Object_Arrow_GetStart Object not defined.",
     "Point::GetXyz"},
    {"ZOL_Object_Arrow_GetEnd", point<ZOL_Object_Arrow_GetEnd>,
     -1, -1, "ZOL_Object_Arrow_GetEnd Object not defined.",
     "Point::GetXyz"},
    {"ZOL_Object_Arrow_GetNormal", point<ZOL_Object_Arrow_GetNormal>,
     -1, -1, "ZOL_Object_Arrow_GetNormal Object not defined.",
     "Point::GetXyz"},
    {"ZOL_Object_Arrow_GetHeadInfo", reals_2<ZOL_Object_Arrow_GetHeadInfo>,
     -1, 1, "ZOL_Object_Arrow_GetHeadInfo Object not defined.",
     "ObjectArrow::GetHeadSecond"},
    {"ZOL_Object_Arrow_GetScaledHeadInfo", reals_2<ZOL_Object_Arrow_GetScaledHeadInfo>,
     -1, 1, "ZOL_Object_Arrow_GetScaledHeadInfo Object not defined.",
     "ObjectArrow::GetScaledHeadSecond"},
    {"ZOL_Object_Arrow_GetRelativeHeadInfo", reals_2<ZOL_Object_Arrow_GetRelativeHeadInfo>,
     -1, 1, "ZOL_Object_Arrow_GetRelativeHeadInfo Object not defined.",
     "ObjectArrow::GetRelativeHeadSecond"},
    {"ZOL_Object_Arrow_GetAttributes", wholes_4<ZOL_Object_Arrow_GetAttributes>,
     -1, 1, "ZOL_Object_Arrow_GetAttributes Object not defined.",
     "ObjectArrow::GetArrowCodeB"},
    {"ZOL_Object_DimensionLine_GetAttributes", dimension<ZOL_Object_DimensionLine_GetAttributes>,
     -1, 1, "ZOL_Object_DimensionLine_GetAttributes Object not defined.",
     "ObjectDimension::GetDimensionNumberE"},
    {"ZOL_Object_DimensionLine_GetTextAttributes", dimension_text<ZOL_Object_DimensionLine_GetTextAttributes>,
     -1, 1, "ZOL_Object_DimensionLine_GetTextAttributes Object not defined.",
     "ObjectDimension::GetTextLocation"},
    {"ZOL_Object_DimensionLine_GetStart", point<ZOL_Object_DimensionLine_GetStart>,
     -1, 1, "ZOL_Object_DimensionLine_GetStart Object not defined.",
     "Point::GetXyz"},
    {"ZOL_Object_DimensionLine_GetEnd", point<ZOL_Object_DimensionLine_GetEnd>,
     -1, 1, "ZOL_Object_DimensionLine_GetEnd Object not defined.",
     "Point::GetXyz"},
    {"ZOL_Object_DimensionLine_GetNormal", point<ZOL_Object_DimensionLine_GetNormal>,
     -1, -1, "ZOL_Object_DimensionLine_GetNormal Object not defined.",
     "Point::GetXyz"},
    {"ZOL_Object_DimensionRadius_GetAttributes", dimension<ZOL_Object_DimensionRadius_GetAttributes>,
     -1, 1, "ZOL_Object_DimensionRadius_GetAttributes Object not defined.",
     "ObjectDimension::GetDimensionNumberE"},
    {"ZOL_Object_DimensionRadius_GetTextAttributes", dimension_text<ZOL_Object_DimensionRadius_GetTextAttributes>,
     -1, 1, "ZOL_Object_DimensionRadius_GetTextAttributes Object not defined.",
     "ObjectDimension::GetTextLocation"},
    {"ZOL_Object_DimensionRadius_GetStart", point<ZOL_Object_DimensionRadius_GetStart>,
     -1, 1, "ZOL_Object_DimensionRadius_GetStart Object not defined.",
     "Point::GetXyz"},
    {"ZOL_Object_DimensionRadius_GetEnd", point<ZOL_Object_DimensionRadius_GetEnd>,
     -1, 1, "ZOL_Object_DimensionLine_GetEnd Object not defined.",
     "Point::GetXyz"},
    {"ZOL_Object_DimensionRadius_GetNormal", point<ZOL_Object_DimensionRadius_GetNormal>,
     -1, -1, "ZOL_Object_DimensionRadius_GetNormal Object not defined.",
     "Point::GetXyz"},
    {"ZOL_Object_DimensionArc_GetAttributes", dimension<ZOL_Object_DimensionArc_GetAttributes>,
     -1, 1, "ZOL_Object_DimensionArc_GetAttributes Object not defined.",
     "ObjectDimension::GetDimensionNumberE"},
    {"ZOL_Object_DimensionArc_GetTextAttributes", dimension_text<ZOL_Object_DimensionArc_GetTextAttributes>,
     -1, 1, "ZOL_Object_DimensionArc_GetTextAttributes Object not defined.",
     "ObjectDimension::GetTextLocation"},
    {"ZOL_Object_DimensionArc_GetOrigin", point<ZOL_Object_DimensionArc_GetOrigin>,
     -1, 1, "ZOL_Object_DimensionArc_GetOrigin Object not defined.",
     "Point::GetXyz"},
    {"ZOL_Object_DimensionArc_GetRadius", point<ZOL_Object_DimensionArc_GetRadius>,
     -1, 1, "ZOL_Object_DimensionArc_GetRadius Object not defined.",
     "Point::GetXyz"},
    {"ZOL_Object_DimensionArc_GetSweep", point<ZOL_Object_DimensionArc_GetSweep>,
     -1, 1, "ZOL_Object_DimensionArc_GetSweep Object not defined.",
     "Point::GetXyz"},
    {"ZOL_Object_DimensionAngle_GetAttributes", dimension<ZOL_Object_DimensionAngle_GetAttributes>,
     -1, 1, "ZOL_Object_DimensionAngle_GetAttributes Object not defined.",
     "ObjectDimension::GetDimensionNumberE"},
    {"ZOL_Object_DimensionAngle_GetTextAttributes", dimension_text<ZOL_Object_DimensionAngle_GetTextAttributes>,
     -1, 1, "ZOL_Object_DimensionAngle_GetTextAttributes Object not defined.",
     "ObjectDimension::GetTextLocation"},
    {"ZOL_Object_DimensionAngle_GetOrigin", point<ZOL_Object_DimensionAngle_GetOrigin>,
     -1, 1, "ZOL_Object_DimensionAngle_GetOrigin Object not defined.",
     "Point::GetXyz"},
    {"ZOL_Object_DimensionAngle_GetRadius", point<ZOL_Object_DimensionAngle_GetRadius>,
     -1, 1, "ZOL_Object_DimensionAngle_GetRadius Object not defined.",
     "Point::GetXyz"},
    {"ZOL_Object_DimensionAngle_GetSweep", point<ZOL_Object_DimensionAngle_GetSweep>,
     -1, 1, "ZOL_Object_DimensionAngle_GetSweep Object not defined.",
     "Point::GetXyz"},
};
// clang-format on

}  // namespace

void script_design() {
    doubles::design_script = {};
    for (const char* kind : {"Polyline", "Text", "3DText", "Arrow", "DimensionLine",
                             "DimensionRadius", "DimensionArc", "DimensionAngle"}) {
        doubles::design_script.true_of.insert(std::string("Object::Is") + kind);
    }
    doubles::design_script.true_of.insert("Metadata::HasField");
    doubles::design_script.numbers["Object::GetColour"] = 4;
}

ExportFamily<DatabaseHandle, Outputs> database_family() {
    return {"ZOL_Database_",
            kDatabaseExports,
            [](const auto&) { return ZOL_Database_Open("mine"); },
            ZOL_Database_Close,
            &doubles::design_journal,
            &doubles::design_script.throwing};
}

ExportFamily<LayerHandle, Outputs> layer_family() {
    return {"ZOL_Layer_",
            kLayerExports,
            [](const auto&) { return open_layer(); },
            ZOL_Layer_Close,
            &doubles::design_journal,
            &doubles::design_script.throwing};
}

ExportFamily<ObjectHandle, Outputs> object_family() {
    return {"ZOL_Object_",    kObjectExports,           [](const auto&) { return open_object(); },
            ZOL_Object_Close, &doubles::design_journal, &doubles::design_script.throwing};
}

LayerHandle* open_layer() {
    const Owned<DatabaseHandle> database(ZOL_Database_Open("mine"));
    return ZOL_Database_GetLayerByIndex(database.get(), &kIndex);
}

ObjectHandle* open_object() {
    const Owned<LayerHandle> layer(open_layer());
    return ZOL_Layer_GetObject(layer.get(), &kIndex);
}

}  // namespace zol::testing
