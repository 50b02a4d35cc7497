#include "files/obj/MeshWelding.h"

#include <cstring>
#include <string_view>
#include <unordered_set>
#include <utility>

namespace files::obj
{

namespace
{

/// Calls `visit` with the bytes of each thing that a vertex carries.
template <class Visitor>
void visitVertex(const osg::MeshArrays& arrays, std::uint32_t vertex, Visitor visit)
{
    const auto bytesIn = [&](const auto& array) {
        if (!array.empty())
            visit(std::string_view(reinterpret_cast<const char*>(&array[vertex]), sizeof(array[vertex])));
    };
    bytesIn(arrays.positions);
    bytesIn(arrays.normals);
    bytesIn(arrays.texCoords);
    bytesIn(arrays.colors);
}

struct VertexHash {
    const osg::MeshArrays* arrays;
    std::size_t operator()(std::uint32_t vertex) const
    {
        std::size_t hash = 0;
        visitVertex(*arrays, vertex, [&](std::string_view bytes) {
            hash = hash * 0x9E3779B97F4A7C15u + std::hash<std::string_view>()(bytes);
        });
        return hash;
    }
};

template <class T>
bool same(const std::vector<T>& array, std::uint32_t a, std::uint32_t b)
{
    return array.empty() || std::memcmp(&array[a], &array[b], sizeof(T)) == 0;
}

struct VertexEqual {
    const osg::MeshArrays* arrays;
    bool operator()(std::uint32_t a, std::uint32_t b) const
    {
        return same(arrays->positions, a, b) && same(arrays->normals, a, b) && same(arrays->texCoords, a, b) &&
               same(arrays->colors, a, b);
    }
};

/// The vertices that stay, in order, and for each vertex the new index.
struct Welding {
    std::vector<std::uint32_t> kept;
    std::vector<std::uint32_t> newIndex;
};

Welding weld(const osg::MeshArrays& arrays)
{
    Welding result;
    result.newIndex.resize(arrays.positions.size());
    std::unordered_set<std::uint32_t, VertexHash, VertexEqual> seen(0, VertexHash{&arrays}, VertexEqual{&arrays});
    for (std::uint32_t vertex = 0; vertex < arrays.positions.size(); ++vertex) {
        const auto [place, isNew] = seen.insert(vertex);
        if (isNew) {
            result.newIndex[vertex] = static_cast<std::uint32_t>(result.kept.size());
            result.kept.push_back(vertex);
        } else {
            result.newIndex[vertex] = result.newIndex[*place];
        }
    }
    return result;
}

/// `kept` rises, so that the array can be packed where it is.
template <class T>
void keep(std::vector<T>& array, const std::vector<std::uint32_t>& kept)
{
    if (array.empty())
        return;
    for (std::size_t i = 0; i < kept.size(); ++i)
        array[i] = array[kept[i]];
    array.resize(kept.size());
    array.shrink_to_fit();
}

void renumber(std::vector<std::uint32_t>& indices, const std::vector<std::uint32_t>& newIndex)
{
    for (std::uint32_t& index : indices)
        index = newIndex[index];
}

} // namespace

osg::Mesh weldedMesh(osg::MeshArrays arrays)
{
    const Welding welding = weld(arrays);
    keep(arrays.positions, welding.kept);
    keep(arrays.normals, welding.kept);
    keep(arrays.texCoords, welding.kept);
    keep(arrays.colors, welding.kept);
    for (std::vector<std::uint32_t>* indices : {&arrays.triangles, &arrays.lines, &arrays.points})
        renumber(*indices, welding.newIndex);
    return osg::meshOf(std::move(arrays));
}

} // namespace files::obj
