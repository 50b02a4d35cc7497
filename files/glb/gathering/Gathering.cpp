#include "files/glb/gathering/Gathering.h"

#include "files/glb/gathering/Instances.h"
#include "files/glb/gathering/MergedMesh.h"
#include "files/glb/gathering/NodeForest.h"
#include "files/glb/gathering/Trimming.h"
#include "files/glb/packing/MeshPlaces.h"

#include <algorithm>
#include <map>
#include <set>

namespace files::glb::gathering
{

namespace
{

using packing::PackedFile;

/// A node that draws a mesh.
struct Draw {
    std::size_t node = 0;
    std::size_t mesh = 0;
};

using Draws = std::vector<Draw>;

/// What becomes of what a region draws.
struct Region {
    Draws toMerge;                 ///< in the order of the tree
    std::vector<Draws> toInstance; ///< each of one mesh
};

/// How many triangles, lines and points `mesh` has.
std::uint64_t elementCount(const PackedFile& file, const Json& mesh)
{
    std::uint64_t elements = 0;
    for (const Json& primitive : mesh.at("primitives")) {
        const auto indices =
            file.accessors.at(primitive.at("indices").get<std::size_t>()).at("count").get<std::uint64_t>();
        elements += indices / (primitive.value("mode", 4) == 4 ? 3 : primitive.value("mode", 4) == 1 ? 2 : 1);
    }
    return elements;
}

/// Whether `primitive` is seen through, in some variant at least.
bool isBlended(const PackedFile& file, const Json& primitive)
{
    const auto blends = [&](const Json& user) {
        return file.materials.at(user.at("material").get<std::size_t>()).value("alphaMode", std::string()) == "BLEND";
    };
    const Json::json_pointer mappings("/extensions/KHR_materials_variants/mappings");
    return blends(primitive) || (primitive.contains(mappings) &&
                                 std::any_of(primitive.at(mappings).begin(), primitive.at(mappings).end(), blends));
}

class Gatherer
{
public:
    Gatherer(PackedFile& file, const GatherOptions& options, double largest)
        : m_file(file), m_options(options), m_largest(largest), m_forest(file.scene, file.nodes),
          m_groups(file.materials), m_trimming(file)
    {
        for (const Json& mesh : file.meshes) {
            m_copiesLeft += elementCount(file, mesh);
            m_elements.push_back(elementCount(file, mesh));
            m_boxes.push_back(packing::boxOf(file, mesh));
            for (std::vector<std::string>& keys = m_keys.emplace_back(); const Json& primitive : mesh.at("primitives"))
                keys.push_back(mergeKey(file, m_groups, primitive));
            m_areBlended.push_back(std::any_of(mesh.at("primitives").begin(), mesh.at("primitives").end(),
                                               [&](const Json& primitive) { return isBlended(file, primitive); }));
        }
        m_copiesLeft /= 10;
    }

    void run();

private:
    std::map<std::size_t, Region> regions();
    Region regionOf(const std::map<std::size_t, Draws>& meshes);
    std::set<std::size_t> meshesToMerge(const std::map<std::size_t, Draws>& meshes);
    bool canMergeWithin(std::size_t mesh) const;
    void merge(const Draws& draws);
    void mergeChunk(const Draws& chunk);
    void instance(const Draws& draws);
    std::size_t holderOf(const Draw& draw) const;
    std::size_t anchorOf(const Draws& draws) const;
    Json entryOf(const Draw& draw, std::size_t anchor);

