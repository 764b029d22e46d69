// Tables and their sidecars as block models: layout, catalogue, or the reason why not.
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>
#include <vector>

#include "engine/block/source.h"
#include "engine/formats/number_text.h"
#include "engine/formats/read_error.h"
#include "tests/engine/temporary_file.h"

namespace {

using zol::engine::number_text;
using zol::engine::ReadError;
using zol::engine::block::open_source;
using zol::engine::block::SchemaFacts;
using zol::engine::block::Source;
using zol::engine::block::storage_name;
using zol::engine::block::Variable;
using zol::geometry::Coord3D;
using zol::geometry::Extent;
using zol::testing_support::TemporaryFile;

std::string text_of(const Extent& e) {
    return number_text(e.x0) + " " + number_text(e.y0) + " " + number_text(e.z0) + " to " +
           number_text(e.x1) + " " + number_text(e.y1) + " " + number_text(e.z1);
}

std::string text_of(const Coord3D& c) {
    return number_text(c.x) + " " + number_text(c.y) + " " + number_text(c.z);
}

// A model in a few words: extent, origin, schemas, first and last block, variables.
std::string summary(const Source& source) {
    std::string text = std::to_string(source.geometry->NBlocks()) + " in " +
                       text_of(source.extent) + " at " + text_of(source.placement.Origin());
    for (const SchemaFacts& schema : source.schemas) {
        text += std::string(schema.original ? "; " : "; derived ") +
                std::to_string(schema.dimensions.x) + "x" + std::to_string(schema.dimensions.y) +
                "x" + std::to_string(schema.dimensions.z);
    }
    if (source.geometry->NBlocks() > 0) {
        text += "; first " + text_of(source.geometry->BlockExtent(0));
    }
    text += ";";
    for (const Variable& variable : source.variables) {
        text += " " + variable.name + ":" + std::string(storage_name(variable.storage));
    }
    return text;
}

std::string opened(const std::string& table, const std::string& sidecar) {
    TemporaryFile file(table);
    if (!sidecar.empty()) {
        file.WriteSidecar(sidecar);
    }
    try {
        Source source = open_source(file.Path());
        // Every block is found at its centroid.
        for (std::int64_t block = 0; block < source.geometry->NBlocks(); ++block) {
            const Extent box = source.geometry->BlockExtent(block);
            EXPECT_EQ(source.geometry->Find(
                          {(box.x0 + box.x1) / 2, (box.y0 + box.y1) / 2, (box.z0 + box.z1) / 2}),
                      block);
        }
        return summary(source);
    } catch (const ReadError& error) {
        std::string reason = error.what();
        const std::size_t name = reason.find("zol_test_");
        return name == reason.npos ? reason : reason.replace(name, 15, "TABLE");
    }
}

struct Case {
    const char* name;
    std::string table;
    std::string sidecar;
    const char* expected;
};

void check(const std::vector<Case>& cases) {
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        EXPECT_EQ(opened(c.table, c.sidecar), c.expected);
    }
}

