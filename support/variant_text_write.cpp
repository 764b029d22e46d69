// Writing the text form: see docs/formats/variant-text.md.
#include <algorithm>
#include <bit>
#include <string>
#include <string_view>

#include "support/number_text.h"
#include "support/open_file.h"
#include "support/variant.h"
#include "support/variant_text_tokens.h"
#include "support/variant_traversal.h"

namespace {

using namespace zol::support;

/// Collects a text and writes it in large pieces. Once a piece fails nothing is collected
/// any more.
class TextFile {
public:
    explicit TextFile(file_handle file) : file_(file) { text_.reserve(2 * kPiece); }

    std::string& Text() { return text_; }
    /// To be called now and then.
    void WriteWhenLarge() {
        if (text_.size() >= kPiece) {
            Write();
        }
    }
    void Pad(std::size_t blanks) {
        while (blanks > 0 && !has_failed_) {
            const std::size_t piece = std::min(blanks, kPiece);
            text_.append(piece, ' ');
            blanks -= piece;
            WriteWhenLarge();
        }
    }
    /// Of a length that one write may not take.
    void Append(std::string_view text) {
        while (!text.empty()) {
            const std::string_view piece = text.substr(0, kPiece);
            text_ += piece;
            text.remove_prefix(piece.size());
            WriteWhenLarge();
        }
    }
    bool Finish() {
        Write();
        return !has_failed_;
    }

private:
    static constexpr std::size_t kPiece = 1 << 18;

    void Write() {
        const auto size = static_cast<std::uint32_t>(text_.size());
        has_failed_ = has_failed_ || file_Write(file_, text_.data(), size) != size;
        text_.clear();
    }

    file_handle file_;
    bool has_failed_ = false;
    std::string text_;
};

constexpr int kDecimals = 6;
constexpr std::size_t kStep = 2;

bool stands_behind_key(MVariantKind kind) {
    return kind != MV_VECTOR && kind != MV_MAP && kind != MV_POINTER;
}

class TextWriter {
public:
    explicit TextWriter(TextFile& file) : file_(file) {}

    void Begin(const MVariant& value, const VariantPlace& place) {
        Head(value.Kind(), place);
        switch (value.Kind()) {
            case MV_VECTOR:
                file_.Text() += "[\n";
                return;
            case MV_MAP:
                file_.Text() += "{\n";
                return;
            case MV_EMPTY:
                file_.Text() += 'u';
                break;
            case MV_DOUBLE:
                append_fixed(file_.Text(), std::bit_cast<double>(value.Word()), kDecimals);
                break;
            case MV_STRING:
                Quote(value.Text() != nullptr ? std::string_view(*value.Text())
                                              : std::string_view());
                break;
            case MV_INT:
            case MV_INT64:
                append_integer(file_.Text(), value.AsInt64());
                break;
            case MV_POINTER:
                append_pointer(file_.Text(), value.Word());
                break;
        }
        EndLine(place);
    }

    void End(const MVariant& value, const VariantPlace& place) {
        file_.Pad(place.depth * kStep);
        file_.Text() += value.Kind() == MV_VECTOR ? ']' : '}';
        EndLine(place);
    }

private:
    void Head(MVariantKind kind, const VariantPlace& place) {
        if (place.key != nullptr) {
            file_.Pad((place.depth - 1) * kStep + 1);
            Quote(place.key);
            file_.Text() += " = ";
            if (stands_behind_key(kind)) {
                return;
            }
            file_.Text() += '\n';
        }
        file_.Pad(place.depth * kStep);
    }

    void Quote(std::string_view text) {
        file_.Text() += '"';
        const char* at = text.data();
        const char* const end = at + text.size();
        while (at != end) {
            const char* const special = find_quote_or_backslash(at, end);
            file_.Append({at, special});
            at = special;
            if (at != end) {
                file_.Text() += '\\';
                file_.Text() += *at++;
            }
        }
        file_.Text() += '"';
    }

    void EndLine(const VariantPlace& place) {
        file_.Text() += place.IsLast() ? "\n" : ",\n";
        file_.WriteWhenLarge();
    }

    TextFile& file_;
};

}  // namespace

bool MVariant::WriteText(const char* path) const {
    const OpenFile open(path, GENERIC_WRITE, CREATE_ALWAYS);
    if (!open.IsOpen()) {
        return false;
    }
    TextFile file(open.Handle());
    TextWriter writer(file);
    traverse(*this, KeyOrder::kSortedIgnoringCase, writer);
    return file.Finish();
}
