// The look of an OBJ file, from the libraries of materials that it names.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

#include "engine/formats/mesh/obj_file.h"
#include "tests/engine/formats/mesh/mesh_measures.h"

namespace {

using testing::HasSubstr;
using testing::IsEmpty;
using zol::engine::File;
using zol::engine::MeshData;
using zol::engine::read_obj;
using namespace zol::testing_support;

constexpr const char* kTriangle = "v 0 0 0\nv 1 0 0\nv 0 1 0\nv 0 0 1\nusemtl red\nf 1 2 3\n";

class ObjMaterials : public testing::Test {
protected:
    void SetUp() override {
        std::string name = std::filesystem::temp_directory_path() / "zol_test_XXXXXX";
        ASSERT_NE(::mkdtemp(name.data()), nullptr);
        folder_ = name;
        std::filesystem::create_directory(folder_ / "sub");
        ::setenv("ZOL_DIAGNOSTICS", (folder_ / "words").c_str(), 1);
    }
    void TearDown() override {
        ::unsetenv("ZOL_DIAGNOSTICS");
        std::filesystem::remove_all(folder_);
    }

    void Write(const std::string& name, const std::string& content) {
        std::ofstream(folder_ / name, std::ios::binary) << content;
    }
    // The look of an OBJ file, whose folder the words about it don't show.
    std::string LookOf(const std::string& obj) {
        Write("m.obj", obj);
        std::filesystem::remove(folder_ / "words");
        const MeshData mesh = read_obj(File(folder_ / "m.obj"));
        texture_ = mesh.look.texture.value_or("");
        materials_ = attributes_of(mesh, "material");
        return look_of(mesh);
    }
    std::string Words() {
        return std::filesystem::exists(folder_ / "words") ? content_of(folder_ / "words") : "";
    }

