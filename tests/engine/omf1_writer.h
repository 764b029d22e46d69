// Writes OMF 1 files for tests, good ones and bad ones. Keys of objects may be any
// text; readers find the only Project whatever the header's UUID.
#pragma once

#include <zlib.h>

#include <cstdint>
#include <cstring>
#include <stdexcept>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

namespace zol::testing_support {

inline std::string zlib_stream(std::string_view bytes) {
    uLongf size = compressBound(static_cast<uLong>(bytes.size()));
    std::string stream(size, '\0');
    if (compress2(reinterpret_cast<Bytef*>(stream.data()), &size,
                  reinterpret_cast<const Bytef*>(bytes.data()), static_cast<uLong>(bytes.size()),
                  9) != Z_OK) {
        throw std::runtime_error("zlib");
    }
    stream.resize(size);
    return stream;
}

class Omf1Writer {
public:
    /// Adds an array and gives its description: {"start":60,...}.
    template <typename T>
    std::string Blob(const std::vector<T>& items) {
        static_assert(sizeof(T) == 8);
        const std::string_view bytes(reinterpret_cast<const char*>(items.data()),
                                     items.size() * sizeof(T));
        return RawBlob(zlib_stream(bytes), std::is_same_v<T, double> ? "<f8" : "<i8");
    }
    std::string RawBlob(std::string_view stream, const std::string& type) {
        const std::size_t start = kHeaderSize + blobs_.size();
        blobs_ += stream;
        return "{\"start\":" + std::to_string(start) +
               ",\"length\":" + std::to_string(stream.size()) + ",\"dtype\":\"" + type + "\"}";
    }

    /// `members` is JSON without the braces.
    void Object(const std::string& key, const std::string& class_name, const std::string& members) {
        if (!objects_.empty()) objects_ += ",\n";
        objects_ += "\"" + key + "\":{\"__class__\":\"" + class_name + "\"" +
                    (members.empty() ? "" : ",") + members + "}";
    }

    std::string Bytes() const {
        std::string header("\x84\x83\x82\x81OMF-v0.9.0", 14);
        header.resize(52, '\0');
        const std::uint64_t json_start = kHeaderSize + blobs_.size();
        char offset[8];
        std::memcpy(offset, &json_start, sizeof offset);
        header.append(offset, sizeof offset);
        return header + blobs_ + "{" + objects_ + "}";
    }

private:
    static constexpr std::size_t kHeaderSize = 60;
    std::string blobs_;
    std::string objects_;
};

}  // namespace zol::testing_support
