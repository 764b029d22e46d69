// What stands in front of the points of a TSurf: its header, its coordinate system, its
// properties.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "engine/formats/mesh/mesh_data.h"
#include "engine/formats/text_lines.h"

namespace zol::engine {

class TsurfHeader {
public:
    /// `lines` and `mesh`, which gets the attributes, must outlive this.
    TsurfHeader(TextLines& lines, const std::string& path, MeshData& mesh)
        : lines_(lines), path_(path), mesh_(mesh) {}

    /// Reads what a keyword begins, perhaps over several lines; passes over one that belongs
    /// to no header.
    void Read(std::string_view keyword, std::string_view rest);

    MeshLook Look() const;
    bool IsDepth() const { return is_depth_; }

private:
    void ReadBlock(std::string_view rest, bool is_wanted);
    void ReadKey(std::string_view text);
    void ReadCoordinateSystem();
    void CheckRoom() const;

    TextLines& lines_;
    const std::string& path_;
    MeshData& mesh_;
    MeshLook look_;
    std::optional<double> transparency_;
    bool is_depth_ = false;
};

}  // namespace zol::engine
