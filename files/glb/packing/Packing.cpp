#include "files/glb/packing/Packing.h"

#include "files/glb/packing/InstanceArrays.h"
#include "files/glb/packing/VertexOrder.h"

#include <algorithm>
#include <map>
#include <numeric>
#include <tuple>

namespace files::glb::packing
{

namespace
{

/// In a scene that is smaller than this many errors, less is allowed: it would fall together.
constexpr double errorsOfScene = 2048;

/// The accessor of indices, and how they are used.
struct IndexUse {
    std::size_t accessor = 0;
    bool areTriangles = false;
    std::vector<std::size_t> parts;
};

/// The primitives with the same attributes on the same grid, and their indices.
struct VertexSet {
    Json attributes;
    PositionGrid grid;
    std::vector<IndexUse> indices;
    std::vector<std::size_t> newIndices; ///< in the packed file
    std::vector<Json*> primitives;
    std::vector<std::size_t> listOfPrimitive;
};

/// Packs the meshes of a file.
class Packer
{
public:
    Packer(PackedFile& file, const PackOptions& options) : m_file(file), m_options(options) {}

    Packed run(double millimetres);

private:
    void planGrids(double millimetres);
    std::vector<VertexSet> vertexSets();
    void add(VertexSet& set);
    void placeMeshes();
    std::vector<std::string> extensions() const;

