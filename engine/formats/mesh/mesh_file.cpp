#include "engine/formats/mesh/mesh_file.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <vector>

#include "engine/formats/file.h"
#include "engine/formats/mesh/obj_file.h"
#include "engine/formats/mesh/off_file.h"
#include "engine/formats/mesh/off_header.h"
#include "engine/formats/mesh/omf1_surface.h"
#include "engine/formats/mesh/ply_file.h"
#include "engine/formats/mesh/ply_header.h"
#include "engine/formats/mesh/stl_file.h"
#include "engine/formats/mesh/tsurf_file.h"
#include "engine/formats/omf1_file.h"
#include "engine/formats/read_error.h"
#include "engine/formats/text_lines.h"

namespace zol::engine {

namespace {

using namespace std::string_view_literals;

// Comments may stand in front of what tells a text apart.
constexpr std::size_t kHeadSize = 4096;

constexpr std::string_view kMark = "\xEF\xBB\xBF"sv;

struct Refusal {
    std::string_view first_bytes;
    const char* reason;
};

constexpr std::array kRefusals = {
    Refusal{"PK\x03\x04"sv, "it is a zip archive; of OMF files only those of version 1 are read"},
    Refusal{"PK\x05\x06"sv, "it is an empty zip archive"},
    Refusal{"\x1f\x8b"sv, "it is compressed; decompress it first"},
    Refusal{"\xFF\xFE\0\0"sv, "the text is UTF-32; save it as UTF-8"},
    Refusal{"\0\0\xFE\xFF"sv, "the text is UTF-32; save it as UTF-8"},
    Refusal{"\xFF\xFE"sv, "the text is UTF-16; save it as UTF-8"},
    Refusal{"\xFE\xFF"sv, "the text is UTF-16; save it as UTF-8"},
    Refusal{"{"sv, "it is JSON; a sidecar is read with the mesh that it stands beside, open that"},
    Refusal{"<"sv, "it is XML, in which no mesh is read"},
};

/// The first line that is neither empty nor a comment.
std::string_view first_statement(std::string_view head) {
    while (!head.empty()) {
        const std::size_t end = std::min(head.find_first_of("\r\n"), head.size());
        const std::string_view line = without_blanks(head.substr(0, end));
        if (!line.empty() && !line.starts_with('#')) return line;
        head.remove_prefix(std::min(end + 1, head.size()));
    }
    return {};
}

bool is_gocad(std::string_view head) {
    std::string_view line = first_statement(head);
    return is_same_word(take_word(line), "GOCAD");
}

bool is_off(std::string_view head) {
    std::string_view line = first_statement(head);
    return take_off_word(line).has_value();
}

bool is_obj(std::string_view head) {
    constexpr std::array kWords = {"v"sv, "vn"sv, "vt"sv, "f"sv,      "o"sv,
                                   "g"sv, "s"sv,  "l"sv,  "mtllib"sv, "usemtl"sv};
    std::string_view line = first_statement(head);
    return std::find(kWords.begin(), kWords.end(), take_word(line)) != kWords.end();
}

using Reader = MeshData (*)(const File& file);

struct Signature {
    bool (*is_of)(std::string_view head);
    Reader read;
};

constexpr std::array kSignatures = {
    Signature{is_ply, read_ply},
    Signature{is_gocad, read_tsurf},
    Signature{is_text_stl, read_stl},
    Signature{is_off, read_off},
};

struct Ending {
    std::string_view text;
    Reader read;
};

constexpr std::array kEndings = {
    Ending{".obj"sv, read_obj}, Ending{".stl"sv, read_stl},  Ending{".ply"sv, read_ply},
    Ending{".off"sv, read_off}, Ending{".ts"sv, read_tsurf},
};

Reader reader_for(const File& file, std::string_view head) {
    if (is_binary_stl(file)) return read_stl;
    for (const Refusal& refusal : kRefusals) {
        if (head.starts_with(refusal.first_bytes)) throw ReadError(refusal.reason);
    }
    if (head.starts_with(kMark)) head.remove_prefix(kMark.size());
    for (const Signature& signature : kSignatures) {
        if (signature.is_of(head)) return signature.read;
    }
    const std::string_view path = file.Path();
    for (const Ending& ending : kEndings) {
        if (path.size() >= ending.text.size() &&
            is_same_word(path.substr(path.size() - ending.text.size()), ending.text)) {
            return ending.read;
        }
    }
    if (is_obj(head)) return read_obj;
    throw ReadError(
        "neither its content nor its ending is that of a mesh; OBJ, STL, PLY, OFF, GOCAD TSurf "
        "and OMF 1 are read");
}

}  // namespace

MeshData read_mesh(const FileName& name) {
    if (is_url(name.path) && !File::Exists(name.path)) {
        throw ReadError("it is the address of something on a network, not a file");
    }
    const File file(name.path);
    if (file.Size() == 0) throw ReadError("the file is empty");
    std::vector<char> bytes(kHeadSize);
    const std::string_view head(bytes.data(), file.ReadAt(0, bytes.data(), bytes.size()));
    MeshData mesh;
    if (is_omf1(head)) {
        mesh = read_omf1_surface(file, name.element);
    } else {
        const Reader read = reader_for(file, head);
        if (!name.element.empty()) {
            throw ReadError(
                "files of this format have no elements to choose from; open it "
                "without \"#" +
                name.element + "\"");
        }
        mesh = read(file);
    }
    if (mesh.points.IsEmpty()) throw ReadError("it has no points");
    return mesh;
}

MeshData read_mesh(const std::string& name) {
    return read_mesh(split_file_name(name, File::Exists));
}

}  // namespace zol::engine
