#include "engine/formats/mesh/off_binary.h"

#include <algorithm>
#include <string>
#include <vector>

#include "engine/formats/byte_numbers.h"
#include "engine/formats/mesh/off_mesh.h"
#include "engine/formats/read_error.h"

namespace zol::engine {

namespace {

constexpr std::size_t kWord = 4;
constexpr std::size_t kBlock = std::size_t{1} << 18;

class BigEndianWords {
public:
    BigEndianWords(const File& file, std::uint64_t offset)
        : file_(file), block_(kBlock), offset_(offset) {}

    template <class T>
    T Next() {
        static_assert(sizeof(T) == kWord);
        if (at_ == filled_) Fill();
        const T value = load_number<T>(block_.data() + at_, ByteOrder::Big);
        at_ += kWord;
        return value;
    }

    std::uint64_t Offset() const { return offset_ + at_; }

private:
    void Fill() {
        offset_ += filled_;
        const std::size_t count = file_.ReadAt(offset_, block_.data(), block_.size());
        at_ = 0;
        filled_ = count / kWord * kWord;
        if (filled_ == 0) {
            throw ReadError("the file ends at byte " + std::to_string(offset_ + count) +
                            ", before all that its header states");
        }
    }

    const File& file_;
    std::vector<std::byte> block_;
    std::uint64_t offset_;
    std::size_t at_ = 0;
    std::size_t filled_ = 0;
};

}  // namespace

MeshData read_binary_off(const File& file, const OffKind& kind, std::uint64_t offset) {
    BigEndianWords words(file, offset);
    OffMesh mesh([&] { return "byte " + std::to_string(words.Offset()); });
    if (kind.states_dimensions && words.Next<std::int32_t>() != 3) {
        mesh.Refuse("its points are not of three dimensions");
    }
    const std::int64_t vertices = words.Next<std::int32_t>();
    const std::int64_t faces = words.Next<std::int32_t>();
    words.Next<std::int32_t>();
    const std::size_t numbers = kind.PlainNumbers() + (kind.has_colour ? 4 : 0);
    const std::uint64_t bytes_left = file.Size() - std::min(file.Size(), words.Offset());
    // The least face has its counts of corners and of colours, and three corners.
    check_off_counts(vertices, faces, bytes_left, kWord * numbers, kWord * 5);
    std::vector<double> vertex(numbers);
    for (std::int64_t i = 0; i < vertices; ++i) {
        for (double& number : vertex) number = double{words.Next<float>()};
        mesh.AddPoint({vertex[0], vertex[1], vertex[2]}, kind.is_weighted ? vertex[3] : 1);
    }
    std::vector<double> colour;
    for (std::int64_t i = 0; i < faces; ++i) {
        mesh.BeginFace();
        const auto corners = words.Next<std::int32_t>();
        for (std::int32_t corner = 0; corner < corners; ++corner) {
            mesh.AddCorner(words.Next<std::int32_t>());
        }
        const auto parts = words.Next<std::int32_t>();
        if (parts < 0 || parts > 4 || parts == 2) {
            mesh.Refuse("a face has a colour of " + std::to_string(parts) + " numbers");
        }
        colour.clear();
        for (std::int32_t part = 0; part < parts; ++part) {
            colour.push_back(double{words.Next<float>()});
        }
        mesh.EndFace(colour, false);
    }
    if (words.Offset() != file.Size()) {
        mesh.Refuse("there is more behind the last face that the header counts");
    }
    return mesh.Finish(file, "OFF binary");
}

}  // namespace zol::engine
