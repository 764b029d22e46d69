// Reading the text form. Containers that have begun are kept in a list, so that nesting
// costs memory and no stack.
#include <cstdint>
#include <string>
#include <vector>

#include "support/ascii.h"
#include "support/byte_source.h"
#include "support/entry_finder.h"
#include "support/number_text.h"
#include "support/open_file.h"
#include "support/variant.h"
#include "support/variant_text_tokens.h"

namespace zol::support {

namespace {

constexpr TextFault kNoSeparatorInVector{
    2, "Error parsing variant vector",
    "missing expected item separator ',' or missing expected ']' end of vector"};
constexpr TextFault kNoSeparatorInMap{3, "Error parsing variant map/hash",
                                      "missing expected item separator ','"};
constexpr TextFault kNoEquals{4, "Error parsing variant map/hash", "missing expected operator '='"};
constexpr TextFault kNoEndOfMap{5, "Error parsing variant map/hash",
                                "missing expected '}' end of map"};
constexpr TextFault kNoValue{6, "Error parsing variant",
                             "missing expected variant vector/map/string/diff/undef"};

}  // namespace

class VariantTextReader {
public:
    explicit VariantTextReader(ByteSource& source) : tokens_(source) {}

    /// Reads into what the value holds already. 0, or the number of the fault, which
    /// leaves the value empty and an account in `errors`.
    int Read(MVariant& root, MVariant& errors) {
        MVariant* value = &root;
        while (value != nullptr) {
            ReadValue(*value);
            value = tokens_.Fault().number == 0 ? NextPlace() : nullptr;
        }
        if (tokens_.Fault().number != 0) {
            root.Clear();
            Tell(errors);
        }
        return tokens_.Fault().number;
    }

private:
    struct Container {
        MVariant* value;
        int count;  // values read into it so far
        bool is_vector;
    };

    // Of a container only the beginning.
    void ReadValue(MVariant& value) {
        const int c = tokens_.NextChar(true);
        if (tokens_.Fault().number != 0) {
            return;
        }
        switch (c) {
            case '"': {
                std::string text;
                tokens_.ReadQuoted(text);
                Overwritten(value) = MVariant(std::move(text));
                break;
            }
            case 'u':
                Overwritten(value).Clear();
                break;
            case '[':
                Open(value, MV_VECTOR);
                break;
            case '{':
                Open(value, MV_MAP);
                break;
            default:
                if (is_digit(c) || c == '+' || c == '-' || c == '.') {
                    ReadNumber(c, value);
                } else {
                    tokens_.Fail(kNoValue);
                }
        }
    }

    // A container of the kind that is there already keeps what is in it.
    void Open(MVariant& value, MVariantKind kind) {
        if (value.Kind() != kind) {
            Overwritten(value) = MVariant(kind);
        }
        open_.push_back({&value, 0, kind == MV_VECTOR});
    }

    void ReadNumber(int first, MVariant& value) {
        const VariantTokens::Number number = tokens_.ReadNumber(first);
        if (number.is_whole) {
            Overwritten(value) = read_int64(number.text);
        } else if (!number.is_hexadecimal) {
            Overwritten(value) = read_double(number.text);
        } else if (!number.text.empty()) {
            // The kind stays as it was, so that the text form of a pointer gives a value
            // that is empty still.
            Overwritten(value).SetWord(read_hex(number.text));
        }
    }

    MVariant& Overwritten(MVariant& value) {
        entries_.Forget(value);
        return value;
    }

    // Where the next value goes; null when all are read, and on a fault.
    MVariant* NextPlace() {
        while (!open_.empty()) {
            Container& container = open_.back();
            const char end = container.is_vector ? ']' : '}';
            int c = tokens_.NextChar(true);
            if (container.count > 0 && c == ',') {
                c = tokens_.NextChar(true);
            } else if (container.count > 0 && c != end) {
                tokens_.Fail(container.is_vector ? kNoSeparatorInVector : kNoSeparatorInMap);
                return nullptr;
            }
            if (c != end) {
                return container.is_vector ? NextElement(container) : NextEntry(container, c);
            }
            open_.pop_back();
        }
        return nullptr;
    }

    MVariant* NextElement(Container& vector) {
        tokens_.PushBack();
        return &(*vector.value)[vector.count++];
    }

    MVariant* NextEntry(Container& map, int c) {
        if (c != '"') {
            tokens_.Fail(kNoEndOfMap);
            return nullptr;
        }
        key_.clear();
        tokens_.ReadQuoted(key_);
        if (tokens_.NextChar(true) != '=') {
            tokens_.Fail(kNoEquals);
            return nullptr;
        }
        map.count = 1;
        return &entries_.Entry(*map.value, key_.c_str());
    }

    void Tell(MVariant& errors) const {
        const TextFault& fault = tokens_.Fault();
        errors["message"] = fault.message;
        if (fault.explain != nullptr) {
            errors["explain"] = fault.explain;
        } else {
            errors.RemoveKey("explain");
        }
        errors["line"] = tokens_.Line();
        errors["number"] = fault.number;
        errors["type"] = "severe";
    }

    VariantTokens tokens_;
    // The innermost last.
    std::vector<Container> open_;
    std::string key_;
    EntryFinder entries_;
};

}  // namespace zol::support

using namespace zol::support;

bool MVariant::ReadText(const char* path, MVariant& errors) {
    const OpenFile file(path, GENERIC_READ, OPEN_EXISTING);
    if (!file.IsOpen()) {
        return false;
    }
    FileSource source(file.Handle());
    return VariantTextReader(source).Read(*this, errors) == 0;
}

bool MVariant::ParseText(std::istream& stream, int& fault, MVariant& errors) {
    StreamSource source(stream);
    fault = VariantTextReader(source).Read(*this, errors);
    return fault == 0;
}
