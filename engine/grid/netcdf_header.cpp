#include "engine/grid/netcdf_header.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "engine/formats/byte_numbers.h"
#include "engine/formats/read_error.h"

namespace zol::engine::grid {

namespace {

// Names and attributes; real ones are some kilobytes.
constexpr std::uint64_t kLongestHeader = std::uint64_t{64} << 20;

// Bytes of a value by its type code; 0 is none.
constexpr std::array<std::uint64_t, 12> kTypeBytes = {0, 1, 1, 2, 4, 4, 8, 1, 2, 4, 8, 8};

/// Walks the header, all of whose numbers are big-endian:
///
///     magic  numrecs  dimensions  attributes  variables
///     list      = tag (4 bytes), count, items
///     dimension = name, length
///     attribute = name, type (4), count, values
///     variable  = name, count, dimension ids, attributes, type (4), size, offset
///     name      = count, bytes
///
/// Bytes and values are padded to a multiple of 4. Counts, lengths, sizes and ids take 8
/// bytes in form 5, else 4; offsets take 4 in form 1, else 8.
class HeaderWalk {
public:
    HeaderWalk(const File& file, char form)
        : file_(file), count_bytes_(form == 5 ? 8 : 4), offset_bytes_(form == 1 ? 4 : 8) {}

    void Run() {
        const bool has_records = Number(count_bytes_) > 0;
        for (std::uint64_t left = ListCount(); left > 0; --left) {
            SkipName();
            lengths_.push_back(Number(count_bytes_));
        }
        SkipAttributes();
        for (std::uint64_t left = ListCount(); left > 0; --left) {
            SkipName();
            bool is_by_record = false;
            const std::uint64_t values = ValuesOfVariable(is_by_record);
            SkipAttributes();
            const std::uint64_t value_bytes = TypeBytes();
            // The size that the header states is known to be wrong in large files.
            Skip(count_bytes_);
            const std::uint64_t start = Number(offset_bytes_);
            if (is_by_record && !has_records) {
                continue;
            }
            if (start > file_.Size() || values > (file_.Size() - start) / value_bytes) {
                throw ReadError("its netCDF header claims " + std::to_string(values) +
                                " values from byte " + std::to_string(start) +
                                " on, the file ends at byte " + std::to_string(file_.Size()));
            }
        }
    }

private:
    [[noreturn]] void Refuse() const {
        throw ReadError("its netCDF header claims more at byte " + std::to_string(at_) +
                        " than the file holds");
    }

    void Skip(std::uint64_t bytes) {
        const std::uint64_t end = std::min(file_.Size(), kLongestHeader);
        if (at_ > end || bytes > end - at_) {
            Refuse();
        }
        at_ += bytes;
    }

    void SkipItems(std::uint64_t count, std::uint64_t bytes_each) {
        if (count > kLongestHeader) {
            Refuse();
        }
        Skip((count * bytes_each + 3) / 4 * 4);
    }

    /// Of 8 bytes or 4.
    std::uint64_t Number(std::uint64_t bytes) {
        const std::uint64_t start = at_;
        Skip(bytes);
        std::array<std::byte, 8> read{};
        file_.ReadAt(start, read.data(), bytes);
        return bytes == read.size() ? load_number<std::uint64_t>(read.data(), ByteOrder::Big)
                                    : load_number<std::uint32_t>(read.data(), ByteOrder::Big);
    }

    /// Of the items, each of which is at least a name long.
    std::uint64_t ListCount() {
        Skip(4);
        const std::uint64_t count = Number(count_bytes_);
        if (count > file_.Size() / count_bytes_) {
            Refuse();
        }
        return count;
    }

    void SkipName() { SkipItems(Number(count_bytes_), 1); }

    std::uint64_t TypeBytes() {
        const std::uint64_t type = Number(4);
        if (type == 0 || type >= kTypeBytes.size()) {
            throw ReadError("its netCDF header has values of the unknown type " +
                            std::to_string(type));
        }
        return kTypeBytes[type];
    }

    void SkipAttributes() {
        for (std::uint64_t left = ListCount(); left > 0; --left) {
            SkipName();
            const std::uint64_t value_bytes = TypeBytes();
            SkipItems(Number(count_bytes_), value_bytes);
        }
    }

    /// Of one that grows by records, the values of one record.
    std::uint64_t ValuesOfVariable(bool& is_by_record) {
        std::uint64_t values = 1;
        std::uint64_t dimensions = Number(count_bytes_);
        for (; dimensions > 0; --dimensions) {
            const std::uint64_t id = Number(count_bytes_);
            if (id >= lengths_.size()) {
                Refuse();
            }
            // 0 stands for the records, which the file may have none of yet.
            is_by_record = is_by_record || lengths_[id] == 0;
            const std::uint64_t length = std::max<std::uint64_t>(lengths_[id], 1);
            if (length > file_.Size() / values) {
                Refuse();
            }
            values *= length;
        }
        return values;
    }

    const File& file_;
    std::uint64_t count_bytes_;
    std::uint64_t offset_bytes_;
    std::vector<std::uint64_t> lengths_;
    // Behind the magic.
    std::uint64_t at_ = 4;
};

}  // namespace

void check_netcdf_header(const File& file) {
    std::array<char, 4> magic{};
    if (file.ReadAt(0, magic.data(), magic.size()) != magic.size() || magic[0] != 'C' ||
        magic[1] != 'D' || magic[2] != 'F' || (magic[3] != 1 && magic[3] != 2 && magic[3] != 5)) {
        return;
    }
    HeaderWalk(file, magic[3]).Run();
}

}  // namespace zol::engine::grid
