#include "files/glb/packing/Packing.h"

#include "files/glb/packing/VertexOrder.h"

#include <algorithm>
#include <cstring>
#include <limits>
#include <map>
#include <tuple>

namespace files::glb::packing
{

namespace
{

/// In a scene that is smaller than this many errors, less is allowed: it would fall together.
constexpr double errorsOfScene = 2048;

/// The primitives with the same attributes on the same grid, and the accessors of their indices.
struct VertexSet {
    Json attributes;
    PositionGrid grid;
    std::vector<std::pair<std::size_t, bool>> indices; ///< and whether they are triangles
    std::vector<std::size_t> newIndices;               ///< in the packed file
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
    Box boxOf(const Json& mesh) const;
    void planGrids(double millimetres);
    std::vector<VertexSet> vertexSets();
    void add(VertexSet& set);
    IndexList indexList(std::size_t accessor, bool areTriangles) const;
    void placeMeshes();
    std::vector<std::string> extensions() const;

    PackedFile& m_file;
    const PackOptions& m_options;
    std::vector<PositionGrid> m_grids; ///< by mesh
    double m_error = 0;
    PackedStreams m_streams;
};

Box Packer::boxOf(const Json& mesh) const
{
    constexpr double infinity = std::numeric_limits<double>::infinity();
    Box box = {{infinity, infinity, infinity}, {-infinity, -infinity, -infinity}};
    for (const Json& primitive : mesh.at("primitives")) {
        const Json& accessor = m_file.accessors.at(primitive.at("attributes").at("POSITION").get<std::size_t>());
        for (std::size_t axis = 0; axis < 3; ++axis) {
            box.least[axis] = std::min(box.least[axis], accessor.at("min").at(axis).get<double>());
            box.most[axis] = std::max(box.most[axis], accessor.at("max").at(axis).get<double>());
        }
    }
    return box;
}

void Packer::planGrids(double millimetres)
{
    m_grids.resize(m_file.meshes.size());
    if (!m_options.quantize)
        return;
    std::vector<Box> boxes;
    for (const Json& mesh : m_file.meshes)
        boxes.push_back(boxOf(mesh));
    const MeshPlaces places = placesOfMeshes(m_file.nodes, boxes);
    const double allowed = std::min(m_options.error / millimetres, places.extent / errorsOfScene);
    for (std::size_t i = 0; i < boxes.size(); ++i) {
        m_grids[i] = gridFor(boxes[i], allowed / places.scales[i]);
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
                set.indices.emplace_back(accessor, areTriangles);
            set.primitives.push_back(&primitive);
            set.listOfPrimitive.push_back(list->second);
        }
    return sets;
}

IndexList Packer::indexList(std::size_t accessor, bool areTriangles) const
{
    const Json& from = m_file.accessors[accessor];
    const bool isShort = from.at("componentType").get<int>() == 5123;
    const std::byte* bytes = elementsOf(m_file, from);
    IndexList list = {areTriangles, std::vector<std::uint32_t>(from.at("count").get<std::size_t>())};
    for (std::size_t i = 0; i < list.indices.size(); ++i) {
        std::uint16_t narrow = 0;
        if (isShort)
            std::memcpy(&narrow, bytes + i * sizeof(narrow), sizeof(narrow));
        else
            std::memcpy(&list.indices[i], bytes + i * sizeof(std::uint32_t), sizeof(std::uint32_t));
        list.indices[i] += narrow;
    }
    return list;
}

void Packer::add(VertexSet& set)
{
    std::vector<VertexStream> streams;
    for (const auto& [name, accessor] : set.attributes.items())
        streams.push_back(streamOf(name, m_file, m_file.accessors[accessor.get<std::size_t>()], set.grid, m_options));
    std::vector<IndexList> lists;
    for (const auto& [accessor, areTriangles] : set.indices)
        lists.push_back(indexList(accessor, areTriangles));
    orderVertices(streams, lists, m_options);
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

/// A node that says nothing else about its place takes the transform itself.
bool canTakeTransform(const Json& node)
{
    constexpr const char* others[] = {"children", "camera", "matrix", "translation", "rotation", "scale"};
    return std::none_of(std::begin(others), std::end(others),
                        [&](const char* member) { return node.contains(member); }) &&
           !node.contains(Json::json_pointer("/extras/shown"));
}

void addTransform(Json& node, const PositionGrid& grid)
{
    node["scale"] = {grid.step, grid.step, grid.step};
    if (grid.isSigned)
        return;
    for (const std::int64_t steps : grid.origin)
        node["translation"].push_back(static_cast<double>(static_cast<float>(grid.step) * static_cast<double>(steps)));
}

void Packer::placeMeshes()
{
    const std::size_t count = m_file.nodes.size();
    for (std::size_t i = 0; i < count; ++i) {
        Json& node = m_file.nodes[i];
        const auto mesh = node.find("mesh");
        if (mesh == node.end() || !m_grids[mesh->get<std::size_t>()].isOn())
            continue;
        const PositionGrid& grid = m_grids[mesh->get<std::size_t>()];
        if (canTakeTransform(node)) {
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