TEST(TextSource, RecognisesTheLayout) {
    check({
        {"regular by sizes",
         "xc,yc,zc,dx,dy,dz,au\n500005,7000005,2.5,10,10,5,1.5\n500025,7000005,2.5,10,10,5,2\n", "",
         "2 in 0 0 0 to 30 10 5 at 500000 7000000 0; 3x1x1; first 0 0 0 to 10 10 5; au:double"},
        {"regular by spacing", "x;y;z;au\n0,5;0,5;10;1\n1,5;1,5;20;2\n2,5;1,5;20;3\n", "",
         "3 in 0 0 0 to 3 2 20 at 0 0 5; 3x2x2; first 0 0 0 to 1 1 10; au:integer"},
        {"indices", "i,j,k,au\n0,0,0,1\n1,2,3,2\n", "",
         "2 in 0 0 0 to 2 3 4 at 0 0 0; 2x3x4; first 0 0 0 to 1 1 1; au:integer"},
        {"whole coordinates from 1 without z", "X,Y,V\n1,1,0.5\n2,3,1\n2,2,1\n", "",
         "3 in 0 0 0 to 2 3 1 at 0 0 0; 2x3x1; first 0 0 0 to 1 1 1; V:double"},
        {"sub-blocks of halves",
         "x,y,z,dx,dy,dz,g\n5,5,5,10,10,10,a\n12.5,5,5,5,10,10,b\n17.5,5,5,5,10,10,c\n", "",
         "3 in 0 0 0 to 20 10 10 at 0 0 0; 2x1x1; derived 4x1x1; first 0 0 0 to 10 10 10; "
         "g:string"},
        {"free sub-blocks",
         "x,y,z,dx,dy,dz\n5,5,5,10,10,10\n10.05,5,5,0.1,10,10\n15.06,5,5,9.87,10,10\n", "",
         "3 in 0 0 0 to 19.995 10 10 at 0 0 0; 2x1x1; derived 2x1x1; first 0 0 0 to 10 10 10;"},
        {"bare boxes", "x,y,z,dx,dy,dz\n5,5,5,10,10,10\n14,5,5,12,10,10\n", "",
         "2 in 0 0 0 to 20 10 10 at 0 0 0; 1x1x1; first 0 0 0 to 10 10 10;"},
        {"corners", "xmin,ymin,zmin,xmax,ymax,zmax,v\n0,0,0,4,4,4,1\n4,0,0,8,4,4,2\n", "",
         "2 in 0 0 0 to 8 4 4 at 0 0 0; 2x1x1; first 0 0 0 to 4 4 4; v:integer"},
        {"origin and counts in each row",
         "xc,yc,zc,xinc,yinc,zinc,xmorig,ymorig,zmorig,nx,ny,nz,v\n15,5,5,10,10,10,-10,0,0,5,2,1,"
         "7\n",
         "", "1 in 0 0 0 to 50 20 10 at -10 0 0; 5x2x1; first 20 0 0 to 30 10 10; v:integer"},
        {"index columns beside centroids stay", "ijk,x,y,z,v\n7,0.5,0.5,0.5,1\n8,1.5,1.5,1.5,2\n",
         "", "2 in 0 0 0 to 2 2 2 at 0 0 0; 2x2x2; first 0 0 0 to 1 1 1; ijk:integer v:integer"},
        {"repeated and predefined names",
         "x,y,z,v,v,volume\n0.5,0.5,0.5,1,2,3\n1.5,1.5,1.5,1,2,3\n", "",
         "2 in 0 0 0 to 2 2 2 at 0 0 0; 2x2x2; first 0 0 0 to 1 1 1; v:integer v_2:integer "
         "volume_2:integer"},
        {"guessed types",
         "x,y,z,whole,big,real,word,none,mixed\n0.5,0.5,0.5,1,3000000000,1.5,NA,,1\n1.5,1.5,1.5,"
         "NaN,1,2,a,null,b\n",
         "",
         "2 in 0 0 0 to 2 2 2 at 0 0 0; 2x2x2; first 0 0 0 to 1 1 1; whole:integer big:int64 "
         "real:double "
         "word:string none:double mixed:string"},
        {"rounded sizes at large coordinates",
         "x,y,z,dx,dy,dz\n500006.25,7000005,5,12.4999,10,10\n500018.75,7000005,5,12.4999,10,10\n"
         "501256.25,7000005,5,12.4999,10,10\n",
         "", "3 in 0 0 0 to 1262.5 10 10 at 500000 7000000 0; 101x1x1; first 0 0 0 to 12.5 10 10;"},
        {"a sliver above a parent",
         "x,y,z,dx,dy,dz\n5,5,500,10,10,1000\n5,5,1000.03125,10,10,0.0625\n", "",
         "2 in 0 0 0 to 10 10 1000.0625 at 0 0 0; 1x1x1; derived 1x1x1; first 0 0 0 to 10 10 "
         "1000;"},
        {"counted cells with sizes", "i,j,k,dx,dy,dz\n0,0,0,10,20,5\n1,2,3,10,20,5\n", "",
         "2 in 0 0 0 to 20 60 20 at 0 0 0; 2x3x4; first 0 0 0 to 10 20 5;"},
        {"one layer of a stated height", "x,y,dx,dy,dz\n5,5,10,10,5\n15,5,10,10,5\n", "",
         "2 in 0 0 0 to 20 10 5 at 0 0 0; 2x1x1; first 0 0 0 to 10 10 5;"},
        {"lower corners and sizes", "xmin,ymin,zmin,dx,dy,dz\n0,0,0,4,4,4\n4,0,0,4,4,4\n", "",
         "2 in 0 0 0 to 8 4 4 at 0 0 0; 2x1x1; first 0 0 0 to 4 4 4;"},
        {"decimal commas that come late", "x;y;z;a\n1;1;1;0\n2;2;2;0,75\n3;3;3;0\n", "",
         "3 in 0 0 0 to 3 3 3 at 0 0 0; 3x3x3; first 0 0 0 to 1 1 1; a:double"},
        {"geo-eas lattice", "t\n1 2 2 1 0.5 1 5 1 2 10 1\nv\n1\n2\n3\n4\n", "",
         "4 in 0 0 0 to 2 4 10 at 0 0 0; 2x2x1; first 0 0 0 to 1 2 10; v:integer"},
    });
}

