// The container of OMF 1 files, for all kinds of elements: a header, compressed
// arrays, and a JSON text of objects that refer to each other by UUID.
// docs/formats/omf1.md has the layout.
#pragma once

#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "engine/formats/file.h"
#include "engine/formats/json.h"

namespace zol::engine {

/// True of the first bytes of an OMF 1 file, four at least.
bool is_omf1(std::string_view head);

/// A compressed array of numbers somewhere in the file.
struct Omf1Blob {
    enum class Type { Float64, Int64 };

    /// Compressed bytes, inside the file.
    std::uint64_t start = 0;
    std::uint64_t length = 0;
    Type type = Type::Float64;
    /// "array 3f0c...", for errors.
    std::string name;
};

struct Omf1Element {
    /// Never empty: "element 3" is the third of the project when it has no name.
    std::string name;
    std::string class_name;
    JsonValue object;
};

/// The parsed JSON of a file. Inline lists can make it large, so it is for the time
/// of opening; arrays are read later with nothing but their blob.
class Omf1Document {
public:
    /// Throws ReadError; so do all operations, for whatever in the file is not as it
    /// should be. `file` outlives the document.
    explicit Omf1Document(const File& file);

    JsonValue Project() const { return *project_; }
    /// Elements of the project, in its order, each once.
    std::vector<Omf1Element> Elements() const;

    /// The object of this UUID text.
    JsonValue Object(const std::string& uuid) const;
    /// The object that a value refers to by its UUID; it is of one of `classes`.
    JsonValue Follow(const JsonValue& reference,
                     std::initializer_list<std::string_view> classes) const;
    static std::string ClassOf(const JsonValue& object) { return object.Get("__class__").Text(); }

    /// The blob of the array object that a value refers to. It lies between header
    /// and JSON and starts as a zlib stream does.
    Omf1Blob Blob(const JsonValue& reference,
                  std::initializer_list<std::string_view> classes) const;

private:
    void FindProject(const std::string& uuid);

    const File* file_;
    std::uint64_t json_start_ = 0;
    std::unique_ptr<JsonDocument> document_;
    std::unordered_map<std::string, JsonValue> objects_;
    std::optional<JsonValue> project_;
};

/// Throws ReadError when the compressed bytes are too few for `bytes` bytes, however
/// well they compress: to be asked before anything is allocated for them.
void check_can_hold(const Omf1Blob& blob, std::uint64_t bytes);

/// The most bytes that the compressed bytes of a blob can hold.
std::uint64_t most_bytes_in(const Omf1Blob& blob);

/// Decompresses a blob of at most `room` bytes, and gives how many they are; nothing, and
/// `to` is spoilt, when they are more. Throws ReadError when the stream is corrupt, and when
/// the file was changed in the meantime.
std::optional<std::size_t> inflate_at_most(const File& file, const Omf1Blob& blob, void* to,
                                           std::size_t room);

/// Decompresses a blob of exactly `bytes` bytes; throws ReadError when the stream is
/// corrupt or holds fewer or more, and when the file was changed in the meantime.
void inflate_exactly(const File& file, const Omf1Blob& blob, void* to, std::size_t bytes);

}  // namespace zol::engine
