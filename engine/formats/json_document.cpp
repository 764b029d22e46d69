// Parsing JSON by RapidJSON.
#include <fast_float/fast_float.h>
#include <rapidjson/error/en.h>
#include <rapidjson/memorystream.h>
#include <rapidjson/reader.h>

#include <charconv>
#include <cmath>
#include <limits>
#include <system_error>

#include "engine/formats/json.h"
#include "engine/formats/json_tree.h"
#include "engine/formats/read_error.h"

namespace zol::engine {

namespace {

using json_tree::Document;
using json_tree::Value;
using Reader =
    rapidjson::GenericReader<rapidjson::UTF8<>, rapidjson::UTF8<>, json_tree::ThrowingAllocator>;

constexpr unsigned kStrict = rapidjson::kParseIterativeFlag |
                             rapidjson::kParseNumbersAsStringsFlag |
                             rapidjson::kParseValidateEncodingFlag;
constexpr unsigned kWithNonFinite = kStrict | rapidjson::kParseNanAndInfFlag;

// Far more than any reader looks into. Each level costs the parser many times the byte
// that opens it.
constexpr int kDeepest = 200;

// Builds a document, with numbers of our own conversion: the parser's exact one does
// undefined things with a long row of zeros.
class Events {
public:
    explicit Events(Document& document) : document_(document) {}

    bool Null() { return document_.Null(); }
    bool Bool(bool value) { return document_.Bool(value); }
    bool String(const char* text, rapidjson::SizeType length, bool copy) {
        return document_.String(text, length, copy);
    }
    bool Key(const char* text, rapidjson::SizeType length, bool copy) {
        return document_.Key(text, length, copy);
    }
    bool StartObject() { return Enter() && document_.StartObject(); }
    bool EndObject(rapidjson::SizeType count) {
        --depth_;
        return document_.EndObject(count);
    }
    bool StartArray() { return Enter() && document_.StartArray(); }
    bool EndArray(rapidjson::SizeType count) {
        --depth_;
        return document_.EndArray(count);
    }

    bool RawNumber(const char* text, rapidjson::SizeType length, bool) {
        const char* end = text + length;
        std::int64_t whole = 0;
        if (const auto read = std::from_chars(text, end, whole);
            read.ec == std::errc() && read.ptr == end) {
            return document_.Int64(whole);
        }
        double number = 0.0;
        const auto read = fast_float::from_chars(text, end, number);
        const bool is_word = *(end - 1) > '9';
        if (std::isinf(number) && !is_word) return false;
        return read.ptr == end && document_.Double(number);
    }

    // Numbers come raw, so none of these is called.
    bool Int(int value) { return document_.Int(value); }
    bool Uint(unsigned value) { return document_.Uint(value); }
    bool Int64(std::int64_t value) { return document_.Int64(value); }
    bool Uint64(std::uint64_t value) { return document_.Uint64(value); }
    bool Double(double value) { return document_.Double(value); }

    bool IsTooDeep() const { return depth_ > kDeepest; }

private:
    bool Enter() {
        ++depth_;
        return !IsTooDeep();
    }

    Document& document_;
    int depth_ = 0;
};

const char* fault_text(rapidjson::ParseErrorCode code) {
    if (code == rapidjson::kParseErrorTermination) return "a number beyond a double";
    return rapidjson::GetParseError_En(code);
}

}  // namespace

struct JsonDocument::State {
    Document document;
};

JsonDocument::JsonDocument(std::string_view text, Dialect dialect, std::uint64_t text_start)
    : state_(std::make_unique<State>()) {
    constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
    if (text.starts_with(kByteOrderMark)) {
        text.remove_prefix(kByteOrderMark.size());
        text_start += kByteOrderMark.size();
    }
    const auto byte = [text_start](std::size_t offset) {
        return "byte " + std::to_string(text_start + offset);
    };
    // The parser counts in 32 bits.
    if (text.size() > std::numeric_limits<std::uint32_t>::max()) {
        throw ReadError("JSON of " + std::to_string(text.size()) + " bytes, 4 GiB is the limit");
    }
    // An empty view may hold a null pointer, which the stream must not see.
    if (text.empty()) throw ReadError("not JSON at " + byte(0) + ": the text is empty");
    rapidjson::MemoryStream stream(text.data(), text.size());
    Reader reader;
    bool too_deep = false;
    const auto parse = [&](Document& document) {
        Events events(document);
        const rapidjson::ParseResult result = dialect == Dialect::Strict
                                                  ? reader.Parse<kStrict>(stream, events)
                                                  : reader.Parse<kWithNonFinite>(stream, events);
        too_deep = events.IsTooDeep();
        return !result.IsError();
    };
    state_->document.Populate(parse);
    if (too_deep) {
        throw ReadError("JSON nested deeper than " + std::to_string(kDeepest) + " levels at " +
                        byte(reader.GetErrorOffset()));
    }
    if (reader.HasParseError()) {
        throw ReadError("not JSON at " + byte(reader.GetErrorOffset()) + ": " +
                        fault_text(reader.GetParseErrorCode()));
    }
    // The parser takes a NUL byte for the end of the text.
    if (stream.Tell() != text.size()) {
        throw ReadError("not JSON at " + byte(stream.Tell()) + ": a NUL byte");
    }
}

JsonDocument::JsonDocument(JsonDocument&&) noexcept = default;
JsonDocument& JsonDocument::operator=(JsonDocument&&) noexcept = default;
JsonDocument::~JsonDocument() = default;

JsonValue JsonDocument::Root() const {
    const Value& root = state_->document;
    return {&root, &root};
}

}  // namespace zol::engine
