// Reads a mesh through the flat library and through others, points of an STL merged. Says
// in one line of JSON what it cost: processor seconds, and megabytes above those of the
// process before.
//
//   mesh_read zol|assimp|vtk FILE.obj|FILE.stl
#include <assimp/postprocess.h>
#include <assimp/scene.h>
#include <vtkCellArray.h>
#include <vtkNew.h>
#include <vtkOBJReader.h>
#include <vtkPolyData.h>
#include <vtkSTLReader.h>

#include <assimp/Importer.hpp>
#include <cstdio>
#include <string>
#include <string_view>

#include "api/zolExportedApi_ReadOnly.h"
#include "bench/mesh_points.h"

namespace {

struct Counts {
    long long points = 0;
    long long triangles = 0;
};

Counts read_with_us(const std::string& name) {
    TriangulationHandle* const mesh = ZOL_Triangulation_Open(name.c_str());
    if (mesh == nullptr) return {};
    // Left open, so that its memory is in the peak as that of the others is.
    return {ZOL_Triangulation_NumPoints(mesh), ZOL_Triangulation_NumTriangles(mesh)};
}

Counts read_with_assimp(const std::string& name) {
    Assimp::Importer importer;
    // An OBJ tells which corners are one point, and is not searched for more of them.
    const unsigned steps = name.ends_with(".stl") ? aiProcess_JoinIdenticalVertices : 0U;
    const aiScene* const scene = importer.ReadFile(name, steps);
    Counts counts;
    if (scene == nullptr) return counts;
    for (unsigned i = 0; i < scene->mNumMeshes; ++i) {
        counts.points += scene->mMeshes[i]->mNumVertices;
        counts.triangles += scene->mMeshes[i]->mNumFaces;
    }
    return counts;
}

template <class Reader>
Counts read_with_vtk(const std::string& name) {
    const vtkNew<Reader> reader;
    reader->SetFileName(name.c_str());
    reader->Update();
    return {reader->GetOutput()->GetNumberOfPoints(), reader->GetOutput()->GetNumberOfPolys()};
}

Counts read(std::string_view who, const std::string& name) {
    if (who == "zol") return read_with_us(name);
    if (who == "assimp") return read_with_assimp(name);
    if (who != "vtk") bench::fail("usage: mesh_read zol|assimp|vtk FILE.obj|FILE.stl");
    return name.ends_with(".stl") ? read_with_vtk<vtkSTLReader>(name)
                                  : read_with_vtk<vtkOBJReader>(name);
}

}  // namespace

int main(int argc, char** argv) {
    const std::string_view who = argc == 3 ? argv[1] : "";
    const std::string name = argc == 3 ? argv[2] : "";
    ZOL_API_Init();
    const double before = bench::peak_megabytes();
    Counts counts;
    const double seconds = bench::timed([&] { counts = read(who, name); });
    if (counts.triangles == 0) bench::fail("mesh_read: can't read " + name);
    std::printf("{\"read_s\": %.4f, \"peak_mb\": %.1f, \"points\": %lld, \"triangles\": %lld}\n",
                seconds, bench::peak_megabytes() - before, counts.points, counts.triangles);
    return 0;
}
