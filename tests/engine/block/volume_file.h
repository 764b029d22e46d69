// Builds OMF 1 files with one volume, and opens them.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "engine/block/omf1_source.h"
#include "engine/formats/read_error.h"
#include "tests/engine/omf1_writer.h"
#include "tests/engine/temporary_file.h"

namespace zol::engine::block {

using testing_support::Omf1Writer;
using testing_support::TemporaryFile;

/// A file with one volume of 3 x 2 x 1 cells, unless told otherwise.
struct VolumeFile {
    Omf1Writer writer;
    std::string project;
    std::string geometry = R"("tensor_u":[10,10,10],"tensor_v":[5,5],"tensor_w":[2])";
    std::string data;

    /// Data on cells over an array object; `array` is the JSON of its member.
    void Add(const std::string& data_class, const std::string& name, const std::string& array_class,
             const std::string& array, const std::string& more = "") {
        const std::string key = "d" + std::to_string(n_data_++);
        writer.Object("a" + key, array_class, "\"array\":" + array);
        AddOver(data_class, name, "a" + key, more);
    }
    void AddOver(const std::string& data_class, const std::string& name,
                 const std::string& array_key, const std::string& more = "") {
        const std::string key = "x" + std::to_string(n_data_++);
        std::string members = "\"name\":\"" + name + "\",\"array\":\"" + array_key + "\"";
        if (more.find("\"location\"") == std::string::npos) members += ",\"location\":\"cells\"";
        if (!more.empty()) members += "," + more;
        writer.Object(key, data_class, members);
        data += (data.empty() ? "\"" : ",\"") + key + "\"";
    }

    std::string Bytes() const {
        Omf1Writer whole = writer;
        whole.Object("p", "Project", R"("elements":["s","v"])" + project);
        whole.Object("s", "SurfaceElement", R"("name":"topo")");
        whole.Object("v", "VolumeElement", R"("name":"ore","geometry":"g","data":[)" + data + "]");
        whole.Object("g", "VolumeGridGeometry", geometry);
        return whole.Bytes();
    }

private:
    int n_data_ = 0;
};

inline Source open_stored(const TemporaryFile& stored, const std::string& element = "") {
    return open_omf1(std::make_shared<File>(stored.Path()), element);
}

inline Source open(const VolumeFile& volume, const std::string& element = "") {
    // The source keeps the file open after its name is gone.
    return open_stored(TemporaryFile(volume.Bytes()), element);
}

inline std::string fault_of_stored(const TemporaryFile& stored, const std::string& element = "") {
    try {
        open_stored(stored, element);
    } catch (const ReadError& error) {
        return error.what();
    }
    return "no fault";
}

inline std::string fault_of(const VolumeFile& volume, const std::string& element = "",
                            const std::string& sidecar = "") {
    TemporaryFile stored(volume.Bytes());
    if (!sidecar.empty()) stored.WriteSidecar(sidecar);
    return fault_of_stored(stored, element);
}

inline std::vector<std::string> names_of(const Source& source) {
    std::vector<std::string> names;
    for (const Variable& variable : source.variables) names.push_back(variable.name);
    return names;
}

}  // namespace zol::engine::block
