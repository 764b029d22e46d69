// Layers, what objects of every kind answer, and their metadata.
#include <gtest/gtest.h>

#include <climits>
#include <string>

#include "tests/design/fixture.h"

namespace zol::testing {
namespace {

using doubles::design_journal;
using doubles::design_script;

class DesignObjectTest : public DesignFixture {};

TEST_F(DesignObjectTest, HandlesMayBeClosedInAnyOrder) {
    const Owned<ObjectHandle> again(ZOL_Layer_GetObject(layer_.get(), &kIndex));
    EXPECT_NE(again, object_);
    EXPECT_EQ(ZOL_Database_Close(database_.release()), 0);
    EXPECT_EQ(ZOL_Layer_Close(layer_.release()), 0);
    EXPECT_EQ(design_journal.back(), "Layer::~Layer") << "no object with it";
    EXPECT_EQ(ZOL_Object_Close(object_.release()), 0);
    EXPECT_EQ(design_journal.back(), "Object::~Object");
    double value = 0;
    EXPECT_EQ(ZOL_Object_GetValue(again.get(), &value), 0);
}

TEST_F(DesignObjectTest, OnlyIndicesOfTheLayerReachIt) {
    for (const int count : {0, 3}) {
        design_script.numbers["Layer::NObjects"] = count;
        for (const int index : {0, 2, 3, -1, INT_MIN, INT_MAX}) {
            SCOPED_TRACE(std::to_string(index) + " of " + std::to_string(count));
            design_journal.clear();
            const Owned<ObjectHandle> object(ZOL_Layer_GetObject(layer_.get(), &index));
            if (0 <= index && index < count) {
                EXPECT_NE(object, nullptr);
                EXPECT_EQ(design_journal, (Texts{"Layer::NObjects", "Object::Object",
                                                 "Layer::GetObject " + std::to_string(index)}));
            } else {
                EXPECT_EQ(object, nullptr);
                EXPECT_EQ(pending_error(), "ZOL_Layer_GetObject Invalid index.");
                EXPECT_EQ(design_journal, Texts{"Layer::NObjects"});
            }
        }
    }
}

TEST_F(DesignObjectTest, AnObjectThatTheLayerCannotGiveIsHandedOut) {
    design_script.true_of.erase("Layer::GetObject");
    const Owned<ObjectHandle> object(ZOL_Layer_GetObject(layer_.get(), &kIndex));
    EXPECT_NE(object, nullptr);
    EXPECT_EQ(pending_error(), "");
}

TEST_F(DesignObjectTest, PredicatesAnswerAsTheLibraryDoes) {
    struct Row {
        const char* name;
        const char* operation;
    };
    for (const Row& row : {Row{"ZOL_Database_IsOpen", "Database::IsOpen"},
                           Row{"ZOL_Database_LayerExists", "Database::Exists"},
                           Row{"ZOL_Layer_IsEdited", "Layer::IsEdited"},
                           Row{"ZOL_Object_HasMetadata", "Metadata::HasMetadata"},
                           Row{"ZOL_Object_HasMetadataField", "Metadata::HasField"}}) {
        SCOPED_TRACE(row.name);
        DesignOutputs to;
        design_script.true_of = {row.operation};
        EXPECT_EQ(Call(row.name, to), 1);
        design_script.true_of = {};
        EXPECT_EQ(Call(row.name, to), 0);
        EXPECT_EQ(pending_error(), "");
    }
}

TEST_F(DesignObjectTest, TheTypeIsStoredEvenOfAnObjectInError) {
    design_script.numbers["Object::GetType"] = 7;
    for (const std::string& error : {std::string("no such block"), std::string()}) {
        design_script.texts["Object::GetError"] = error;
        design_script.true_of = {"Object::HasError"};
        for (int i = 0; i < 2; ++i) {
            int type = -77;
            EXPECT_EQ(ZOL_Object_GetType(object_.get(), &type), 1);
            EXPECT_EQ(type, 7);
            EXPECT_EQ(pending_error(), "ZOL_Object_GetType " + error);
        }
    }
    DesignOutputs to;
    EXPECT_EQ(Call("ZOL_Object_GetName", to), 0) << "nothing else asks for the error";
    design_script.true_of = {};
    design_journal.clear();
    int type = -77;
    EXPECT_EQ(ZOL_Object_GetType(object_.get(), &type), 0);
    EXPECT_EQ(type, 7);
    EXPECT_EQ(design_journal, (Texts{"Object::GetType", "Object::HasError"}));
}

TEST_F(DesignObjectTest, AMetadataPositionIsTestedExactly) {
    for (const char* name :
         {"ZOL_Object_GetMetadataFieldName", "ZOL_Object_GetMetadataFieldValue_Index"}) {
        for (const int count : {0, 1, 2}) {
            // The tables ask for position 1.
            SCOPED_TRACE(std::string(name) + ", " + std::to_string(count));
            design_script.numbers["Metadata::NFields"] = count;
            DesignOutputs to;
            EXPECT_EQ(Call(name, to), count > kIndex ? 0 : 1);
            EXPECT_EQ(pending_error(), count > kIndex ? "" : std::string(name) + " Invalid index.");
        }
    }
    char buffer[255];
    for (const int index : {-1, INT_MIN, INT_MAX}) {
        EXPECT_EQ(ZOL_Object_GetMetadataFieldName(object_.get(), &index, buffer), 1);
        EXPECT_EQ(ZOL_Object_GetMetadataFieldValue_Index(object_.get(), &index, buffer), 1);
    }
}

TEST_F(DesignObjectTest, AMetadataFieldThatIsNotThereLeavesTheOutput) {
    DesignOutputs to;
    design_journal.clear();
    EXPECT_EQ(Call("ZOL_Object_GetMetadataFieldValue_Name", to), 1);
    EXPECT_EQ(pending_error(), "ZOL_Object_GetMetadataFieldValue_Name Field does not exist.");
    EXPECT_EQ(design_journal, (Texts{"Object::GetMetadata", "Metadata::HasField pit"}));

    design_script.numbers["Metadata::GetFieldIndex"] = -1;
    EXPECT_EQ(Call("ZOL_Object_GetMetadataFieldIndex", to), 1);
    EXPECT_EQ(pending_error(), "ZOL_Object_GetMetadataFieldIndex Field not found.");
    EXPECT_EQ(to, DesignOutputs());

    design_script.numbers["Metadata::GetFieldIndex"] = 0;
    EXPECT_EQ(Call("ZOL_Object_GetMetadataFieldIndex", to), 0);
    EXPECT_EQ(to.wholes[0], 0);
}

// Behind the handle, ahead of all else, so that an index is not even read.
TEST_F(DesignObjectTest, NullPointersAreRefusedBehindTheHandle) {
    struct Row {
        const char* function;
        int failed;
        int (*call)(ObjectHandle* handle);
    };
    const Row rows[] = {
        {"HasMetadataField", -1,
         [](ObjectHandle* handle) { return ZOL_Object_HasMetadataField(handle, nullptr); }},
        {"GetMetadataFieldIndex", 1,
         [](ObjectHandle* handle) {
             int index = 0;
             return ZOL_Object_GetMetadataFieldIndex(handle, nullptr, &index);
         }},
        {"GetMetadataFieldIndex", 1,
         [](ObjectHandle* handle) {
             return ZOL_Object_GetMetadataFieldIndex(handle, "pit", nullptr);
         }},
        {"GetMetadataFieldName", 1,
         [](ObjectHandle* handle) {
             return ZOL_Object_GetMetadataFieldName(handle, nullptr, nullptr);
         }},
        {"GetMetadataFieldValue_Index", 1,
         [](ObjectHandle* handle) {
             return ZOL_Object_GetMetadataFieldValue_Index(handle, nullptr, nullptr);
         }},
        {"GetMetadataFieldValue_Name", 1,
         [](ObjectHandle* handle) {
             char buffer[255];
             return ZOL_Object_GetMetadataFieldValue_Name(handle, nullptr, buffer);
         }},
        {"GetMetadataFieldValue_Name", 1,
         [](ObjectHandle* handle) {
             return ZOL_Object_GetMetadataFieldValue_Name(handle, "no such", nullptr);
         }},
    };
    for (const Row& row : rows) {
        const std::string name = std::string("ZOL_Object_") + row.function;
        SCOPED_TRACE(name);
        EXPECT_EQ(row.call(object_.get()), row.failed);
        EXPECT_EQ(pending_error(), name + " Received a null pointer.");
        EXPECT_EQ(row.call(nullptr), row.failed);
        EXPECT_EQ(pending_error(), name + " Object not defined.");
    }
    EXPECT_EQ(design_journal, Texts{}) << "the fields are not fetched for it";
}

}  // namespace
}  // namespace zol::testing
