// Finds the reader of a grid file.
#include "engine/grid/source.h"

#include <array>
#include <cctype>
#include <string_view>
#include <utility>

#include "engine/formats/file.h"
#include "engine/formats/read_error.h"
#include "engine/grid/netcdf_header.h"
#include "engine/grid/omf1_source.h"
#include "engine/grid/raster_library.h"

namespace zol::engine::grid {

namespace {

using namespace std::string_view_literals;

constexpr std::string_view kOmf1 = "\x84\x83\x82\x81"sv;

struct Refusal {
    std::string_view first_bytes;
    const char* reason;
};

// A description of a mosaic reads from whatever it names: pipes that never answer, the
// network, the memory of this process.
constexpr std::array kRefusals = {
    Refusal{"<VRTDataset"sv,
            "it is a description of a raster that is made of other files; name one of these, or "
            "make one file of them by gdal_translate"},
    Refusal{"PK\x03\x04"sv,
            "it is a zip archive; of OMF files only those of version 1 are read, and a raster in "
            "an archive is named /vsizip/archive.zip/raster.tif"},
    Refusal{"PK\x05\x06"sv, "it is an empty zip archive"},
    Refusal{"\x1f\x8b"sv, "it is compressed; decompress it, or name it /vsigzip/raster.asc.gz"},
};

/// The file behind a name and what it carries after '#'.
struct Place {
    std::string path;
    std::string element;
};

bool is_url(std::string_view name) {
    const std::size_t colon = name.find("://");
    if (colon == 0 || colon == name.npos) {
        return false;
    }
    for (const char c : name.substr(0, colon)) {
        if (std::isalnum(static_cast<unsigned char>(c)) == 0 && c != '+' && c != '-' && c != '.') {
            return false;
        }
    }
    return true;
}

template <typename Exists>
Place place_of(const std::string& name, const Exists& exists) {
    const std::size_t mark = name.rfind('#');
    if (mark == name.npos || exists(name)) {
        return {name, {}};
    }
    return {name.substr(0, mark), name.substr(mark + 1)};
}

Source read(const std::string& path, const std::string& element) {
    const auto file = std::make_shared<const File>(path);
    std::array<char, 16> bytes{};
    const std::string_view head(bytes.data(), file->ReadAt(0, bytes.data(), bytes.size()));
    if (head.empty()) {
        throw ReadError("the file is empty");
    }
    if (head.starts_with(kOmf1)) {
        return open_omf1(file, element);
    }
    for (const Refusal& refusal : kRefusals) {
        if (head.starts_with(refusal.first_bytes)) {
            throw ReadError(refusal.reason);
        }
    }
    check_netcdf_header(*file);
    return raster_reader().open(file, element);
}

}  // namespace

Source open_source(const std::string& name) {
    if (name.starts_with("/vsi")) {
        const Place place = place_of(name, raster_reader().is_virtual_file);
        return raster_reader().open_virtual(place.path, place.element);
    }
    const Place place = place_of(name, File::Exists);
    if (is_url(place.path) && !File::Exists(place.path)) {
        throw ReadError(
            "it is the address of something on a network, not a file; GDAL's virtual "
            "file of it is named /vsicurl/" +
            place.path);
    }
    return read(place.path, place.element);
}

}  // namespace zol::engine::grid
