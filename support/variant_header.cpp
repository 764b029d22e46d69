#include "support/variant_header.h"

#include <algorithm>
#include <charconv>

#include "support/little_endian.h"

namespace {

using zol::support::load_little_endian;
using zol::support::store_little_endian;

constexpr std::string_view kMagic = "ZELMAR001";
constexpr std::size_t kMagicLetters = 6;
constexpr std::int32_t kVersion = 1;
constexpr std::uint32_t kIsOtherByteOrder = 1;

struct Field {
    std::size_t offset;
    std::size_t size;
    char (FileInfo::*text)[40];
};

constexpr Field kTexts[] = {
    {10, 11, &FileInfo::auxName1},
    {21, 11, &FileInfo::typeName},
    {32, 44, &FileInfo::auxName2},
};
constexpr std::size_t kByteOrderMark = 76;
constexpr std::size_t kSizeOfHeader = 80;
constexpr std::size_t kNumber = 4;

std::string_view text_in(const char* characters, std::size_t size) {
    const char* end = std::find(characters, characters + size, '\0');
    return {characters, static_cast<std::size_t>(end - characters)};
}

/// Zeros the whole field; at least its last byte stays zero.
template <typename Byte>
void put_text(std::string_view text, Byte* field, std::size_t size) {
    std::fill_n(field, size, Byte{});
    std::copy_n(text.begin(), std::min(text.size(), size - 1), field);
}

/// As atoi reads a number: behind blanks and a sign, up to the first other byte. 0 for none
/// and for one that is too large.
std::int32_t leading_number(std::string_view text) {
    text.remove_prefix(std::min(text.find_first_not_of(" \t\n\v\f\r"), text.size()));
    if (text.starts_with('+')) text.remove_prefix(1);
    std::int32_t number = 0;
    std::from_chars(text.data(), text.data() + text.size(), number);
    return number;
}

}  // namespace

bool header_HasMagic(std::string_view content) {
    return content.starts_with(kMagic.substr(0, kMagicLetters));
}

bool header_Read(const HeaderBytes& bytes, FileInfo& info) {
    info = {};
    const std::string_view text(reinterpret_cast<const char*>(bytes.data()), bytes.size());
    if (!header_HasMagic(text) || leading_number(text.substr(kMagicLetters)) != kVersion) {
        return false;
    }
    info.version = kVersion;
    for (const Field& field : kTexts) {
        put_text(text_in(text.data() + field.offset, field.size), info.*field.text,
                 sizeof(info.*field.text));
    }
    if (load_little_endian(&bytes[kByteOrderMark], kNumber) != 1) info.flags |= kIsOtherByteOrder;
    info.headerSize = static_cast<std::int32_t>(kHeaderSize);
    return true;
}

HeaderBytes header_Write(const FileInfo& info) {
    HeaderBytes bytes{};
    std::copy(kMagic.begin(), kMagic.end(), bytes.begin());
    for (const Field& field : kTexts) {
        put_text(text_in(info.*field.text, sizeof(info.*field.text)), &bytes[field.offset],
                 field.size);
    }
    store_little_endian(1, &bytes[kByteOrderMark], kNumber);
    store_little_endian(kHeaderSize, &bytes[kSizeOfHeader], kNumber);
    return bytes;
}

bool header_IsSealed(const FileInfo& info) {
    return text_in(info.typeName, sizeof info.typeName).starts_with(kSealedType);
}
