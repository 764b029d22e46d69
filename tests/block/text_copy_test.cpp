// How texts arrive in a caller's buffer: the bytes written, the cut, the terminator.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/block/fixture.h"

namespace zol::testing {
namespace {

constexpr std::size_t kBufferBytes = 255;

/// One function that hands out a text, and the text that the model is scripted with.
struct TextFunction {
    const char* name;
    void (*script_text)(const std::string& text);
    int (*copy)(BlockModelHandle* handle, char* buffer);
    /// False for the one that writes no terminator of its own.
    bool terminates = true;
};

template <int kSelector>
void script_variable(const std::string& text) {
    doubles::script.fields = {{kSelector, {text}}};
}

template <auto Function>
int copy_first(BlockModelHandle* handle, char* buffer) {
    const int index = 0;
    return Function(handle, &index, buffer);
}

template <auto Function>
int copy_named(BlockModelHandle* handle, char* buffer) {
    return Function(handle, "grade", buffer);
}

const TextFunction kTextFunctions[] = {
    {"GetVariableName", script_variable<1>, copy_first<ZOL_BlockModel_GetVariableName>},
    {"GetPredefinedVariableName", script_variable<2>,
     copy_first<ZOL_BlockModel_GetPredefinedVariableName>},
    {"GetClassificationVariableName", script_variable<4>,
     copy_first<ZOL_BlockModel_GetClassificationVariableName>},
    {"GetNumericVariableName", script_variable<9>,
     copy_first<ZOL_BlockModel_GetNumericVariableName>},
    {"GetStringVariableName", script_variable<17>,
     copy_first<ZOL_BlockModel_GetStringVariableName>},
    {"GetTranslationName", [](const std::string& text) { doubles::script.translations = {text}; },
     [](BlockModelHandle* handle, char* buffer) {
         const int index = 0;
         return ZOL_BlockModel_GetTranslationName(handle, "grade", &index, buffer);
     }},
    {"GetVariableDescription", [](const std::string& text) { doubles::script.description = text; },
     copy_named<ZOL_BlockModel_GetVariableDescription>},
    {"GetString", [](const std::string& text) { doubles::script.model.text = text; },
     copy_named<ZOL_BlockModel_GetString>},
    {"GetDefaultString", [](const std::string& text) { doubles::script.default_text = text; },
     copy_named<ZOL_BlockModel_GetDefaultString>, false},
};

class TextCopyTest : public BlockModelTest {};

TEST_F(TextCopyTest, EveryCopyWritesAll255BytesAndNoMore) {
    const std::string embedded_nul("ab\0cd", 5);
    for (const TextFunction& function : kTextFunctions) {
        for (const std::string& text :
             {std::string(), std::string("ore"), std::string(254, 'x'), std::string(255, 'x'),
              std::string(300, 'x'), embedded_nul}) {
            SCOPED_TRACE(std::string(function.name) + ", " + std::to_string(text.size()));
            function.script_text(text);
            std::string buffer(kBufferBytes + 2, '#');
            ASSERT_EQ(function.copy(handle_, buffer.data()), 0);

            const std::size_t limit = function.terminates ? kBufferBytes - 1 : kBufferBytes;
            std::string expected = std::string(text.c_str()).substr(0, limit);
            expected.resize(kBufferBytes, '\0');
            EXPECT_EQ(buffer, expected + "##");
        }
    }
}

}  // namespace
}  // namespace zol::testing
