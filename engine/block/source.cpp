// Finds the reader of a block model file.
#include "engine/block/source.h"

#include <array>
#include <memory>
#include <string_view>

#include "engine/block/omf1_source.h"
#include "engine/block/text_source.h"
#include "engine/formats/file.h"
#include "engine/formats/read_error.h"

namespace zol::engine::block {

namespace {

using namespace std::string_view_literals;

using Reader = Source (*)(const std::shared_ptr<const File>& file, const std::string& element);

[[noreturn]] Source refuse_zip(const std::shared_ptr<const File>&, const std::string&) {
    throw ReadError("it is a zip archive; of OMF files only those of version 1 are read");
}

[[noreturn]] Source refuse_gzip(const std::shared_ptr<const File>&, const std::string&) {
    throw ReadError("it is compressed; decompress it first");
}

[[noreturn]] Source refuse_json(const std::shared_ptr<const File>&, const std::string&) {
    throw ReadError("it is JSON; a sidecar is read with the table it stands beside, open that");
}

struct Signature {
    std::string_view first_bytes;
    Reader reader;
};

// What begins otherwise is read as delimited text, which has no signature.
constexpr std::array kSignatures = {
    Signature{"\x84\x83\x82\x81"sv, open_omf1},
    Signature{"PK\x03\x04"sv, refuse_zip},
    Signature{"PK\x05\x06"sv, refuse_zip},
    Signature{"\x1f\x8b"sv, refuse_gzip},
    Signature{"{"sv, refuse_json},
};

Source read(const std::string& path, const std::string& element) {
    const auto file = std::make_shared<const File>(path);
    std::array<char, 8> bytes{};
    const std::string_view head(bytes.data(), file->ReadAt(0, bytes.data(), bytes.size()));
    for (const Signature& signature : kSignatures) {
        if (head.starts_with(signature.first_bytes)) {
            return signature.reader(file, element);
        }
    }
    return open_text(file, element);
}

}  // namespace

Source open_source(const std::string& file) {
    const std::size_t mark = file.rfind('#');
    if (mark == file.npos || File::Exists(file)) {
        return read(file, {});
    }
    return read(file.substr(0, mark), file.substr(mark + 1));
}

}  // namespace zol::engine::block
