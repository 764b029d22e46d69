// What of a message is translated, and what of it a user sees.
#include "support/message_text.h"

#include <gtest/gtest.h>

#include <string>

#include "support/messages.h"
#include "tests/support/plain_locales.h"

namespace zol::support {
namespace {

TEST(MessagePieces, AreTranslatedEachWithoutTheWhiteSpaceAroundThem) {
    const struct {
        const char* name;
        std::string text;
        std::string expected;
    } rows[] = {
        {"one", "a", "<a>"},
        {"empty", "", ""},
        {"white space alone", " \t\n\v\f\r", " \t\n\v\f\r"},
        {"a tab between", "First\tSecond", "<First>\t<Second>"},
        {"a newline between", "First\nSecond\n", "<First>\n<Second>\n"},
        {"white space inside", "a b\vc\rd", "<a b\vc\rd>"},
        {"white space around", "  a  \t b\r\n", "  <a>  \t <b>\r\n"},
        {"null bytes are text", std::string("\0 \0 ", 4), std::string("<\0 \0> ", 6)},
        {"bytes above 127 are text", "\xA0x\x85", "<\xA0x\x85>"},
    };
    in_every_locale([&] {
        for (const auto& row : rows) {
            SCOPED_TRACE(row.name);
            EXPECT_EQ(translate_pieces(row.text,
                                       [](const std::string& piece) { return '<' + piece + '>'; }),
                      row.expected);
        }
    });
}

TEST(MessageCleaning, CutsTheContextAndDropsEscapes) {
    const struct {
        const char* text;
        const char* expected;
    } rows[] = {
        {"Open##menu", "Open"},
        {"##", ""},
        {"a#b", "a#b"},
        {"a#", "a#"},
        {"50\\#", "50#"},
        {"a\\\\b", "a\\b"},
        {"a\\b\\", "a\\b\\"},
        {"\\##x", "##x"},
        {"\\###x", "#"},
        {"\\\\##x", "\\"},
        {"#\\#", "##"},
        {"#\\\\#", "#\\#"},
        {"", ""},
        {"plain  ", "plain  "},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.text);
        EXPECT_EQ(msg_Clean(row.text), row.expected);
    }
}

}  // namespace
}  // namespace zol::support
