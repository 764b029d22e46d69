// The catalogue of variables: lists, indices and type codes.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/api/pending_error.h"
#include "tests/block/fixture.h"

namespace zol::testing {
namespace {

class CatalogueTest : public BlockModelTest {};

struct VariableList {
    int selector;
    int (*count)(BlockModelHandle*);
    int (*name)(BlockModelHandle*, const int*, char*);
    const char* name_function;
};

const VariableList kLists[] = {
    {1, ZOL_BlockModel_NVariables, ZOL_BlockModel_GetVariableName,
     "ZOL_BlockModel_GetVariableName"},
    {2, ZOL_BlockModel_NPredefinedVariables, ZOL_BlockModel_GetPredefinedVariableName,
     "ZOL_BlockModel_GetPredefinedVariableName"},
    {4, ZOL_BlockModel_NClassificationVariables, ZOL_BlockModel_GetClassificationVariableName,
     "ZOL_BlockModel_GetClassificationVariableName"},
    {9, ZOL_BlockModel_NNumericVariables, ZOL_BlockModel_GetNumericVariableName,
     "ZOL_BlockModel_GetNumericVariableName"},
    {17, ZOL_BlockModel_NStringVariables, ZOL_BlockModel_GetStringVariableName,
     "ZOL_BlockModel_GetStringVariableName"},
};

TEST_F(CatalogueTest, EachListHasItsOwnSelectorAndIsAskedForOnEveryCall) {
    for (const VariableList& list : kLists) {
        SCOPED_TRACE(list.selector);
        doubles::script.fields = {{list.selector, {"first", "second"}}};
        doubles::journal.clear();
        EXPECT_EQ(list.count(handle_), 2);
        const int index = 1;
        char name[255];
        EXPECT_EQ(list.name(handle_, &index, name), 0);
        EXPECT_STREQ(name, "second");
        const std::string asked = "Model::GetFieldVector " + std::to_string(list.selector);
        EXPECT_EQ(doubles::journal, (std::vector<std::string>{asked, asked}));
    }
}

TEST_F(CatalogueTest, AnIndexOutsideTheListFailsAndLeavesTheBuffer) {
    for (const VariableList& list : kLists) {
        SCOPED_TRACE(list.name_function);
        for (const std::size_t size : {0U, 2U}) {
            doubles::script.fields = {{list.selector, std::vector<std::string>(size, "name")}};
            for (const int index : {-1, static_cast<int>(size), 1 << 30}) {
                char name[255] = "untouched";
                EXPECT_EQ(list.name(handle_, &index, name), 1);
                EXPECT_EQ(pending_error(), std::string(list.name_function) + " Invalid index.");
                EXPECT_STREQ(name, "untouched");
            }
        }
    }
}

TEST_F(CatalogueTest, TranslationsAreThoseOfTheNamedVariable) {
    doubles::script.translations = {"waste", "ore"};
    EXPECT_EQ(ZOL_BlockModel_NTranslations(handle_, "rock"), 2);
    char name[255] = "untouched";
    int index = 1;
    EXPECT_EQ(ZOL_BlockModel_GetTranslationName(handle_, "rock", &index, name), 0);
    EXPECT_STREQ(name, "ore");
    EXPECT_EQ(doubles::journal, (std::vector<std::string>(2, "Model::GetFieldTranslations rock")));

    index = 2;
    EXPECT_EQ(ZOL_BlockModel_GetTranslationName(handle_, "rock", &index, name), 1);
    EXPECT_EQ(pending_error(), "ZOL_BlockModel_GetTranslationName Invalid index.");
    EXPECT_STREQ(name, "ore");

    doubles::script.translations.clear();
    EXPECT_EQ(ZOL_BlockModel_NTranslations(handle_, "grade"), 0);
    EXPECT_EQ(ZOL_API_HasError(), 0);
}

TEST_F(CatalogueTest, TypeCodes) {
    struct Row {
        const char* type;
        int code;
        bool predefined = false;
        bool string = false;
    };
    const Row rows[] = {
        {"bit", 1},
        {"byte", 2},
        {"short", 3},
        {"sfloat", 4},
        {"integer", 5},
        {"int64", 6},
        {"float", 7},
        {"double", 8},
        {"integer", 8, true},
        {"string", 8, true, true},
        {"bit", 9, false, true},
        {"Double", 0},
        {"double ", 0},
        {"", 0},
        {"string", 0},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.type);
        doubles::script.is_predefined = row.predefined;
        doubles::script.is_string = row.string;
        doubles::script.type = row.type;
        int code = -1;
        EXPECT_EQ(ZOL_BlockModel_GetVariableType(handle_, "grade", &code), 0);
        EXPECT_EQ(code, row.code);
        EXPECT_EQ(ZOL_API_HasError(), 0);
    }
}

TEST_F(CatalogueTest, AnswersAboutAVariableArePassedOn) {
    doubles::script.default_number = -99.5;
    double number = 0;
    EXPECT_EQ(ZOL_BlockModel_GetDefaultNumber(handle_, "grade", &number), 0);
    EXPECT_EQ(number, -99.5);
    // One is true and the other false, so that a swap shows.
    for (const bool is_number : {true, false}) {
        doubles::script.is_number = is_number;
        doubles::script.is_string = !is_number;
        EXPECT_EQ(ZOL_BlockModel_IsNumber(handle_, "grade"), is_number ? 1 : 0);
        EXPECT_EQ(ZOL_BlockModel_IsString(handle_, "grade"), is_number ? 0 : 1);
    }
}

TEST_F(CatalogueTest, EveryQuestionIsAboutTheNamedVariable) {
    char text[255];
    int code = 0;
    double number = 0;
    ZOL_BlockModel_GetVariableDescription(handle_, "rock", text);
    ZOL_BlockModel_GetVariableType(handle_, "density", &code);
    ZOL_BlockModel_GetDefaultNumber(handle_, "gold", &number);
    ZOL_BlockModel_GetDefaultString(handle_, "zone", text);
    ZOL_BlockModel_IsNumber(handle_, "silver");
    ZOL_BlockModel_IsString(handle_, "hole");
    EXPECT_EQ(doubles::journal,
              (std::vector<std::string>{
                  "Model::GetFieldDescription rock", "Model::IsPredefined density",
                  "Model::IsString density", "Model::GetFieldType density",
                  "Model::GetFieldDefault gold", "Model::GetFieldDefaultString zone",
                  "Model::IsNumber silver", "Model::IsString hole"}));
}

}  // namespace
}  // namespace zol::testing