TEST(TextSource, FollowsTheSidecar) {
    const std::string numbers = "1\n2\n3\n4\n5\n6\n";
    check({
        {"values in a stated order", numbers,
         R"({"dialect":{"header":false},"schema":{"fields":[{"name":"v","type":"integer","block:storage":"byte"}]},
             "block:model":{"count":[3,2,1],"parentSize":[10,10,5],"origin":[100,200,0],"order":"y-xz"}})",
         "6 in 0 0 0 to 30 20 5 at 100 200 0; 3x2x1; first 20 0 0 to 30 10 5; v:byte"},
        {"rotated", "x,y,z,v\n-5,5,5,1\n-5,15,5,2\n",
         R"({"block:model":{"origin":[0,0,0],"rotation":[90,0,0],"parentSize":[10,10,10]}})",
         "2 in 0 0 0 to 20 10 10 at 0 0 0; 2x1x1; first 0 0 0 to 10 10 10; v:integer"},
        {"rotated and rounded to centimetres", "x,y,z\n1.83,6.83,5\n10.49,11.83,5\n",
         R"({"block:model":{"origin":[0,0,0],"rotation":[30,0,0],"parentSize":[10,10,10],"count":[2,1,1]}})",
         "2 in 0 0 0 to 20 10 10 at 0 0 0; 2x1x1; first 0 0 0 to 10 10 10;"},
        {"local coordinates and a turn", "x,y,z\n5,5,5\n15,5,5\n",
         R"({"block:model":{"origin":[7,8,9],"rotation":[30,0,0],"coordinates":"local","parentSize":[10,10,10],"count":[3,1,1]}})",
         "2 in 0 0 0 to 30 10 10 at 7 8 9; 3x1x1; first 0 0 0 to 10 10 10;"},
        {"cell numbers from 1", "ijk,v\n1,5\n6,7\n",
         R"({"schema":{"fields":[{"name":"ijk","block:role":"ijk"}]},
             "block:model":{"count":[3,2,1],"parentSize":[2,2,2],"indexBase":1}})",
         "2 in 0 0 0 to 6 4 2 at 0 0 0; 3x2x1; first 0 0 0 to 2 2 2; v:integer"},
        {"no rows but a stated model", "x,y,z,v\n",
         R"({"block:model":{"extent":[0,0,0,20,10,10],"parentSize":[10,10,10],"origin":[1,2,3]}})",
         "0 in 0 0 0 to 20 10 10 at 1 2 3; 2x1x1; v:double"},
        {"stated sub-blocks and schemas", "x,y,z,dx,dy,dz\n5,5,5,10,10,10\n12.5,5,5,5,10,10\n",
         R"({"block:model":{"parentSize":[10,10,10],"minimumSize":[5,5,5],"extent":[0,0,0,20,20,20],"layered":true}})",
         "2 in 0 0 0 to 20 20 20 at 0 0 0; 2x2x2; 4x2x2; first 0 0 0 to 10 10 10;"},
        {"renamed and described", "a,b,c,q\n0.5,0.5,0.5,TRUE\n1.5,1.5,1.5,no\n",
         R"({"schema":{"fields":[{"name":"east","block:column":"a","block:role":"x"},{"name":"b","block:role":"y"},
             {"name":"c","block:role":"z"},{"name":"in","block:column":"q","type":"boolean"}]}})",
         "2 in 0 0 0 to 2 2 2 at 0 0 0; 2x2x2; first 0 0 0 to 1 1 1; in:bit"},
        {"header of two rows", "x,y,z,v\nm,m,m,g/t\n0.5,0.5,0.5,1\n1.5,1.5,1.5,2\n",
         R"({"dialect":{"headerRows":[1,2]}})",
         "2 in 0 0 0 to 2 2 2 at 0 0 0; 2x2x2; first 0 0 0 to 1 1 1; v:integer"},
        {"groups and dressed numbers", "x;y;z;v;w\n0.5;0.5;0.5;1,234.5;$7 %\n1.5;1.5;1.5;2;8\n",
         R"({"schema":{"fields":[{"name":"v","type":"number","groupChar":","},{"name":"w","type":"number","bareNumber":false}]}})",
         "2 in 0 0 0 to 2 2 2 at 0 0 0; 2x2x2; first 0 0 0 to 1 1 1; v:double w:double"},
    });
}