    PackedFile& m_file;
    const PackOptions& m_options;
    std::vector<PositionGrid> m_grids; ///< by mesh
    double m_error = 0;
    PackedStreams m_streams;
};

/// How many indices each part of merged triangles has; empty for others.
std::vector<std::size_t> partsOf(const Json& primitive)
{
    const Json::json_pointer parts("/extras/parts");
    std::vector<std::size_t> sizes;
    if (primitive.contains(parts))
        for (const Json& part : primitive.at(parts))
            sizes.push_back(part.at(1).get<std::size_t>() * 3);
    return sizes;
}

bool isMerged(const Json& mesh)
{
    return mesh.at("primitives").at(0).contains(Json::json_pointer("/extras/parts"));
}

/// Of each mesh the one that it is a lower level of, or itself.
std::vector<std::size_t> finestMeshes(const PackedFile& file)
{
    std::vector<std::size_t> finest(file.meshes.size());
    std::iota(finest.begin(), finest.end(), std::size_t(0));
    for (const Json& node : file.nodes)
        for (const std::size_t level : levelsOf(node))
            finest[file.nodes[level].at("mesh").get<std::size_t>()] = node.at("mesh").get<std::size_t>();
    return finest;
}

void Packer::planGrids(double millimetres)
{
    m_grids.resize(m_file.meshes.size());
    if (!m_options.quantize)
        return;
    const std::vector<Box> boxes = boxesOf(m_file);
    const std::vector<std::size_t> finest = finestMeshes(m_file);
    const MeshPlaces places = placesOfMeshes(m_file, boxes);
    const double allowed = std::min(m_options.error / millimetres, places.extent / errorsOfScene);
    for (std::size_t i = 0; i < boxes.size(); ++i) {
        m_grids[i] = gridFor(boxes[finest[i]], allowed / places.scales[finest[i]],
                             isMerged(m_file.meshes[finest[i]]) ? GridOf::Merged : GridOf::Part);
        m_error = std::max(m_error, m_grids[i].error() * places.scales[i]);
    }
}

std::vector<VertexSet> Packer::vertexSets()
{
    std::vector<VertexSet> sets;
    std::map<std::pair<std::string, PositionGrid>, std::size_t> numbers;
    std::map<std::tuple<std::size_t, std::size_t, bool>, std::size_t> lists;
    for (std::size_t mesh = 0; mesh < m_file.meshes.size(); ++mesh)
        for (Json& primitive : m_file.meshes[mesh]["primitives"]) {
            const Json& attributes = primitive["attributes"];
            const auto [number, isNewSet] = numbers.try_emplace({attributes.dump(), m_grids[mesh]}, sets.size());
            if (isNewSet)
                sets.push_back({attributes, m_grids[mesh], {}, {}, {}, {}});
            VertexSet& set = sets[number->second];
            const auto accessor = primitive["indices"].get<std::size_t>();
            const bool areTriangles = primitive.value("mode", 4) == 4;
            const auto [list, isNewList] =
                lists.try_emplace({number->second, accessor, areTriangles}, set.indices.size());
            if (isNewList)
                set.indices.push_back(
                    {accessor, areTriangles, areTriangles ? partsOf(primitive) : std::vector<std::size_t>()});
            set.primitives.push_back(&primitive);
            set.listOfPrimitive.push_back(list->second);
        }
    return sets;
}

void Packer::add(VertexSet& set)
{
    std::vector<VertexStream> streams;
    for (const auto& [name, accessor] : set.attributes.items())
        streams.push_back(streamOf(name, m_file, m_file.accessors[accessor.get<std::size_t>()], set.grid, m_options));
    std::vector<IndexList> lists;
    for (const IndexUse& use : set.indices)
        lists.push_back({use.areTriangles, indicesOf(m_file, m_file.accessors[use.accessor]), use.parts});
    orderVertices(streams, lists, m_options);
    for (VertexStream& stream : streams)
        if (stream.name == "POSITION")
            tellBounds(stream);
    const std::size_t vertices = streams.front().count();
    for (VertexStream& stream : streams)
        set.attributes[stream.name] =
            m_streams.addVertices(stream.name, stream.width, stream.filter, stream.bytes, stream.accessor);
    for (const IndexList& list : lists)
        set.newIndices.push_back(m_streams.addIndices(list.indices, vertices, list.areTriangles));
    for (std::size_t i = 0; i < set.primitives.size(); ++i) {
        (*set.primitives[i])["attributes"] = set.attributes;
        (*set.primitives[i])["indices"] = set.newIndices[set.listOfPrimitive[i]];
    }
}

/// A node takes the transform of the grid itself where its place stays what it is: it has nothing else below it, and
/// the grid has the origin of the mesh, or the node has no place.
bool canTakeTransform(const Json& node, const PositionGrid& grid)
{
    const auto has = [&](const char* member) { return node.contains(member); };
    const bool isPlaced = has("matrix") || has("translation") || has("rotation") || has("scale");
    return !has("children") && !has("camera") && !node.contains(Json::json_pointer("/extras/shown")) &&
           (grid.isSigned || !isPlaced);
}

void addTransform(Json& node, const PositionGrid& grid)
{
    if (const auto matrix = node.find("matrix"); matrix != node.end()) {
        for (std::size_t i = 0; i < 12; ++i)
            (*matrix)[i] = (*matrix)[i].get<double>() * grid.step;
        return;
    }
    Json& scale = node["scale"];
    for (std::size_t axis = 0; axis < 3; ++axis)
        scale[axis] = (scale.size() > axis ? scale[axis].get<double>() : 1.0) * grid.step;
    if (grid.isSigned)
        return;
    const Affine place = grid.toMesh();
    node["translation"] = {place[3][0], place[3][1], place[3][2]};
}

void Packer::placeMeshes()
{
    const std::size_t count = m_file.nodes.size();
    InstanceArrays instances(m_file, m_streams);
    for (std::size_t i = 0; i < count; ++i) {
        Json& node = m_file.nodes[i];
        const auto mesh = node.find("mesh");
        if (mesh == node.end())
            continue;
        const PositionGrid& grid = m_grids[mesh->get<std::size_t>()];
        if (isInstanced(node))
            instances.pack(node, grid);
        if (!grid.isOn() || isInstanced(node))
            continue;
        if (canTakeTransform(node, grid)) {
            addTransform(node, grid);
            continue;
        }
        Json below = {{"mesh", *mesh}};
        addTransform(below, grid);
        node.erase(mesh);
        node["children"].push_back(m_file.nodes.size());
        m_file.nodes.push_back(std::move(below));
    }
}

std::vector<std::string> Packer::extensions() const
{
    std::vector<std::string> names;
    if (std::any_of(m_file.nodes.begin(), m_file.nodes.end(), isInstanced))
        names.emplace_back(instancing);
    if (m_options.quantize || m_options.normalBits > 0)
        names.emplace_back("KHR_mesh_quantization");
    if (m_options.compress)
        names.emplace_back("EXT_meshopt_compression");
    return names;
}

Packed Packer::run(double millimetres)
{
    planGrids(millimetres);
    for (VertexSet& set : vertexSets())
        add(set);
    placeMeshes();
    Packed packed;
    packed.buffers = m_streams.take(m_file, m_options.compress);
    packed.extensions = extensions();
    packed.error = m_error;
    return packed;
}

} // namespace

Packed pack(PackedFile& file, const PackOptions& options, double millimetres)
{
    return Packer(file, options).run(millimetres);
}

} // namespace files::glb::packing
