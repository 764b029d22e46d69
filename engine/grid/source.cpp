// Finds the reader of a grid file.
#include "engine/grid/source.h"

#include <array>
#include <string_view>

#include "engine/formats/file.h"
#include "engine/formats/file_name.h"
#include "engine/formats/omf1_file.h"
#include "engine/formats/read_error.h"
#include "engine/grid/netcdf_header.h"
#include "engine/grid/omf1_source.h"
#include "engine/grid/raster_library.h"

namespace zol::engine::grid {

namespace {

using namespace std::string_view_literals;

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

Source read(const std::string& path, const std::string& element) {
    const auto file = std::make_shared<const File>(path);
    std::array<char, 16> bytes{};
    const std::string_view head(bytes.data(), file->ReadAt(0, bytes.data(), bytes.size()));
    if (head.empty()) {
        throw ReadError("the file is empty");
    }
    if (is_omf1(head)) {
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
        const FileName place = split_file_name(name, raster_reader().is_virtual_file);
        return raster_reader().open_virtual(place.path, place.element);
    }
    const FileName place = split_file_name(name, File::Exists);
    if (is_url(place.path) && !File::Exists(place.path)) {
        throw ReadError(
            "it is the address of something on a network, not a file; GDAL's virtual "
            "file of it is named /vsicurl/" +
            place.path);
    }
    return read(place.path, place.element);
}

}  // namespace zol::engine::grid
