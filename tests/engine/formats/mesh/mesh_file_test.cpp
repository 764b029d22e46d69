// Which reader a file gets.
#include "engine/formats/mesh/mesh_file.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdio>
#include <fstream>
#include <string>

#include "tests/engine/formats/mesh/mesh_measures.h"

namespace {

using testing::HasSubstr;
using zol::engine::MeshData;
using zol::engine::read_mesh;
using zol::engine::ReadError;
using namespace zol::testing_support;

/// A file of a given ending.
class NamedFile {
public:
    NamedFile(const std::string& ending, const std::string& content)
        : path_(TemporaryFile("").Path() + ending) {
        std::ofstream(path_, std::ios::binary) << content;
    }
    NamedFile(const NamedFile&) = delete;
    NamedFile& operator=(const NamedFile&) = delete;
    ~NamedFile() { ::unlink(path_.c_str()); }
    const std::string& Path() const { return path_; }

private:
    std::string path_;
};

std::string format_or_reason(const std::string& name) {
    try {
        return attributes_of(read_mesh(name), "format");
    } catch (const ReadError& error) {
        return error.what();
    }
}

TEST(MeshFile, IsToldByItsContentAndThenByItsEnding) {
    const std::string tri = sample("");
    const std::string cube_off = content_of(tri + "Cube.off");
    const std::string mark = "\xEF\xBB\xBF";
    const struct {
        const char* name;
        const char* ending;
        std::string content;
        const char* expected;
    } rows[] = {
        {"OFF", ".obj", cube_off, "OFF"},
        {"OFF behind comments", ".dat", "# one\n\n# two\n" + cube_off, "OFF"},
        {"OFF without its word", ".OFF", "3 1 0\n0 0 0\n1 0 0\n0 1 0\n3 0 1 2\n", "OFF"},
        {"PLY", ".off", content_of(tri + "cube.ply"), "PLY text"},
        {"binary STL", ".ply", content_of(tri + "unit_cube.STL"), "STL binary"},
        {"text STL", "", content_of(tri + "triangle_with_two_solids.stl"), "STL text"},
        {"GOCAD", ".stl", content_of(tri + "2triangles.ts"), "GOCAD TSurf"},
        {"GOCAD behind a comment", ".dat", "# a\n" + content_of(tri + "2triangles.ts"),
         "GOCAD TSurf"},
        {"OMF", ".ts", content_of(std::string(ZOL_SAMPLES) + "/omf/test_file.omf"), "OMF 1"},
        {"OBJ", "", content_of(tri + "negative_indices.obj"), "OBJ"},
        {"OBJ with a mark", ".txt", mark + "# points\n\nv 0 0 0\n", "OBJ"},
        {"OBJ that begins with anything", ".Obj", "shape x\nv 0 0 0\n", "OBJ"},
        {"STL cut short", ".stl", content_of(tri + "unit_cube.STL").substr(0, 600),
         "it states 12 facets"},
        {"zip", ".omf", "PK\x03\x04", "it is a zip archive; of OMF files only"},
        {"gzip", ".obj", "\x1f\x8b\x08", "it is compressed"},
        {"UTF-16", ".obj", "\xFF\xFEv", "the text is UTF-16"},
        {"UTF-32", ".obj", std::string("\xFF\xFE\0\0v\0\0\0", 8), "the text is UTF-32"},
        {"UTF-32, high byte first", ".obj", std::string("\0\0\xFE\xFF\0\0\0v", 8),
         "the text is UTF-32"},
        {"a sidecar", ".json", "{\"mesh:look\": {}}", "it is JSON; a sidecar is read with"},
        {"XML", ".obj", "<?xml version=\"1.0\"?>", "it is XML"},
        {"another text", ".txt", "a table of points\n1 2 3\n",
         "neither its content nor its ending"},
        {"nothing", ".obj", "", "the file is empty"},
        {"no points", ".stl", "solid a\nendsolid a\n", "it has no points"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        const NamedFile file(row.ending, row.content);
        EXPECT_THAT(format_or_reason(file.Path()), testing::StartsWith(row.expected));
    }
}

TEST(MeshFile, MayBeNamedWithAnElement) {
    const std::string omf = std::string(ZOL_SAMPLES) + "/omf/test_file.omf";
    const std::string cube = content_of(sample("Cube.off"));
    const NamedFile with_mark("#1.off", cube);
    EXPECT_EQ(format_or_reason(omf + "#gridsurf"), "OMF 1 grid surface");
    EXPECT_EQ(format_or_reason(with_mark.Path()), "OFF");
    EXPECT_THAT(format_or_reason(omf + "#vol"), HasSubstr("no surface \"vol\"; its elements are"));
    EXPECT_THAT(format_or_reason(with_mark.Path() + "#2"), HasSubstr("have no elements"));
    EXPECT_THAT(format_or_reason("https://example.org/a.obj"),
                HasSubstr("the address of something"));
    EXPECT_NE(format_or_reason("/no/such/file.obj"), "OBJ");
}

}  // namespace
