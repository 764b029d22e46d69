// Values in files with a header: reading the record in the clear and under either cipher,
// writing it under the first. The layout stands in docs/formats/variant-binary.md.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include "support/ciphers.h"
#include "support/file.h"
#include "support/open_file.h"
#include "support/variant.h"
#include "support/variant_header.h"

namespace {

using zol::support::OpenFile;
using Bytes = std::vector<std::uint8_t>;

/// No record is longer than 2^31 - 1 bytes; what a file holds beyond is not looked at.
constexpr std::uint64_t kMostBytes = std::uint64_t{1} << 31;

/// What stands behind the header, as it is in the file. Nothing when the file does not
/// open, the header is none, or there is nothing behind it.
std::optional<Bytes> read_body(const char* path, FileInfo& info) {
    const OpenFile file(path, GENERIC_READ, OPEN_EXISTING);
    if (!file.IsOpen()) return std::nullopt;
    info = {};
    HeaderBytes header{};
    if (file_Read(file.Handle(), header.data(), kHeaderSize) == 0 || !header_Read(header, info)) {
        return std::nullopt;
    }
    const std::uint64_t size = file_Size(file.Handle());
    if (size <= kHeaderSize) return std::nullopt;
    Bytes body(std::min(size - kHeaderSize, kMostBytes));
    body.resize(file_Read(file.Handle(), body.data(), static_cast<std::uint32_t>(body.size())));
    if (body.empty()) return std::nullopt;
    return body;
}

/// Bytes of the whole blocks that hold so many.
std::size_t blocks_for(std::size_t size) {
    return (size + kBlowfishBlock - 1) / kBlowfishBlock * kBlowfishBlock;
}

}  // namespace

MVariant::MVariant(const char* name, int form) : MVariant() {
    if (form == 0) {
        MVariant errors;
        ReadText(name, errors);
    } else if (form == 1) {
        ReadBinary(name, nullptr);
    } else {
        ReadBinarySealed(name, nullptr);
    }
}

bool MVariant::ReadBinary(const char* path, FileInfo* info) {
    FileInfo unasked;
    FileInfo& told = info != nullptr ? *info : unasked;
    auto body = read_body(path, told);
    if (!body) return false;
    if (header_IsSealed(told)) {
        // Of a block that the file has in part, what is missing counts as zeros, so a file
        // that lost its last bytes still gives what stands in the blocks before.
        body->resize(blocks_for(body->size()));
        cipher_DecipherBlowfish(*body);
    }
    FromBinary(body->data(), body->size());
    return true;
}

bool MVariant::ReadBinarySealed(const char* path, FileInfo* info) {
    FileInfo unasked;
    FileInfo& told = info != nullptr ? *info : unasked;
    auto body = read_body(path, told);
    if (!body) return false;
    if (header_IsSealed(told)) {
        if (body->size() % kAesBlock != 0) body->clear();
        cipher_DecipherAes(*body);
    }
    FromBinary(body->data(), body->size());
    return true;
}

bool MVariant::WriteSealed(const char* path, FileInfo* info) const {
    const std::uint32_t size = BinarySize();
    if (size == 0) return false;
    const OpenFile file(path, GENERIC_WRITE, CREATE_ALWAYS);
    if (!file.IsOpen()) return false;
    FileInfo unasked{};
    FileInfo& told = info != nullptr ? *info : unasked;
    std::copy_n(kSealedType, sizeof kSealedType, told.typeName);
    const HeaderBytes header = header_Write(told);
    if (file_Write(file.Handle(), header.data(), kHeaderSize) != kHeaderSize) return false;

    const auto record = ToBinary();
    Bytes padded(record.get(), record.get() + size);
    padded.resize(blocks_for(size));
    cipher_EncipherBlowfish(padded);
    file_Write(file.Handle(), padded.data(), static_cast<std::uint32_t>(padded.size()));
    return true;
}
