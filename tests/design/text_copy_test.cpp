// How texts arrive in a caller's buffer: the bytes written, the cut, the terminator.
#include <gtest/gtest.h>

#include <algorithm>
#include <string>

#include "tests/design/fixture.h"

namespace zol::testing {
namespace {

using doubles::design_script;

constexpr std::size_t kBufferBytes = 255;

/// A text that an export hands out, and the operation that it comes from.
struct TextRow {
    const char* name;
    const char* operation;
    std::size_t which = 0;
    /// False for one whose last byte stays as it was.
    bool ends = true;
};

constexpr const char* kTextA = "ObjectDimension::GetDimensionTextA";
constexpr const char* kTextB = "ObjectDimension::GetDimensionTextB";
constexpr const char* kString = "ObjectDimension::GetDimensionString";

constexpr TextRow kTexts[] = {
    {"ZOL_Database_GetName", "Database::GetName"},
    {"ZOL_Layer_GetName", "Layer::GetName"},
    {"ZOL_Layer_GetDescription", "Layer::GetDescription"},
    {"ZOL_Object_GetName", "Object::GetName"},
    {"ZOL_Object_GetDescription", "Object::GetDescription"},
    {"ZOL_Object_GetFeature", "Object::GetFeature"},
    {"ZOL_Object_GetGroup", "Object::GetGroup"},
    {"ZOL_Object_GetPrimitive", "Object::GetPrimitive"},
    {"ZOL_Object_GetMetadataFieldName", "Metadata::GetField", 0, false},
    {"ZOL_Object_GetMetadataFieldValue_Index", "Metadata::GetValue", 0, false},
    {"ZOL_Object_GetMetadataFieldValue_Name", "Metadata::GetValue", 0, false},
    {"ZOL_Object_Polyline_GetPointInfo", "ObjectPolyline::GetPoint"},
    {"ZOL_Object_Text_GetRecord", "ObjectText::GetRecord"},
    {"ZOL_Object_Text_GetAttributes", "ObjectText::GetTextStringA"},
    {"ZOL_Object_Text_GetAttributes", "ObjectText::GetTextStringB", 1},
    {"ZOL_Object_3DText_GetRecord", "Object3DText::GetRecord"},
    {"ZOL_Object_3DText_GetAttributes", "Object3DText::Get3DTextStringA"},
    {"ZOL_Object_3DText_GetAttributes", "Object3DText::Get3DTextStringB", 1},
    {"ZOL_Object_DimensionLine_GetAttributes", kString},
    {"ZOL_Object_DimensionLine_GetTextAttributes", kTextA},
    {"ZOL_Object_DimensionLine_GetTextAttributes", kTextB, 1, false},
    {"ZOL_Object_DimensionRadius_GetAttributes", kString},
    {"ZOL_Object_DimensionRadius_GetTextAttributes", kTextA},
    {"ZOL_Object_DimensionRadius_GetTextAttributes", kTextB, 1, false},
    {"ZOL_Object_DimensionArc_GetAttributes", kString},
    {"ZOL_Object_DimensionArc_GetTextAttributes", kTextA},
    {"ZOL_Object_DimensionArc_GetTextAttributes", kTextB, 1, false},
    {"ZOL_Object_DimensionAngle_GetAttributes", kString},
    {"ZOL_Object_DimensionAngle_GetTextAttributes", kTextA},
    {"ZOL_Object_DimensionAngle_GetTextAttributes", kTextB, 1, false},
};

class DesignTextCopyTest : public DesignFixture {};

TEST_F(DesignTextCopyTest, EveryCopyWritesItsBytesAndNoMore) {
    script_design();
    const std::string embedded_nul("ab\0cd", 5);
    for (const TextRow& row : kTexts) {
        for (const std::string& text :
             {std::string(), std::string("ore"), std::string(253, 'x'), std::string(254, 'x'),
              std::string(255, 'x'), std::string(300, 'x'), embedded_nul}) {
            SCOPED_TRACE(std::string(row.operation) + ", " + std::to_string(text.size()));
            design_script.texts = {{row.operation, text}};
            DesignOutputs to;
            ASSERT_EQ(Call(row.name, to), 0);
            EXPECT_EQ(pending_error(), "") << "a cut is no failure";

            std::string expected = std::string(text.c_str()).substr(0, kBufferBytes - 1);
            expected.resize(kBufferBytes - 1, '\0');
            expected += row.ends ? '\0' : '#';
            const auto& buffer = to.texts[row.which];
            EXPECT_EQ(std::string(buffer.begin(), buffer.end()), expected + '#');
        }
    }
}

TEST_F(DesignTextCopyTest, ALayerNameIsCutTo254Bytes) {
    design_script.layers = {"pit", std::string(300, 'x')};
    DesignOutputs to;
    EXPECT_EQ(Call("ZOL_Database_GetLayerNameByIndex", to), 0);
    EXPECT_EQ(to.texts[0].data(), std::string(254, 'x'));
    EXPECT_EQ(to.texts[0][255], '#');
}

// Where the two buffers of a dimension's texts overlap, the terminator of the second shows in
// the first.
TEST_F(DesignTextCopyTest, TheSecondTextOfADimensionIsEndedInTheFirstBuffer) {
    script_design();
    using Function = int (*)(ObjectHandle*, char*, char*, double*, int*);
    for (const Function function :
         {ZOL_Object_DimensionLine_GetTextAttributes, ZOL_Object_DimensionRadius_GetTextAttributes,
          ZOL_Object_DimensionArc_GetTextAttributes, ZOL_Object_DimensionAngle_GetTextAttributes}) {
        design_script.texts = {{kTextA, "first"}, {kTextB, std::string(300, 'x')}};
        std::string both(2 * kBufferBytes, '#');
        double height = 0;
        int location = 0;
        char* const second = both.data() + kBufferBytes - 1;
        EXPECT_EQ(function(object_.get(), both.data(), second, &height, &location), 0);
        EXPECT_EQ(*second, '\0');
        EXPECT_EQ(both.substr(kBufferBytes, 254), std::string(253, 'x') + '#');
    }
}

}  // namespace
}  // namespace zol::testing
