// The top of a table: separator, header, decimal comma, or the reason why there is none.
#include "engine/formats/text_head.h"

#include <gtest/gtest.h>

#include <string>

#include "engine/formats/read_error.h"
#include "engine/formats/text_encoding.h"

namespace {

using zol::engine::read_text_head;
using zol::engine::ReadError;
using zol::engine::TextHead;
using zol::engine::TextHints;
using zol::engine::to_utf8;

// "separator names... @offset", or the reason of the refusal.
std::string head_of(const std::string& text, const TextHints& hints = {}) {
    try {
        const TextHead head = read_text_head(text, true, hints);
        std::string seen =
            head.dialect.delimiter == '\t' ? "tab" : std::string(1, head.dialect.delimiter);
        for (const std::string& name : head.names) {
            seen += "|" + name;
        }
        seen += "@" + std::to_string(head.data_begin);
        seen += head.decimal_point == ',' ? " comma" : "";
        seen += head.lattice ? " lattice" : "";
        return seen;
    } catch (const ReadError& error) {
        return error.what();
    }
}

TEST(TextHead, IsToldFromTheFirstRows) {
    struct Case {
        const char* name;
        std::string text;
        const char* expected;
    };
    const Case cases[] = {
        {"comma", "x,y,z\n1,2,3\n", ",|x|y|z@6"},
        {"header alone", "x,y,z\n", ",|x|y|z@6"},
        {"byte-order mark", "\xEF\xBB\xBFx;y\n1,5;2\n", ";|x|y@7 comma"},
        {"semicolons and decimal points", "x;y\n1.5;2\n1,5;2\n", ";|x|y@4"},
        {"tab before comma", "x\ty,z\n1\t2,5\n", "tab|x|y,z@6 comma"},
        {"bars", "x|y\n1|2\n", "||x|y@4"},
        {"blanks", "x  y z\n 1 2 3\n", " |x|y|z@7"},
        {"comments above", "# made by hand\n! and more\n\nx,y\n1,2\n", ",|x|y@31"},
        {"a title above", "My model, of May\nx,y,z\n1,2,3\n1,2,4\n", ",|x|y|z@23"},
        {"separator at the end of rows", "x,y,\n1,2,\n3,4,\n", ",|x|y@5"},
        {"a last cell missing", "x,y\n1,\n3,4\n", ",|x|y@4"},
        {"no header", "1,2\n3,4\n", ",||@0"},
        {"quoted header", "\"x\",\"a\nb\"\n1,2\n", ",|x|a\nb@10"},
        {"rows that disagree", "x,y\n1,2\n1,2,3\n", ",|x|y@4"},
        {"old mac", "x,y\r1,2\r", ",|x|y@4"},
        {"geo-eas", "title\n2\nfirst name\nsecond\n1 2\n", " |first name|second@26"},
        {"geo-eas on a lattice", "t\n1 2 1 1 .5 .5 .5 1 1 1\nv\n7\n8\n", " |v@27 lattice"},
        {"header in a comment", "# made by hand\n# x y v\n1 2 3\n4 5 6\n", " |x|y|v@23"},
        {"a comment that is none", "# made by hand today\n1 2 3\n", " |||@21"},
        {"numbers are no geo-eas", "5,2\n1,1\n7,2\n8,1\n", ",||@0"},
        {"empty", "", "the file is empty"},
        {"blank", "\n \n", "the file holds no rows"},
        {"one column", "x\n1\n2\n",
         "no table of several columns: neither tab, semicolon, comma, bar nor blanks part the "
         "first line"},
        {"utf-16", std::string("\xFF\xFEx\0,\0", 6), "the text is UTF-16; save it as UTF-8"},
        {"binary", std::string("x,y\n1,\0\n", 8),
         "a NUL byte stands at byte 6; this is no text table (or UTF-16: save it as UTF-8)"},
        {"realisations", "t\n1 2 1 1 .5 .5 .5 1 1 1 3\nv\n7\n8\n",
         "the table holds several realisations, one is expected"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        EXPECT_EQ(head_of(c.text), c.expected);
    }
}

TEST(TextHead, FollowsWhatIsKnownBeforehand) {
    TextHints units;
    units.header_rows = {1, 2};
    EXPECT_EQ(head_of("x,y\nm,m\n1,2\n", units), ",|x|y@8");
    TextHints values;
    values.header_rows.emplace();
    EXPECT_EQ(head_of("-775\n-676\n", values), ",|@0");
    TextHints knowing;
    knowing.is_known_name = [](std::string_view name) { return name == "x" || name == "y"; };
    EXPECT_EQ(head_of("x,y,code;sub\n1,2,A;1\n", knowing), ",|x|y|code;sub@13");
    EXPECT_EQ(head_of("x,y,rock type\n1,2,a\n1,2\n", knowing), ",|x|y|rock type@14");
    TextHints stated;
    stated.delimiter = ',';
    EXPECT_EQ(head_of("x;a,y\n1,2\n", stated), ",|x;a|y@6");
}

TEST(Encoding, BringsOlderTextsToUtf8) {
    EXPECT_EQ(to_utf8("G\xC3\xBCte", ""), "G\xC3\xBCte");
    EXPECT_EQ(to_utf8("G\xFCte \x80", ""), "G\xC3\xBCte \xE2\x82\xAC");
    EXPECT_EQ(to_utf8("\xE4\xE5", "KOI8-R"), "\xD0\x94\xD0\x95");
    // An overlong form and a surrogate are not UTF-8, so these are two and three bytes of 1252.
    EXPECT_EQ(to_utf8("\xC0\xAF", ""), "\xC3\x80\xC2\xAF");
    EXPECT_EQ(to_utf8("\xED\xA0\xBF", "").size(), 6U);
}

}  // namespace
