#include "tools/zol/variant_input.h"

#include <algorithm>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <optional>
#include <span>
#include <sstream>
#include <string_view>
#include <system_error>
#include <utility>
#include <vector>

#include "support/ciphers.h"
#include "support/little_endian.h"
#include "support/variant_header.h"
#include "support/variant_record.h"
#include "tools/zol/exit_codes.h"

namespace zol::tool {

namespace {

std::string content_of(const std::string& file) {
    std::error_code ignored;
    if (!std::filesystem::exists(file, ignored)) {
        throw ReadFailure("there is no file '" + file + "'.");
    }
    std::ifstream in(file, std::ios::binary);
    std::ostringstream content;
    // An empty file is no fault of the stream's.
    if (in && in.peek() != std::ifstream::traits_type::eof()) content << in.rdbuf();
    if (in.bad() || !in.is_open() || std::filesystem::is_directory(file, ignored)) {
        throw ReadFailure("'" + file + "' can't be read.");
    }
    return std::move(content).str();
}

std::size_t line_of(std::string_view content, std::size_t position) {
    const auto before = content.substr(0, position);
    return 1 + static_cast<std::size_t>(std::count(before.begin(), before.end(), '\n'));
}

/// How far the stream has been read, at its end too.
std::size_t position_of(std::istream& stream) {
    stream.clear();
    return static_cast<std::size_t>(std::streamoff(stream.tellg()));
}

VariantInput read_text(const std::string& file, std::string content) {
    VariantInput input;
    input.form = "text";
    std::istringstream stream(std::move(content));
    MVariant errors;
    int fault = 0;
    const bool is_good = input.value.ParseText(stream, fault, errors);
    const std::string_view text = stream.view();
    const std::size_t position = position_of(stream);
    if (!is_good) {
        // What is at fault was the last to be read.
        const std::size_t line = line_of(text, position > 0 ? position - 1 : 0);
        std::string reason = errors.Get("message").AsString();
        if (errors.HasKey("explain")) reason += ": " + errors.Get("explain").AsString();
        throw ReadFailure(file + ": line " + std::to_string(line) + ": " + reason);
    }
    const std::size_t more = text.find_first_not_of(" \t\r\n\v\f", position);
    if (more != std::string_view::npos) {
        input.remark = file + ": line " + std::to_string(line_of(text, more)) +
                       ": what stands behind the value is not read.";
    }
    return input;
}

using Bytes = std::span<std::uint8_t>;

struct Cipher {
    const char* form;
    void (*decipher)(Bytes bytes);
    std::size_t block;
    /// Whether part of a block at the end spoils the whole.
    bool needs_whole_blocks;
};

constexpr Cipher kCiphers[] = {
    {"binary, enciphered with Blowfish", cipher_DecipherBlowfish, kBlowfishBlock, false},
    {"binary, enciphered with AES", cipher_DecipherAes, kAesBlock, true},
};

/// Whether the head is one that a record may have: bytes under the wrong cipher hardly do.
bool has_head(Bytes record) {
    if (record.size() < kRecordHead || record[0] > MV_INT64) return false;
    const std::uint64_t length = support::load_little_endian(&record[1], kRecordHead - 1);
    return length >= kRecordHead && length <= record.size();
}

std::optional<VariantInput> read_under(const Cipher& cipher, Bytes body) {
    const std::size_t rest = body.size() % cipher.block;
    if (rest != 0 && cipher.needs_whole_blocks) return std::nullopt;
    std::vector<std::uint8_t> record(body.begin(), body.end() - static_cast<std::ptrdiff_t>(rest));
    cipher.decipher(record);
    VariantInput input;
    input.form = cipher.form;
    if (!has_head(record) || record_Read(record, input.value)) return std::nullopt;
    return input;
}

VariantInput read_sealed(const std::string& file, Bytes body) {
    for (const Cipher& cipher : kCiphers) {
        if (auto input = read_under(cipher, body)) return std::move(*input);
    }
    throw ReadFailure(
        file +
        ": enciphered, and no record comes out with either cipher: the file is damaged or cut.");
}

VariantInput read_clear(const std::string& file, Bytes body) {
    VariantInput input;
    input.form = "binary, in the clear";
    const auto fail = [&file](std::size_t at, const std::string& what) {
        throw ReadFailure(file + ": byte " + std::to_string(kHeaderSize + at) + ": " + what + ".");
    };
    if (const auto fault = record_Read(body, input.value)) fail(fault->at, fault->what);
    if (body[0] > MV_INT64) fail(0, "there is no kind " + std::to_string(body[0]));
    return input;
}

VariantInput read_binary(const std::string& file, std::string content) {
    if (content.size() <= kHeaderSize) {
        throw ReadFailure(file + ": a header of " + std::to_string(kHeaderSize) +
                          " bytes and a record are needed, and there are " +
                          std::to_string(content.size()) + " bytes.");
    }
    HeaderBytes header{};
    std::copy_n(content.begin(), kHeaderSize, header.begin());
    FileInfo info{};
    if (!header_Read(header, info)) {
        throw ReadFailure(file + ": byte 6: the header is not of version 1.");
    }
    const Bytes body(reinterpret_cast<std::uint8_t*>(content.data()) + kHeaderSize,
                     content.size() - kHeaderSize);
    return header_IsSealed(info) ? read_sealed(file, body) : read_clear(file, body);
}

}  // namespace

VariantInput read_variant(const std::string& file) {
    std::string content = content_of(file);
    return header_HasMagic(content) ? read_binary(file, std::move(content))
                                    : read_text(file, std::move(content));
}

}  // namespace zol::tool
