// Databases: opening and closing, the catalogue of layers, and the colours of all objects.
#include <gtest/gtest.h>

#include <array>
#include <climits>
#include <string>

#include "api/state.h"
#include "tests/design/fixture.h"

namespace zol::testing {
namespace {

using doubles::design_journal;
using doubles::design_script;

class DatabaseTest : public DesignFixture {
protected:
    std::string NameAt(int index) {
        DesignOutputs to;
        const int result =
            ZOL_Database_GetLayerNameByIndex(database_.get(), &index, to.texts[0].data());
        if (result == 0) return to.texts[0].data();
        EXPECT_EQ(to, DesignOutputs());
        return std::to_string(result) + " " + pending_error();
    }

    /// What the last look-up of a layer by index asked the database to get; else its error.
    std::string GotAt(int index) {
        design_journal.clear();
        const Owned<LayerHandle> layer(ZOL_Database_GetLayerByIndex(database_.get(), &index));
        return layer == nullptr ? pending_error() : design_journal.back();
    }
};

TEST_F(DatabaseTest, OpensForReadingAndTakesTheColours) {
    const Owned<DatabaseHandle> other(ZOL_Database_Open("drawings/mine.dxf"));
    EXPECT_NE(other, nullptr);
    EXPECT_EQ(design_journal, (Texts{"Database::Database", "Database::Open drawings/mine.dxf read",
                                     "Database::GetColourTable"}));
}

TEST_F(DatabaseTest, OneThatDoesNotOpenSaysWhyOrIsNamedAsPassed) {
    struct Row {
        const char* name;
        bool has_error;
        Texts lines;
        const char* error;
    };
    design_script.true_of.erase("Database::Open");
    const Row rows[] = {
        {"no reason", false, {"unasked"}, "ZOL_Database_Open Error opening database no/such"},
        {"one line", true, {"line 3: no code"}, "pendingline 3: no code"},
        {"several lines", true, {"no tables", "", "at byte 7"}, "pendingno tables\n\nat byte 7"},
        {"an empty line first", true, {"", "end"}, "pending\nend"},
        {"an error without a line", true, {}, "pending"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        design_script.true_of.erase("Database::HasError");
        if (row.has_error) design_script.true_of.insert("Database::HasError");
        design_script.errors = row.lines;
        make_error_pending();
        EXPECT_EQ(ZOL_Database_Open("no/such"), nullptr);
        EXPECT_EQ(pending_error(), row.error);
        EXPECT_EQ(design_journal.back(), "Database::~Database");
    }
}

TEST_F(DatabaseTest, ASecondRefusalReplacesTheFirstOrFollowsIt) {
    design_script.true_of.erase("Database::Open");
    for (int i = 0; i < 2; ++i) ZOL_Database_Open("mine");
    EXPECT_EQ(pending_error(), "ZOL_Database_Open Error opening database mine");
    design_script.true_of.insert("Database::HasError");
    design_script.errors = {"first", "second"};
    ZOL_Database_Open("mine");
    EXPECT_EQ(pending_error(), "ZOL_Database_Open Error opening database minefirst\nsecond");
}

TEST_F(DatabaseTest, ACloseThatFailsLeavesTheHandleAlive) {
    design_script.true_of.insert("Database::HasError");
    design_script.texts["Database::GetName"] = "mine.dxf";
    for (int i = 0; i < 2; ++i) {
        design_journal.clear();
        EXPECT_EQ(ZOL_Database_Close(database_.get()), 1);
        EXPECT_EQ(pending_error(), "ZOL_Database_Close error closing mine.dxf");
        EXPECT_EQ(design_journal,
                  (Texts{"Database::Close 0", "Database::HasError", "Database::GetName"}));
    }
    design_script.true_of = {};
    EXPECT_EQ(ZOL_Database_IsOpen(database_.get()), 0);
    design_journal.clear();
    EXPECT_EQ(ZOL_Database_Close(database_.release()), 0);
    EXPECT_EQ(pending_error(), "");
    EXPECT_EQ(design_journal,
              (Texts{"Database::Close 0", "Database::HasError", "Database::~Database"}));
}

TEST_F(DatabaseTest, TheCatalogueLeavesHiddenNamesOutAndKeepsListPositions) {
    struct Row {
        const char* name;
        int list_position;  // below 0 for one that is hidden
    };
    const Row rows[] = {{"$A", -1}, {"DIG$B", -1}, {"C", 2},     {"xDIG$", 3},
                        {"", -1},   {"DIG$", -1},  {"DIG", 6},   {"dig$", 7},
                        {" $", 8},  {"A$", 9},     {"DI G$", 10}};
    design_script.layers.clear();
    for (const Row& row : rows) design_script.layers.emplace_back(row.name);
    int listed = 0;
    for (const Row& row : rows) {
        if (row.list_position < 0) continue;
        SCOPED_TRACE(row.name);
        EXPECT_EQ(NameAt(listed), row.name);
        EXPECT_EQ(GotAt(listed), "Database::Get " + std::to_string(row.list_position));
        ++listed;
    }
    EXPECT_EQ(ZOL_Database_NLayers(database_.get()), listed);
    EXPECT_EQ(listed, 7);
}

TEST_F(DatabaseTest, AnIndexOutsideTheCatalogueIsInvalid) {
    struct Row {
        const char* name;
        Texts layers;
        int index;
        Texts asked;  // by ZOL_Database_GetLayerByIndex
    };
    const Row rows[] = {
        {"below 0", {"pit"}, -1, {}},
        {"the least", {"pit"}, INT_MIN, {}},
        {"past the end", {"pit"}, 1, {"Database::NLayers"}},
        {"the greatest", {"pit"}, INT_MAX, {"Database::NLayers"}},
        {"below all layers but not in the catalogue",
         {"$A", "pit"},
         1,
         {"Database::NLayers", "Database::GetLayerList"}},
        {"no layers", {}, 0, {"Database::NLayers"}},
        {"hidden layers only", {"$A"}, 0, {"Database::NLayers", "Database::GetLayerList"}},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        design_script.layers = row.layers;
        EXPECT_EQ(NameAt(row.index), "1 ZOL_Database_GetLayerNameByIndex Invalid index.");
        EXPECT_EQ(GotAt(row.index), "ZOL_Database_GetLayerByIndex Invalid index.");
        EXPECT_EQ(design_journal, row.asked);
    }
    design_script.layers = {};
    EXPECT_EQ(ZOL_Database_NLayers(database_.get()), 0);
}

TEST_F(DatabaseTest, ALayerThatCannotBeHadByIndexIsNamedByOneByte) {
    design_script.true_of.erase("Database::Get");
    design_script.layers = Texts(400, "pit");
    const std::string text = "ZOL_Database_GetLayerByIndex Error retrieving layer ";
    for (const int index : {65, 0, 200, 256 + 66}) {
        SCOPED_TRACE(index);
        EXPECT_EQ(ZOL_Database_GetLayerByIndex(database_.get(), &index), nullptr);
        EXPECT_EQ(api::state.last_error, text + static_cast<char>(index));
        EXPECT_EQ(design_journal.back(), "Layer::~Layer");
    }
    const int first = 0;
    EXPECT_EQ(ZOL_Database_GetLayerByIndex(database_.get(), &first), nullptr);
    EXPECT_EQ(pending_error(), text) << "a NUL ends what callers see";
}

TEST_F(DatabaseTest, ANameIsMadeValidForTheLayerButNotForTheQuestion) {
    design_journal.clear();
    EXPECT_NE(Owned<LayerHandle>(ZOL_Database_GetLayerByName(database_.get(), "$A")), nullptr);
    EXPECT_EQ(design_journal, (Texts{"Layer::Layer", "GetValidLayerName $A",
                                     "Database::Get valid $A", "Layer::~Layer"}));
    for (const bool exists : {true, false}) {
        if (!exists) design_script.true_of.erase("Database::Exists");
        EXPECT_EQ(ZOL_Database_LayerExists(database_.get(), "$A"), exists ? 1 : 0);
        EXPECT_EQ(design_journal.back(), "Database::Exists $A");
    }
    design_script.true_of.erase("Database::Get");
    EXPECT_EQ(ZOL_Database_GetLayerByName(database_.get(), " Pit "), nullptr);
    EXPECT_EQ(pending_error(), "ZOL_Database_GetLayerByName Error retrieving layer  Pit ");
    EXPECT_EQ(design_journal.back(), "Layer::~Layer");
}

using Colour = std::array<int, 3>;

class ColourTest : public DesignFixture {
protected:
    Colour ColourAt(int index) {
        design_script.numbers["Object::GetColour"] = index;
        Colour colour{-1, -1, -1};
        EXPECT_EQ(ZOL_Object_GetColour(object_.get(), &colour[0], &colour[1], &colour[2]), 0);
        int stored = -1;
        EXPECT_EQ(ZOL_Object_GetColourIndex(object_.get(), &stored), 0);
        EXPECT_EQ(stored, index) << "whether or not there is such a colour";
        return colour;
    }
};

TEST_F(ColourTest, WithoutATableTheDefaultPaletteHolds) {
    struct Row {
        int index;
        Colour colour;
    };
    for (const Row& row : {Row{0, {0, 255, 0}}, Row{4, {255, 0, 0}}, Row{11, {255, 102, 153}},
                           Row{31, {255, 255, 255}}, Row{127, {0, 145, 255}}, Row{185, {0, 0, 127}},
                           Row{220, {13, 13, 13}}, Row{255, {248, 248, 248}}, Row{256, {0, 0, 0}},
                           Row{-1, {0, 0, 0}}, Row{INT_MIN, {0, 0, 0}}}) {
        EXPECT_EQ(ColourAt(row.index), row.colour) << row.index;
    }
}

TEST_F(ColourTest, TheDatabaseOpenedLastColoursTheObjectsOfAll) {
    design_script.colours = {{0xFF332211}, {0x00030201}};
    Owned<DatabaseHandle> second(ZOL_Database_Open("second"));
    EXPECT_EQ(ColourAt(0), (Colour{17, 34, 51}));
    EXPECT_EQ(ColourAt(1), (Colour{1, 2, 3}));
    EXPECT_EQ(ColourAt(2), (Colour{0, 0, 0})) << "no such colour";

    design_script.colours = {{0x00060504}};
    Owned<DatabaseHandle> third(ZOL_Database_Open("third"));
    EXPECT_EQ(ColourAt(0), (Colour{4, 5, 6})) << "in place of those before, not behind them";

    design_script.true_of.erase("Database::Open");
    EXPECT_EQ(ZOL_Database_Open("fourth"), nullptr);
    EXPECT_EQ(ColourAt(0), (Colour{4, 5, 6})) << "one that does not open brings none";

    design_script.true_of.insert("Database::HasError");
    EXPECT_EQ(ZOL_Database_Close(third.get()), 1);
    EXPECT_EQ(ColourAt(0), (Colour{4, 5, 6})) << "nor does one that does not close take any";

    design_script.true_of.erase("Database::HasError");
    EXPECT_EQ(ZOL_Database_Close(second.release()), 0);
    EXPECT_EQ(ColourAt(0), (Colour{0, 255, 0})) << "whichever is closed";

    design_script.true_of.insert("Database::Open");
    design_script.colours = {};
    const Owned<DatabaseHandle> plain(ZOL_Database_Open("no colours"));
    EXPECT_EQ(ColourAt(4), (Colour{255, 0, 0}));
}

}  // namespace
}  // namespace zol::testing
