#include "tools/zol/variant_json.h"

#include <bit>
#include <cmath>
#include <cstdint>
#include <string>
#include <string_view>

#include "support/variant_traversal.h"
#include "tools/zol/json_writer.h"
#include "tools/zol/number_text.h"

namespace zol::tool {

namespace {

// Deeper than this all of a value stands on one line: indented, a file that does nothing
// but nest would come out as large as the square of its size.
constexpr std::size_t kDeepestTall = 32;

class VariantJson {
public:
    explicit VariantJson(Output& output) : json_(output) {}

    void Begin(const MVariant& value, const support::VariantPlace& place) {
        if (place.key != nullptr) json_.Key(place.key);
        const auto layout =
            place.depth < kDeepestTall ? JsonWriter::Layout::Tall : JsonWriter::Layout::Flat;
        switch (value.Kind()) {
            case MV_EMPTY:
                json_.Null();
                break;
            case MV_DOUBLE:
                WriteDouble(value.AsDouble());
                break;
            case MV_STRING:
                json_.Text(value.Text() != nullptr ? std::string_view(*value.Text()) : "");
                break;
            case MV_INT:
            case MV_INT64:
                json_.Whole(value.AsInt64());
                break;
            case MV_VECTOR:
                json_.BeginList(layout);
                break;
            case MV_MAP:
                json_.BeginObject(layout);
                break;
            case MV_POINTER:
                WritePointer(value.Word());
                break;
        }
    }

    void End(const MVariant& value, const support::VariantPlace&) {
        value.Kind() == MV_VECTOR ? json_.EndList() : json_.EndObject();
    }

private:
    /// With a point or an exponent, so that it is told from an integer.
    void WriteDouble(double number) {
        if (std::isnan(number)) {
            json_.Text("NaN");
        } else if (std::isinf(number)) {
            json_.Text(number > 0 ? "Infinity" : "-Infinity");
        } else {
            std::string text(number_text(number));
            if (text.find_first_of(".e") == std::string::npos) text += ".0";
            json_.NumberAsWritten(text);
        }
    }

    void WritePointer(std::uint64_t word) {
        std::string digits = "0x";
        for (int shift = 60; shift >= 0; shift -= 4)
            digits += "0123456789abcdef"[word >> shift & 15];
        json_.Text(digits);
    }

    JsonWriter json_;
};

}  // namespace

void write_variant_json(const MVariant& value, Output& output) {
    VariantJson json(output);
    support::traverse(value, support::KeyOrder::kSortedIgnoringCase, json);
    if (value.Kind() != MV_VECTOR && value.Kind() != MV_MAP) output.Write('\n');
}

}  // namespace zol::tool