TEST(TextSource, RefusesWithAReason) {
    const std::string good = "x,y,z,dx,dy,dz,v\n5,5,5,10,10,10,1\n";
    check({
        {"header only", "x,y,z,v\n", "",
         "the table has no rows, and no sidecar states the model's extent"},
        {"no coordinates", "a,b\n1,2\n", "",
         "no column gives the place of a block: x, y, z (or xc, easting, centroid_x and so on) are "
         "looked for in "
         "the header; a sidecar can name them, or state block:model.count for rows in cell order"},
        {"no y", "x,z,v\n1,2,3\n", "", "no column gives the place of a block along y"},
        {"a text among coordinates", good + "5,north,5,10,10,10,1\n", "",
         "line 3: column 'y': 'north' is not a number"},
        {"a missing coordinate", good + "5,,5,10,10,10,1\n", "",
         "line 3: column 'y': '' is no coordinate"},
        {"an infinite coordinate", good + "5,inf,5,10,10,10,1\n", "",
         "line 3: column 'y': 'inf' is no coordinate"},
        {"a size of 0", good + "15,5,5,0,10,10,1\n", "",
         "line 3: column 'dx': '0' is not a size above 0"},
        {"a negative size", good + "15,5,5,10,-1,10,1\n", "",
         "line 3: column 'dy': '-1' is not a size above 0"},
        {"a size beyond doubles", good + "1e308,5,5,1.7e308,10,10,1\n", "",
         "line 3: column 'dx': '1.7e308' is no size of a block"},
        {"a ragged row", good + "5,5\n", "", "line 3: 2 cells in the row, 7 columns in the table"},
        {"one level", "x,y,z\n1.5,1.5,7\n2.5,2.5,7\n", "",
         "all blocks have the same z, which leaves their size open; add a column dz, or a sidecar "
         "with "
         "block:model.parentSize"},
        {"a turned lattice", "x,y,z\n0.1,0.2,0.5\n0.9,0.7,1.5\n1.6,1.3,2.5\n", "",
         "the centroids along x have no common spacing; add size columns, or a sidecar with "
         "block:model.parentSize "
         "or the rotation"},
        {"counts that change", "xc,yc,zc,dx,dy,dz,nx,ny,nz\n1,1,1,1,1,1,5,5,5\n2,1,1,1,1,1,6,5,5\n",
         "", "line 3: column 'nx': '6' is not the same as in the rows before"},
        {"a number out of its type", good + "15,5,5,10,10,10,300\n",
         R"({"schema":{"fields":[{"name":"v","type":"integer","block:storage":"byte"}]}})",
         "line 3: column 'v': '300' is not a whole number from -128 to 255"},
        {"fewer rows than cells", "1\n2\n",
         R"({"dialect":{"header":false},"block:model":{"count":[3,1,1]}})",
         "the table has 2 rows, and its lattice 3 cells"},
        {"blocks outside of the stated model", good,
         R"({"block:model":{"origin":[100,0,0],"parentSize":[10,10,10]}})",
         "blocks span -100 to -90 along x of the model, which is stated to span 0 to 10"},
        {"units below the header", "x,y,z\nm,m,m\n5,5,5\n", "",
         "line 2: column 'x': 'm' is not a number; if the line holds units, a sidecar can say so: "
         "\"headerRows\": [1, 2]"},
        {"a block thinner than doubles", good + "1e17,5,5,1,10,10,1\n", "",
         "line 3: column 'dx': '1' is too small a size for a block so far out"},
        {"a sidecar that is no JSON", good, "{",
         "in the sidecar TABLE.json: not JSON at byte 1: Missing a name for object member."},
        {"a wrong type in the sidecar", good, R"({"schema":{"fields":[{"name":7}]}})",
         "in the sidecar TABLE.json: $.schema.fields[0].name is a number, a text is expected"},
        {"a path out of the folder", good, R"({"path":"../other.csv"})",
         "in the sidecar TABLE.json: $.path is '../other.csv', which leaves the folder of the "
         "sidecar"},
        {"a field without column", good, R"({"schema":{"fields":[{"name":"cu"}]}})",
         "the sidecar names a field 'cu' that the table has no column for"},
        {"a left-handed rotation", good,
         R"({"block:model":{"rotationMatrix":[1,0,0,0,1,0,0,0,-1]}})",
         "in the sidecar TABLE.json: $[\"block:model\"].rotationMatrix the axes are left-handed"},
        {"an extent of broken parents", good,
         R"({"block:model":{"extent":[0,0,0,15,10,10],"parentSize":[10,10,10]}})",
         "block:model.extent is not a whole number of block:model.parentSize along x"},
    });
}

