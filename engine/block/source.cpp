// Finds the reader of a block model file.
#include "engine/block/source.h"

#include <array>
#include <memory>
#include <string_view>

#include "engine/block/omf1_source.h"
#include "engine/block/text_source.h"
#include "engine/formats/file.h"
#include "engine/formats/file_name.h"
#include "engine/formats/omf1_file.h"
#include "engine/formats/read_error.h"

namespace zol::engine::block {

namespace {

using namespace std::string_view_literals;

struct Refusal {
    std::string_view first_bytes;
    const char* reason;
};

constexpr std::array kRefusals = {
    Refusal{"PK\x03\x04"sv, "it is a zip archive; of OMF files only those of version 1 are read"},
    Refusal{"PK\x05\x06"sv, "it is a zip archive; of OMF files only those of version 1 are read"},
    Refusal{"\x1f\x8b"sv, "it is compressed; decompress it first"},
    Refusal{"{"sv, "it is JSON; a sidecar is read with the table it stands beside, open that"},
};

Source read(const std::string& path, const std::string& element) {
    const auto file = std::make_shared<const File>(path);
    std::array<char, 8> bytes{};
    const std::string_view head(bytes.data(), file->ReadAt(0, bytes.data(), bytes.size()));
    if (is_omf1(head)) {
        return open_omf1(file, element);
    }
    for (const Refusal& refusal : kRefusals) {
        if (head.starts_with(refusal.first_bytes)) {
            throw ReadError(refusal.reason);
        }
    }
    // Delimited text has no signature.
    return open_text(file, element);
}

}  // namespace

Source open_source(const std::string& file) {
    const FileName name = split_file_name(file, File::Exists);
    return read(name.path, name.element);
}

}  // namespace zol::engine::block