    PackedFile& m_file;
    const GatherOptions& m_options;
    double m_largest;
    NodeForest m_forest;
    MaterialGroups m_groups;
    std::map<std::size_t, std::size_t> m_groupNumbers; ///< by the node that a part belongs to
    Trimming m_trimming;
    std::uint64_t m_copiesLeft = 0; ///< triangles of meshes at further places that may yet become vertices
    ///@{ By mesh.
    std::vector<std::uint64_t> m_elements;
    std::vector<packing::Box> m_boxes;
    std::vector<std::vector<std::string>> m_keys; ///< of the primitives
    std::vector<bool> m_areBlended;
    ///@}
};

void Gatherer::run()
{
    for (const auto& [head, region] : regions()) {
        merge(region.toMerge);
        for (const Draws& draws : region.toInstance)
            instance(draws);
    }
    m_trimming.finish(m_forest.order());
}

/// By their heads, equal meshes as one. What is drawn once and is not small is in none of the lists.
std::map<std::size_t, Region> Gatherer::regions()
{
    std::map<std::string, std::size_t> known;
    std::vector<std::size_t> same;
    for (const Json& mesh : m_file.meshes)
        same.push_back(known.try_emplace(mesh.at("primitives").dump(), same.size()).first->second);
    std::map<std::size_t, std::map<std::size_t, Draws>> drawn;
    for (const std::size_t node : m_forest.order())
        if (const auto mesh = m_file.nodes[node].find("mesh");
            mesh != m_file.nodes[node].end() && !m_areBlended[mesh->get<std::size_t>()])
            drawn[m_forest.region(node)][same[mesh->get<std::size_t>()]].push_back({node, mesh->get<std::size_t>()});
    std::map<std::size_t, Region> regions;
    for (const auto& [head, meshes] : drawn)
        regions[head] = regionOf(meshes);
    return regions;
}

/// `meshes` are drawn below one head.
Region Gatherer::regionOf(const std::map<std::size_t, Draws>& meshes)
{
    Region region;
    const std::set<std::size_t> merged = meshesToMerge(meshes);
    for (const auto& [mesh, draws] : meshes)
        if (merged.contains(mesh))
            region.toMerge.insert(region.toMerge.end(), draws.begin(), draws.end());
        else if (m_options.instances && draws.size() > 1)
            region.toInstance.push_back(draws);
    std::sort(region.toMerge.begin(), region.toMerge.end(),
              [&](const Draw& a, const Draw& b) { return m_forest.rank(a.node) < m_forest.rank(b.node); });
    return region;
}

/// Those that are small, unless they have nothing in common with another one that is: at several places instances
/// save as many calls, and bytes; at one place it may be with itself. In a merged mesh each place has vertices of its
/// own; where instances could draw them, those with the fewest copies come first, and all copies together are a tenth
/// of what the file has without.
std::set<std::size_t> Gatherer::meshesToMerge(const std::map<std::size_t, Draws>& meshes)
{
    std::vector<std::pair<std::uint64_t, std::size_t>> small; ///< triangles of copies, and the mesh
    for (const auto& [mesh, draws] : meshes)
        if (m_elements[mesh] * draws.size() < m_options.mergeBelow)
            small.emplace_back(m_elements[mesh] * (draws.size() - 1), mesh);
    std::sort(small.begin(), small.end());
    std::map<std::string, std::set<std::size_t>> users;
    for (const auto& [copies, mesh] : small) {
        if (m_options.instances && copies > m_copiesLeft)
            break;
        m_copiesLeft -= m_options.instances ? copies : 0;
        for (const std::string& key : m_keys[mesh])
            users[key].insert(mesh);
    }
    std::set<std::size_t> merged;
    for (const auto& [key, those] : users)
        for (const std::size_t mesh : those)
            if (those.size() > 1 || !m_options.instances || (meshes.at(mesh).size() == 1 && canMergeWithin(mesh)))
                merged.insert(mesh);
    return merged;
}

/// Whether primitives of `mesh` can become one.
bool Gatherer::canMergeWithin(std::size_t mesh) const
{
    return std::set<std::string>(m_keys[mesh].begin(), m_keys[mesh].end()).size() < m_keys[mesh].size();
}

/// In pieces no larger than allowed, as the draws follow each other in the tree.
void Gatherer::merge(const Draws& draws)
{
    Draws chunk;
    packing::Box box = packing::emptyBox();
    for (const Draw& draw : draws) {
        const Affine place = m_forest.place(draw.node, NodeForest::none);
        packing::Box with = box;
        packing::include(with, place, m_boxes[draw.mesh]);
        if (!chunk.empty() && !(with.longestSide() <= m_largest)) {
            mergeChunk(chunk);
            chunk.clear();
            with = packing::emptyBox();
            packing::include(with, place, m_boxes[draw.mesh]);
        }
        if (!(with.longestSide() <= m_largest))
            continue;
        chunk.push_back(draw);
        box = with;
    }
    mergeChunk(chunk);
}

void Gatherer::mergeChunk(const Draws& chunk)
{
    std::set<std::string> keys;
    std::size_t primitives = 0;
    for (const Draw& draw : chunk) {
        primitives += m_keys[draw.mesh].size();
        keys.insert(m_keys[draw.mesh].begin(), m_keys[draw.mesh].end());
    }
    if (keys.size() == primitives)
        return;
    const std::size_t anchor = anchorOf(chunk);
    MergedMesh merged(m_groups);
    Json parts = Json::array();
    for (const Draw& draw : chunk) {
        merged.add(m_file, m_file.meshes[draw.mesh], m_forest.place(draw.node, anchor), parts.size());
        parts.push_back(entryOf(draw, anchor));
    }
    m_file.meshes.push_back(merged.take(m_file));
    Json node = {{"mesh", m_file.meshes.size() - 1}};
    node["extras"]["parts"] = std::move(parts);
    m_trimming.add(anchor, std::move(node));
}

/// What has a place that no instance can have stays as it is.
void Gatherer::instance(const Draws& draws)
{
    const std::size_t anchor = anchorOf(draws);
    std::vector<InstancePlace> places;
    Draws placed;
    for (const Draw& draw : draws)
        if (const std::optional<InstancePlace> place = instancePlace(m_forest.place(draw.node, anchor))) {
            places.push_back(*place);
            placed.push_back(draw);
        }
    if (placed.size() < 2)
        return;
    std::size_t mesh = placed.front().mesh;
    if (m_options.mergeBelow > 0 && canMergeWithin(mesh)) {
        MergedMesh merged(m_groups);
        merged.add(m_file, m_file.meshes[mesh], packing::identityAffine, 0);
        Json own = merged.take(m_file);
        if (const auto name = m_file.meshes[mesh].find("name"); name != m_file.meshes[mesh].end())
            own["name"] = *name;
        mesh = m_file.meshes.size();
        m_file.meshes.push_back(std::move(own));
    }
    Json node = instancesNode(m_file, mesh, places);
    Json& instances = node["extras"]["instances"];
    for (const Draw& draw : placed)
        instances.push_back(entryOf(draw, anchor));
    m_trimming.add(anchor, std::move(node));
}

/// The lowest node that stays with what `draw` draws.
std::size_t Gatherer::holderOf(const Draw& draw) const
{
    return m_forest.region(draw.node) == draw.node ? draw.node : m_forest.parent(draw.node);
}

std::size_t Gatherer::anchorOf(const Draws& draws) const
{
    std::size_t anchor = holderOf(draws.front());
    for (const Draw& draw : draws)
        anchor = m_forest.commonAncestor(anchor, holderOf(draw));
    return anchor;
}

Json Gatherer::entryOf(const Draw& draw, std::size_t anchor)
{
    Json entry = m_trimming.takeMesh(draw.node, m_forest.region(draw.node) == draw.node);
    const Json& mesh = m_file.meshes[draw.mesh];
    if (const auto name = mesh.find("name"); name != mesh.end() && *name != entry.value("name", Json()))
        entry["mesh"] = *name;
    if (std::vector<std::string> path = m_forest.path(draw.node, anchor); !path.empty())
        entry["path"] = std::move(path);
    const std::size_t holder = holderOf(draw);
    if (holder != anchor && m_forest.isAmbiguous(holder, anchor)) {
        const auto [group, isNew] = m_groupNumbers.try_emplace(holder, m_groupNumbers.size());
        m_file.nodes[holder]["extras"]["group"] = group->second;
        entry["group"] = group->second;
    }
    return entry;
}

} // namespace

void gather(PackedFile& file, const GatherOptions& options, double largest)
{
    if (options.isOn())
        Gatherer(file, options, largest).run();
}

} // namespace files::glb::gathering
