#include "engine/formats/sidecar_file.h"

#include <cstddef>
#include <cstdint>
#include <vector>

#include "engine/formats/file.h"
#include "engine/formats/read_error.h"

namespace zol::engine {

namespace {

// No sidecar that people write comes near; what is larger is some other JSON file.
constexpr std::uint64_t kLargestSidecar = std::uint64_t{64} << 20;

}  // namespace

std::string read_sidecar_file(const std::string& path) {
    const File file(path);
    if (file.Size() > kLargestSidecar) {
        throw ReadError("the file is too large for a sidecar");
    }
    const std::vector<std::byte> bytes = file.ReadExactly(0, file.Size());
    return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}

}  // namespace zol::engine