TEST(TextSource, SettlesDefaultsByTheKindOfTheField) {
    struct DefaultCase {
        const char* field;
        double number;
        const char* text;
    };
    const double none = std::numeric_limits<double>::quiet_NaN();
    const DefaultCase cases[] = {
        {R"("type":"string","block:default":5)", none, "5"},
        {R"("type":"number","block:default":"-99")", -99, "-99"},
        {R"("type":"integer","block:default":7)", 7, "7"},
        {R"("type":"boolean","block:default":true)", 1, "1"},
        {R"("type":"integer","block:translations":["A","B"],"block:default":1)", 1, "B"},
        {R"("type":"integer","block:translations":["A","B"],"block:default":"A")", 0, "A"},
        {R"("type":"integer","block:translations":["A","B"],"block:default":77)", 77, "77"},
        {R"("type":"number")", none, ""},
    };
    const std::string table = "x,y,z,v\n0.5,0.5,0.5,\n1.5,1.5,1.5,1\n";
    for (const DefaultCase& c : cases) {
        SCOPED_TRACE(c.field);
        TemporaryFile file(table);
        file.WriteSidecar(std::string(R"({"schema":{"fields":[{"name":"v",)") + c.field + "}]}}");
        const Source source = open_source(file.Path());
        const Variable& v = source.variables.at(0);
        EXPECT_TRUE(v.default_number == c.number ||
                    (std::isnan(v.default_number) && std::isnan(c.number)));
        EXPECT_EQ(v.default_text, c.text);
    }
    check(
        {{"a default that is no number", table,
          R"({"schema":{"fields":[{"name":"v","type":"number","block:default":"none"}]}})",
          "the sidecar's block:default of the field 'v' is 'none', which is no number"},
         {"a default that is no name", table,
          R"({"schema":{"fields":[{"name":"v","type":"integer","block:translations":["A"],"block:default":"Z"}]}})",
          "the sidecar's block:default of the field 'v' is 'Z', which is none of its "
          "translations"}});
}

TEST(TextSource, AnswersValues) {
    TemporaryFile file(
        "x,y,z,grade,rock,kind,id\n"
        "0.5,0.5,0.5,0.1,\"a, \"\"b\"\"\",OX,9007199254740993\n"
        "1.5,0.5,0.5,-99.0,,FR,1\n"
        "2.5,1.5,1.5,2.5,c,??,-1\n");
    file.WriteSidecar(R"({"schema":{"missingValues":["","-99"],"fields":[
        {"name":"grade","type":"number","block:storage":"float","block:default":-1},
        {"name":"kind","type":"string","block:translations":{"20":"FR","10":"OX"},"block:default":"FR"},
        {"name":"rock","type":"string","block:default":"none"}]}})");
    const Source source = open_source(file.Path());
    ASSERT_EQ(source.variables.size(), 4U);
    const Variable& grade = source.variables[0];
    EXPECT_EQ(grade.column->Number(0), static_cast<double>(0.1F));
    EXPECT_EQ(grade.column->Text(0), "0.1");
    EXPECT_TRUE(std::isnan(grade.column->Number(1)));
    EXPECT_EQ(grade.default_text, "-1");
    EXPECT_EQ(source.variables[1].column->Text(0), "a, \"b\"");
    const Variable& kind = source.variables[2];
    EXPECT_EQ(kind.column->Number(0), 10.0);
    EXPECT_EQ(kind.column->Number(1), 20.0);
    EXPECT_TRUE(std::isnan(kind.column->Number(2)));
    EXPECT_EQ(kind.default_number, 20.0);
    EXPECT_EQ(kind.translations.front().name, "OX");
    EXPECT_EQ(source.variables[3].column->Text(0), "9007199254740993");
}

}  // namespace
