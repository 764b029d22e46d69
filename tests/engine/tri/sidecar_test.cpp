// The sidecar of a mesh.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdlib>
#include <string>

#include "platform/zolTriangulationExport.h"
#include "tests/engine/temporary_file.h"
#include "tests/engine/tri/mesh_texts.h"

namespace zol::testing {
namespace {

using model::tri::Triangulation;
using ::testing::HasSubstr;
using testing_support::TemporaryFile;

TEST(SidecarTest, AddsAndOverrides) {
    TemporaryFile file(
        "ply\nformat ascii 1.0\ncomment one\ncomment two\ncomment TextureFile a.png\n"
        "element vertex 1\nproperty float x\nproperty float y\nproperty float z\n"
        "property uchar red\nproperty uchar green\nproperty uchar blue\n"
        "property uchar alpha\nend_header\n0 0 0 1 2 3 255\n");
    const struct {
        const char* name;
        const char* sidecar;
        const char* look;
        const char* attribute;
        const char* expected;
    } rows[] = {
        {"nothing", "{}", "1 2 3 0 opaque a.png", "parts", "parts:INT32=1"},
        {"a colour", R"({"mesh:look":{"colour":"#C06020"}})", "192 96 32 0 opaque a.png", "x", ""},
        {"numbers of a colour", R"({"mesh:look":{"colour":[255,0,7]}})", "255 0 7 0 opaque a.png",
         "x", ""},
        {"translucency", R"({"mesh:look":{"translucency":0.25}})", "1 2 3 0.25 translucent a.png",
         "x", ""},
        {"a texture", R"({"mesh:look":{"texture":"maps\\rock.jpg"}})", "1 2 3 0 opaque rock.jpg",
         "x", ""},
        {"no texture", R"({"mesh:look":{"texture":null}})", "1 2 3 0 opaque", "x", ""},
        {"a text", R"({"mesh:attributes":{"x":"ore"}})", "1 2 3 0 opaque a.png", "x",
         "x:STRING=ore"},
        {"a date", R"({"mesh:attributes":{"x":"2001/12/31"}})", "1 2 3 0 opaque a.png", "x",
         "x:Types.YMD_Date=2001/12/31"},
        {"a date of stated order",
         R"({"mesh:attributes":{"x":{"value":"05/06/2001","type":"MDY_Date"}}})",
         "1 2 3 0 opaque a.png", "x", "x:Types.MDY_Date=05/06/2001"},
        {"no date", R"({"mesh:attributes":{"x":{"value":"2001/12/31","type":"STRING"}}})",
         "1 2 3 0 opaque a.png", "x", "x:STRING=2001/12/31"},
        {"a whole number", R"({"mesh:attributes":{"x":-12}})", "1 2 3 0 opaque a.png", "x",
         "x:INT32=-12"},
        {"a large one", R"({"mesh:attributes":{"x":9007199254740993}})", "1 2 3 0 opaque a.png",
         "x", "x:INT64=9007199254740993"},
        {"the largest", R"({"mesh:attributes":{"x":9223372036854775807}})", "1 2 3 0 opaque a.png",
         "x", "x:INT64=9223372036854775807"},
        {"the largest, said to be one",
         R"({"mesh:attributes":{"x":{"value":9223372036854775807,"type":"INT64"}}})",
         "1 2 3 0 opaque a.png", "x", "x:INT64=9223372036854775807"},
        {"the least", R"({"mesh:attributes":{"x":{"value":-9223372036854775808,"type":"INT64"}}})",
         "1 2 3 0 opaque a.png", "x", "x:INT64=-9223372036854775808"},
        {"one more than the largest", R"({"mesh:attributes":{"x":9223372036854775808}})",
         "1 2 3 0 opaque a.png", "x", "x:DOUBLE=9223372036854775808"},
        {"one as wide as it is said to be",
         R"({"mesh:attributes":{"x":{"value":5,"type":"INT64"}}})", "1 2 3 0 opaque a.png", "x",
         "x:INT64=5"},
        {"a number", R"({"mesh:attributes":{"x":2.5}})", "1 2 3 0 opaque a.png", "x",
         "x:DOUBLE=2.5"},
        {"a number that happens to be whole",
         R"({"mesh:attributes":{"x":{"value":3,"type":"DOUBLE"}}})", "1 2 3 0 opaque a.png", "x",
         "x:DOUBLE=3"},
        {"one beyond 64 bits", R"({"mesh:attributes":{"x":1e20}})", "1 2 3 0 opaque a.png", "x",
         "x:DOUBLE=100000000000000000000"},
        {"a number without a fraction, however written", R"({"mesh:attributes":{"x":3.0}})",
         "1 2 3 0 opaque a.png", "x", "x:INT32=3"},
        {"a boolean", R"({"mesh:attributes":{"x":false}})", "1 2 3 0 opaque a.png", "x",
         "x:BOOLEAN=false"},
        {"in place of all of that name", R"({"mesh:attributes":{"comment":"mine"}})",
         "1 2 3 0 opaque a.png", "comment", "comment:STRING=mine"},
        {"away with them", R"({"mesh:attributes":{"comment":null,"none":null}})",
         "1 2 3 0 opaque a.png", "comment", ""},
        {"what others put there", R"({"block:model":{"order":"zyx"},"name":1})",
         "1 2 3 0 opaque a.png", "parts", "parts:INT32=1"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        file.WriteSidecar(row.sidecar);
        const Triangulation mesh(file.Path());
        ASSERT_EQ(mesh.NumPoints(), 1);
        EXPECT_EQ(look_of(mesh), row.look);
        EXPECT_EQ(attributes_of(mesh, row.attribute), row.expected);
    }
}

TEST(SidecarTest, MalformedKeepsTheMeshFromOpeningAndSaysWhy) {
    TemporaryFile file("v 0 0 0\n");
    const TemporaryFile log("");
    const struct {
        const char* sidecar;
        const char* reason;
    } rows[] = {
        {"{", "in the sidecar"},
        {R"({"mesh:look":{"color":"#000000"}})", "$[\"mesh:look\"].color is not known here"},
        {R"({"mesh:look":{"colour":"red"}})", "$[\"mesh:look\"].colour is no colour"},
        {R"({"mesh:look":{"colour":"#00000G"}})", "$[\"mesh:look\"].colour is no colour"},
        {R"({"mesh:look":{"colour":[0,0]}})", "$[\"mesh:look\"].colour is no colour"},
        {R"({"mesh:look":{"colour":[0,0,256]}})",
         "$[\"mesh:look\"].colour[2] is not from 0 to 255"},
        {R"({"mesh:look":{"translucency":1.5}})", "translucency is not from 0"},
        {R"({"mesh:look":{"texture":"../x.png"}})", "texture is no file of the sidecar's folder"},
        {R"({"mesh:look":[]})", "an object is expected"},
        {R"({"mesh:attributes":{"x":[1]}})",
         "$[\"mesh:attributes\"].x is no value of an attribute"},
        {R"({"mesh:attributes":{"x":{"type":"INT32"}}})", "$[\"mesh:attributes\"].x"},
        {R"({"mesh:attributes":{"x":{"value":1,"type":"INT16"}}})", "x.type is no type"},
        {R"({"mesh:attributes":{"x":{"value":1,"typ":"DOUBLE"}}})", "x.typ is not known here"},
        {R"({"mesh:attributes":{"x":{"value":3000000000,"type":"INT32"}}})",
         "x.value can't be of type INT32"},
        {R"({"mesh:attributes":{"x":{"value":"13/13/2001","type":"DMY_Date"}}})",
         "x.value can't be of type DMY_Date"},
        {R"({"mesh:attributes":{"x":{"value":"x","type":"DOUBLE"}}})", "can't be of type DOUBLE"},
    };
    ::setenv("ZOL_DIAGNOSTICS", log.Path().c_str(), 1);
    for (const auto& row : rows) {
        SCOPED_TRACE(row.sidecar);
        file.WriteSidecar(row.sidecar);
        ASSERT_EQ(::truncate(log.Path().c_str(), 0), 0);
        EXPECT_EQ(Triangulation(file.Path()).NumPoints(), 0);
        std::ifstream in(log.Path());
        EXPECT_THAT(std::string(std::istreambuf_iterator<char>(in), {}), HasSubstr(row.reason));
    }
    ::unsetenv("ZOL_DIAGNOSTICS");
}

TEST(SidecarTest, AttributesAreNoMoreThanCallersHaveRoomFor) {
    const TemporaryFile log("");
    std::string header;
    std::string members;
    for (int i = 0; i < 1500; ++i) {
        header += "key" + std::to_string(i) + ":1\n";
        members += (i == 0 ? "\"" : ",\"") + std::to_string(i) + "\":" + std::to_string(i);
    }
    const struct {
        const char* name;
        std::string header;
        std::string sidecar;
        const char* reason;
    } rows[] = {
        {"of the file", header, "{}", "of its 1506 attributes only the first 1000 are given"},
        {"of the sidecar", "", R"({"mesh:attributes":{)" + members + "}}",
         "of its 1500 attributes only the first 1000 are read"},
        {"of both", "name:made\n", R"({"mesh:attributes":{)" + members + "}}",
         "of its 1007 attributes only the first 1000 are given"},
    };
    ::setenv("ZOL_DIAGNOSTICS", log.Path().c_str(), 1);
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        TemporaryFile file("GOCAD TSurf 1\nHEADER {\n" + row.header +
                           "}\nTFACE\nVRTX 1 0 0 0\nEND\n");
        file.WriteSidecar(row.sidecar);
        ASSERT_EQ(::truncate(log.Path().c_str(), 0), 0);
        const Triangulation mesh(file.Path());
        ASSERT_EQ(mesh.NumPoints(), 1);
        const auto& library = mesh.GetAttributes();
        EXPECT_EQ(std::distance(library.Begin(), library.End()), 1000);
        EXPECT_EQ(library.Begin()->first, "format");
        std::ifstream in(log.Path());
        EXPECT_THAT(std::string(std::istreambuf_iterator<char>(in), {}), HasSubstr(row.reason));
    }
    ::unsetenv("ZOL_DIAGNOSTICS");
}

TEST(SidecarTest, TheTextureIsAnAttributeWhoeverSaysIt) {
    const std::string ply =
        "ply\nformat ascii 1.0\ncomment TextureFile 2001/12/31\nelement vertex 1\n"
        "property float x\nproperty float y\nproperty float z\nend_header\n0 0 0\n";
    const struct {
        const char* sidecar;
        const char* texture;
    } rows[] = {
        {"{}", "2001/12/31"},
        {R"({"mesh:look":{"texture":"rock.png"}})", "rock.png"},
        {R"({"mesh:look":{"texture":null}})", ""},
    };
    TemporaryFile file(ply);
    const std::string folder = file.Path().substr(0, file.Path().rfind('/') + 1);
    for (const auto& row : rows) {
        SCOPED_TRACE(row.sidecar);
        file.WriteSidecar(row.sidecar);
        const std::string texture = row.texture;
        EXPECT_EQ(attributes_of(Triangulation(file.Path()), "texture"),
                  texture.empty() ? "" : "texture:STRING=" + folder + texture);
    }
}

}  // namespace
}  // namespace zol::testing