    std::filesystem::path folder_;
    std::string texture_;
    std::string materials_;
};

TEST_F(ObjMaterials, SayColourOpacityAndTexture) {
    struct Case {
        const char* name;
        const char* mtl;
        const char* expected;
    };
    const Case cases[] = {
        {"colour", "newmtl red\nKd 1 0.5 0\n", "255 128 0 - -"},
        {"indented, CR LF", "\tnewmtl  red \r\n\t Kd 1 0 0 \r\n", "255 0 0 - -"},
        {"of others none", "newmtl a\nKd 0 0 1\nnewmtl red\nKd 1 0 0\nnewmtl b\nKd 0 1 0\nd 0\n",
         "255 0 0 - -"},
        {"first of two", "newmtl red\nKd 1 0 0\nnewmtl red\nKd 0 1 0\n", "255 0 0 - -"},
        {"one part for three", "newmtl red\nKd .2\n", "51 51 51 - -"},
        {"beyond 1", "newmtl red\nKd 2 -1 0\n", "255 0 0 - -"},
        {"other colour models", "newmtl red\nKd spectral a.rfl 1\nKd xyz 1 1 1\n", "- - -"},
        {"opacity", "newmtl red\nd 0.25\n", "- 0.25 -"},
        {"halo", "newmtl red\nd -halo 0.25\n", "- 0.25 -"},
        {"transparency", "newmtl red\nTr 0.25\n", "- 0.75 -"},
        {"d before Tr", "newmtl red\nd 0.25\nTr 0.25\n", "- 0.25 -"},
        {"d behind Tr", "newmtl red\nTr 0.25\nd 0.25\n", "- 0.25 -"},
        {"texture", "newmtl red\nmap_Kd a b.png\n", "- - a b.png"},
        {"texture with options",
         "newmtl red\nmap_Kd -s 1 1 -o 0.5 0 0 -mm 0 1 -clamp on -blendu off -bm 2 -t 1 a b.png\n",
         "- - a b.png"},
        {"number for a name", "newmtl red\nmap_Kd -s 1 1 1 5\n", "- - 5"},
        {"comments", "newmtl red # c\nKd 1 0 0 # c\nmap_Kd a.jpg # c\n", "255 0 0 - a.jpg"},
        {"joined lines", "newmtl \\\nred\nKd 1 \\\n0 0\n", "255 0 0 - -"},
        {"no last line end", "newmtl red\nKd 1 0 0", "255 0 0 - -"},
    };
    for (const Case& row : cases) {
        SCOPED_TRACE(row.name);
        Write("m.mtl", row.mtl);
        EXPECT_EQ(LookOf(std::string("mtllib m.mtl\n") + kTriangle), row.expected);
        EXPECT_THAT(Words(), IsEmpty());
    }
}

TEST_F(ObjMaterials, AreFoundThroughTheNamesOfLibraries) {
    Write("a.mtl", "newmtl other\nKd 0 0 1\n");
    Write("b.mtl", "newmtl red\nKd 1 0 0\n");
    Write("my lib.mtl", "newmtl red\nKd 1 0 0\n");
    Write("sub/c.mtl", "newmtl red\nKd 1 0 0\nmap_Kd maps\\t.png\n");
    for (const char* names : {"mtllib b.mtl\n", "mtllib my lib.mtl\n", "mtllib a.mtl b.mtl\n",
                              "mtllib a.mtl\nmtllib b.mtl # the second\n", "mtllib sub\\c.mtl\n",
                              "mtllib ./sub/../b.mtl\n"}) {
        EXPECT_EQ(LookOf(std::string(names) + kTriangle).substr(0, 7), "255 0 0") << names;
    }
    LookOf(std::string("mtllib sub/c.mtl\n") + kTriangle);
    EXPECT_EQ(texture_, folder_ / "sub/maps/t.png");
}

TEST_F(ObjMaterials, MayHaveAHashInTheirNames) {
    Write("m.mtl", "newmtl Material #25\nKd 1 0 0\nnewmtl Material #26\nKd 0 0 1\n");
    const std::string head = "mtllib m.mtl\nv 0 0 0\nv 1 0 0\nv 0 1 0\n";
    EXPECT_EQ(LookOf(head + "usemtl Material #26\nf 1 2 3\n"), "0 0 255 - -");
    EXPECT_EQ(materials_, "Material #26");
    Write("m.mtl", "newmtl red\nKd 1 0 0\n");
    EXPECT_EQ(LookOf(head + "usemtl red # c\nf 1 2 3\n"), "255 0 0 - -");
}

TEST_F(ObjMaterials, AreThatOfMostTriangles) {
    Write("m.mtl", "newmtl red\nKd 1 0 0\nnewmtl blue#2\nKd 0 0 1\n");
    const std::string head = std::string("mtllib m.mtl\n") + kTriangle;
    EXPECT_EQ(LookOf(head + "usemtl blue#2\nf 1 2 4\n"), "255 0 0 - -");
    EXPECT_EQ(LookOf(head + "usemtl blue#2\nf 1 2 4\nusemtl none\nusemtl blue#2\nf 1 4 3\n"),
              "0 0 255 - -");
    EXPECT_EQ(materials_, "red|blue#2");
    // A quadrangle is two of them.
    EXPECT_EQ(LookOf(head + "usemtl blue#2\nv 1 1 0\nf 1 2 5 3\n"), "0 0 255 - -");
    EXPECT_EQ(LookOf(head + "usemtl\nf 1 2 4\nf 1 3 4\n"), "255 0 0 - -");
}

TEST_F(ObjMaterials, AreLookedForInEachLibraryOnceAndInSoManyOnly) {
    Write("bad.mtl", std::string("\0", 1));
    Write("red.mtl", "newmtl red\nKd 1 0 0\n");
    std::string same = "mtllib";
    std::string others = "mtllib";
    for (int i = 0; i < 100; ++i) {
        same += i % 2 == 0 ? " bad.mtl" : " ./bad.mtl";
        others += " no" + std::to_string(i);
    }
    const std::string triangle = std::string(" red.mtl\n") + kTriangle;
    EXPECT_EQ(LookOf(same + triangle), "255 0 0 - -");
    const std::string words = Words();
    EXPECT_NE(words.find("NUL byte"), words.npos);
    EXPECT_EQ(words.find("NUL byte"), words.rfind("NUL byte"));
    EXPECT_EQ(LookOf(others + triangle), "- - -");
    EXPECT_THAT(Words(), HasSubstr("more libraries of materials than are looked at"));
    // 80 MiB of them.
    std::string large = "mtllib";
    for (int i = 0; i < 5; ++i) {
        const std::string name = "large" + std::to_string(i) + ".mtl";
        Write(name, "");
        std::filesystem::resize_file(folder_ / name, 1 << 24);
        large += " " + name;
    }
    LookOf(large + triangle);
    EXPECT_THAT(Words(), HasSubstr("large4.mtl: the libraries of materials are too large"));
}

TEST_F(ObjMaterials, ThatCantBeHadLeaveTheMeshWithAWord) {
    Write("binary.mtl", std::string("newmtl red\nKd 1 0 0\n\0\x01", 23));
    Write("wide.mtl", std::string("\xFF\xFEn\0", 4));
    Write("rubbish.mtl", "newmtl red\nKd 1 0 x\n");
    Write("outside.mtl", "newmtl red\nmap_Kd ../../etc/t.png\n");
    Write("absolute.mtl", "newmtl red\nmap_Kd /etc/t.png\n");
    Write("drive.mtl", "newmtl red\nmap_Kd C:\\t.png\n");
    Write("large.mtl", "newmtl red\nKd 1 0 0\n");
    std::filesystem::resize_file(folder_ / "large.mtl", (1 << 24) + 1);
    ASSERT_EQ(::mkfifo((folder_ / "pipe.mtl").c_str(), 0600), 0);
    struct Case {
        const char* library;
        const char* word;
    };
    const Case cases[] = {
        {"missing.mtl", "missing.mtl: can't open the file"},
        {"missing.mtl", "m.obj: the material \"red\" is not found; the default look is used"},
        {"binary.mtl", "binary.mtl: line 3: it holds a NUL byte"},
        {"wide.mtl", "the text is UTF-16"},
        {"rubbish.mtl", "line 2: the Kd of material \"red\" can't be used"},
        {"outside.mtl", "line 2: the map_Kd of material \"red\" can't be used"},
        {"absolute.mtl", "line 2: the map_Kd of material \"red\" can't be used"},
        {"drive.mtl", "line 2: the map_Kd of material \"red\" can't be used"},
        {"large.mtl", "too large for a list of materials"},
        {"pipe.mtl", "it is not a regular file"},
        {"sub", "it is a folder"},
        {"/dev/zero", "\"/dev/zero\" is not looked for, since it is not in the folder"},
        {"../m.mtl", "\"../m.mtl\" is not looked for"},
        // A file that is its own library holds no materials.
        {"m.obj", "the material \"red\" is not found"},
    };
    for (const Case& row : cases) {
        SCOPED_TRACE(row.library);
        EXPECT_EQ(LookOf("mtllib " + std::string(row.library) + "\n" + kTriangle), "- - -");
        EXPECT_THAT(Words(), HasSubstr(row.word));
        EXPECT_EQ(materials_, "red");
    }
    EXPECT_EQ(LookOf(kTriangle), "- - -");
    EXPECT_THAT(Words(), HasSubstr("names no library"));
}

}  // namespace
