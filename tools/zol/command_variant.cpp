// `zol variant`: shows a file of values, or writes it in another form.

#include <unistd.h>

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <system_error>
#include <vector>

#include "support/ciphers.h"
#include "support/variant_header.h"
#include "support/variant_traversal.h"
#include "tools/zol/exit_codes.h"
#include "tools/zol/output_file.h"
#include "tools/zol/variant_commands.h"
#include "tools/zol/variant_input.h"
#include "tools/zol/variant_json.h"

namespace zol::tool {

namespace {

/// The text form indents by the depth, so that a file that does nothing but nest would
/// come out as large as the square of its size.
constexpr std::size_t kDeepestText = 1000;

struct DepthMeter {
    std::size_t deepest = 0;
    void Begin(const MVariant&, const support::VariantPlace& place) {
        deepest = std::max(deepest, place.depth);
    }
    void End(const MVariant&, const support::VariantPlace&) {}
};

/// A file that holds what is on its way elsewhere.
class Waypoint {
public:
    Waypoint() {
        std::error_code error;
        path_ = (std::filesystem::temp_directory_path(error) / "zol_variant_XXXXXX").string();
        const int descriptor = mkstemp(path_.data());
        if (descriptor < 0) Fail();
        close(descriptor);
    }
    Waypoint(const Waypoint&) = delete;
    Waypoint& operator=(const Waypoint&) = delete;
    ~Waypoint() { std::remove(path_.c_str()); }

    const char* Path() const { return path_.c_str(); }
    std::uint64_t Size() const {
        std::error_code error;
        return std::filesystem::file_size(path_, error);
    }
    [[noreturn]] void Fail() const {
        throw WriteFailure("can't write '" + path_ + "', where the result is put together.", false);
    }
    void PassOn(Output& output) const {
        std::ifstream in(path_, std::ios::binary);
        std::vector<char> piece(1 << 16);
        while (in.read(piece.data(), static_cast<std::streamsize>(piece.size())) ||
               in.gcount() > 0) {
            output.Write({piece.data(), static_cast<std::size_t>(in.gcount())});
        }
    }

private:
    std::string path_;
};

void write_text(const VariantRequest& request, const MVariant& value, Output& output) {
    DepthMeter meter;
    support::traverse(value, support::KeyOrder::kTable, meter);
    if (meter.deepest > kDeepestText) {
        throw UsageError("'" + request.file + "' nests values " + std::to_string(meter.deepest) +
                         " deep, too deep to be written as text. Try --to json.");
    }
    const Waypoint made;
    if (!value.WriteText(made.Path())) made.Fail();
    made.PassOn(output);
}

void write_sealed(const VariantRequest& request, const MVariant& value, Output& output) {
    const std::uint64_t record = value.BinarySize();
    if (record == 0) {
        throw UsageError("'" + request.file + "' holds more than fits into a record of 2 GiB.");
    }
    const Waypoint made;
    const std::uint64_t whole =
        kHeaderSize + (record + kBlowfishBlock - 1) / kBlowfishBlock * kBlowfishBlock;
    // A record that could not be written is told by the size alone.
    if (!value.WriteSealed(made.Path(), nullptr) || made.Size() != whole) made.Fail();
    made.PassOn(output);
}

void write(const VariantRequest& request, const MVariant& value, Output& output) {
    switch (request.form.value_or(VariantForm::kText)) {
        case VariantForm::kText:
            return write_text(request, value, output);
        case VariantForm::kJson:
            return write_variant_json(value, output);
        case VariantForm::kSealed:
            return write_sealed(request, value, output);
    }
}

}  // namespace

int run_variant(const VariantRequest& request, Output& output) {
    const VariantInput input = read_variant(request.file);
    if (!input.remark.empty()) std::fprintf(stderr, "zol: %s\n", input.remark.c_str());
    write_to(request.out, {request.file}, output, [&](Output& stream) {
        // A comment of the text form, so that what is shown can be read again.
        if (!request.form) stream.Write("* " + input.form + '\n');
        write(request, input.value, stream);
    });
    return kGood;
}

}  // namespace zol::tool
