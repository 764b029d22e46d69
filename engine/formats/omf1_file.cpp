#include "engine/formats/omf1_file.h"

#include <libdeflate.h>

#include <algorithm>
#include <array>
#include <bit>
#include <cstring>
#include <new>
#include <unordered_set>

#include "engine/formats/byte_numbers.h"
#include "engine/formats/read_error.h"

namespace zol::engine {

namespace {

constexpr std::string_view kMagic = "\x84\x83\x82\x81";
constexpr std::string_view kVersion = "OMF-v0.9.0";

constexpr std::size_t kVersionStart = 4;
constexpr std::size_t kVersionSize = 32;
constexpr std::size_t kUuidStart = 36;
constexpr std::size_t kUuidSize = 16;
constexpr std::size_t kJsonOffsetStart = 52;
constexpr std::size_t kHeaderSize = 60;

// Two bytes of header, the shortest deflate stream, four bytes of check sum.
constexpr std::uint64_t kShortestZlib = 8;
// Deflate spends at least two bits on 258 bytes.
constexpr std::uint64_t kBestCompression = 1032;

// Objects have about ten members. A bound keeps the look-ups through references,
// which are without number, from searching long lists again and again.
constexpr std::size_t kMostMembers = 1000;

using Header = std::array<std::byte, kHeaderSize>;

Header read_header(const File& file) {
    Header header{};
    if (file.ReadAt(0, header.data(), header.size()) != header.size()) {
        throw ReadError("the file ends at byte " + std::to_string(file.Size()) +
                        ", inside the header");
    }
    if (!is_omf1({reinterpret_cast<const char*>(header.data()), header.size()})) {
        throw ReadError("not an OMF 1 file: no magic number at byte 0");
    }
    std::string version(kVersionSize, '\0');
    std::memcpy(version.data(), header.data() + kVersionStart, kVersionSize);
    version.resize(std::min(version.find('\0'), version.size()));
    if (version != kVersion) {
        throw ReadError("OMF version \"" + version + "\" at byte 4, \"" + std::string(kVersion) +
                        "\" is expected");
    }
    return header;
}

std::string uuid_text(const Header& header) {
    constexpr std::string_view kDigits = "0123456789abcdef";
    std::string text;
    for (std::size_t i = 0; i < kUuidSize; ++i) {
        if (i == 4 || i == 6 || i == 8 || i == 10) text += '-';
        const auto byte = std::to_integer<unsigned>(header[kUuidStart + i]);
        text += kDigits[byte >> 4];
        text += kDigits[byte & 15];
    }
    return text;
}

bool is_zlib_header(unsigned char method, unsigned char flags) {
    const bool deflate = (method & 0x0F) == 8 && method >> 4 <= 7;
    const bool preset_dictionary = (flags & 0x20) != 0;
    return deflate && !preset_dictionary && (method * 256 + flags) % 31 == 0;
}

struct FreeDecompressor {
    void operator()(libdeflate_decompressor* d) const { libdeflate_free_decompressor(d); }
};

}  // namespace

bool is_omf1(std::string_view head) {
    return head.starts_with(kMagic);
}

Omf1Document::Omf1Document(const File& file) : file_(&file) {
    const Header header = read_header(file);
    json_start_ = load_number<std::uint64_t>(header.data() + kJsonOffsetStart, ByteOrder::Little);
    if (json_start_ < kHeaderSize || json_start_ >= file.Size()) {
        throw ReadError("the header puts the JSON at byte " + std::to_string(json_start_) +
                        " of a file of " + std::to_string(file.Size()) + " bytes");
    }
    {
        const std::vector<std::byte> json =
            file.ReadExactly(json_start_, file.Size() - json_start_);
        const std::string_view text(reinterpret_cast<const char*>(json.data()), json.size());
        document_ =
            std::make_unique<JsonDocument>(text, JsonDocument::Dialect::WithNonFinite, json_start_);
    }
    for (JsonMember& member : document_->Root().Members()) {
        if (member.value.IsObject() && member.value.NMembers() > kMostMembers) {
            member.value.Refuse("has " + std::to_string(member.value.NMembers()) + " members");
        }
        objects_.emplace(std::move(member.key), member.value);
    }
    FindProject(uuid_text(header));
}

void Omf1Document::FindProject(const std::string& uuid) {
    if (const auto found = objects_.find(uuid); found != objects_.end()) {
        if (ClassOf(found->second) != "Project") found->second.Refuse("is not a Project");
        project_ = found->second;
        return;
    }
    for (const auto& [key, object] : objects_) {
        if (!object.IsObject()) continue;
        const std::optional<JsonValue> class_name = object.Find("__class__");
        if (!class_name || !class_name->IsText() || class_name->Text() != "Project") continue;
        if (project_) throw ReadError("no object " + uuid + ", and more than one Project");
        project_ = object;
    }
    if (!project_) throw ReadError("no object " + uuid + ", and no Project");
}

std::vector<Omf1Element> Omf1Document::Elements() const {
    std::vector<Omf1Element> elements;
    const std::optional<JsonValue> list = project_->Find("elements");
    if (!list) return elements;
    std::unordered_set<std::string> seen;
    for (std::size_t i = 0; i < list->Size(); ++i) {
        if (!seen.insert(list->At(i).Text()).second) continue;
        const JsonValue object = Follow(
            list->At(i), {"PointSetElement", "LineSetElement", "SurfaceElement", "VolumeElement"});
        const std::optional<JsonValue> name = object.Find("name");
        std::string text = name ? name->Text() : std::string();
        if (text.empty()) text = "element " + std::to_string(i + 1);
        elements.push_back({std::move(text), ClassOf(object), object});
    }
    return elements;
}

JsonValue Omf1Document::Object(const std::string& uuid) const {
    const auto found = objects_.find(uuid);
    if (found == objects_.end()) throw ReadError("no object " + uuid);
    return found->second;
}

JsonValue Omf1Document::Follow(const JsonValue& reference,
                               std::initializer_list<std::string_view> classes) const {
    const auto found = objects_.find(reference.Text());
    if (found == objects_.end()) reference.Refuse("refers to no object of the file");
    const std::string class_name = ClassOf(found->second);
    if (std::find(classes.begin(), classes.end(), class_name) == classes.end()) {
        std::string expected;
        for (const std::string_view name : classes) {
            if (!expected.empty()) expected += " or ";
            expected += name;
        }
        reference.Refuse("refers to a " + class_name + ", " + expected + " is expected");
    }
    return found->second;
}

Omf1Blob Omf1Document::Blob(const JsonValue& reference,
                            std::initializer_list<std::string_view> classes) const {
    const JsonValue description = Follow(reference, classes).Get("array");
    const std::int64_t start = description.Get("start").Whole();
    const std::int64_t length = description.Get("length").Whole();
    const std::string type = description.Get("dtype").Text();

    Omf1Blob blob;
    blob.name = "array " + reference.Text();
    if (type == "<i8") {
        blob.type = Omf1Blob::Type::Int64;
    } else if (type != "<f8") {
        description.Refuse("has items of type \"" + type + "\", \"<f8\" or \"<i8\" is expected");
    }
    if (start < std::int64_t{kHeaderSize} || length < 0 ||
        static_cast<std::uint64_t>(start) > json_start_ ||
        static_cast<std::uint64_t>(length) > json_start_ - static_cast<std::uint64_t>(start)) {
        description.Refuse("lies outside the array bytes, which are 60 to " +
                           std::to_string(json_start_));
    }
    blob.start = static_cast<std::uint64_t>(start);
    blob.length = static_cast<std::uint64_t>(length);
    std::array<unsigned char, 2> head{};
    if (blob.length < kShortestZlib ||
        file_->ReadAt(blob.start, head.data(), head.size()) != head.size() ||
        !is_zlib_header(head[0], head[1])) {
        description.Refuse("is no zlib stream, at byte " + std::to_string(blob.start));
    }
    return blob;
}

void check_can_hold(const Omf1Blob& blob, std::uint64_t bytes) {
    if (bytes / kBestCompression > blob.length) {
        throw ReadError(blob.name + " can't hold " + std::to_string(bytes) + " bytes in " +
                        std::to_string(blob.length) + " compressed ones");
    }
}

std::uint64_t most_bytes_in(const Omf1Blob& blob) {
    // A blob lies in a file: the product fits.
    return (blob.length + 1) * kBestCompression;
}

std::optional<std::size_t> inflate_at_most(const File& file, const Omf1Blob& blob, void* to,
                                           std::size_t room) {
    static_assert(std::endian::native == std::endian::little, "the arrays are little-endian");
    if (!file.IsUnchanged()) throw ReadError("the file was changed after it was opened");
    const std::vector<std::byte> compressed = file.ReadExactly(blob.start, blob.length);
    const std::unique_ptr<libdeflate_decompressor, FreeDecompressor> decompressor(
        libdeflate_alloc_decompressor());
    if (!decompressor) throw std::bad_alloc();
    std::size_t used = 0;
    std::size_t written = 0;
    switch (libdeflate_zlib_decompress_ex(decompressor.get(), compressed.data(), compressed.size(),
                                          to, room, &used, &written)) {
        case LIBDEFLATE_SUCCESS:
            break;
        case LIBDEFLATE_INSUFFICIENT_SPACE:
            return std::nullopt;
        default:
            throw ReadError(blob.name + " is corrupt: the zlib stream at byte " +
                            std::to_string(blob.start) + " does not decompress");
    }
    if (used != compressed.size()) {
        throw ReadError(blob.name + " goes on for " + std::to_string(compressed.size() - used) +
                        " bytes behind its zlib stream");
    }
    return written;
}

void inflate_exactly(const File& file, const Omf1Blob& blob, void* to, std::size_t bytes) {
    const std::optional<std::size_t> written = inflate_at_most(file, blob, to, bytes);
    if (!written) {
        throw ReadError(blob.name + " holds more than the expected " + std::to_string(bytes) +
                        " bytes");
    }
    if (*written != bytes) {
        throw ReadError(blob.name + " holds " + std::to_string(*written) + " bytes, " +
                        std::to_string(bytes) + " are expected");
    }
}

}  // namespace zol::engine
