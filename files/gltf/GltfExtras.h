#pragma once

#include "files/gltf/GltfJson.h"
#include "files/gltf/GltfParts.h"
#include "host/OSGSystem/Material.h"
#include "host/OSGSystem/Node.h"
#include "scene/Attributes.h"

#include <map>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace files::gltf
{

/// Takes all members of a document but those extras that nobody reads, which it counts into `leftOut`. For one
/// document.
MemberFilter memberFilter(std::size_t& leftOut);

/// A set of variants as `files/glb` tells it; texts may be empty.
struct GltfVariantSet {
    std::string name;
    std::string group;
    std::string viewpoint;
};

/// The attributes that a document gives its nodes, meshes, cameras, materials and scenes as extras: in the form that
/// `files/glb` writes, or in any other. Of others, texts, numbers and booleans become attributes of the occurrence,
/// arrays of these lists of texts, and what stands in objects has the names on the way to it with dots between.
class GltfExtras
{
public:
    GltfExtras() = default;
    /// Takes the extras out of `document`. Warns of how many values no attribute can be, and of `leftOut` others.
    GltfExtras(nlohmann::json& document, std::size_t leftOut, ReadTask& task);

    /// The unit and the axis of the document: metres and Y, unless it is one of ours that tells others.
    double millimetresPerUnit() const { return m_millimetresPerUnit; }
    UpAxis upAxis() const { return m_upAxis; }

    /// The sets of variants of a document of ours, in the order of its variants.
    const std::vector<GltfVariantSet>& variantSets() const { return m_variantSets; }
    /// Which sets show a node (true) or hide it, by their names; null when none is told to.
    const std::map<std::string, bool>* variantsOfNode(int index) const
    {
        const auto found = m_nodeVariants.find(index);
        return found == m_nodeVariants.end() ? nullptr : &found->second;
    }

    /// A node of ours that is written small because it is hidden. The document has its true transform by now.
    bool isShrunk(int index) const { return m_shrunk.contains(index); }

    /// The parts that a node of ours draws, in the order of its instances or as the ranges of its primitives number
    /// them; null for other nodes.
    const std::vector<GltfPart>* partsOfNode(int index) const
    {
        const auto found = m_parts.find(index);
        return found == m_parts.end() ? nullptr : &found->second;
    }
    /// The number of a node of ours that parts belong to.
    std::optional<std::uint64_t> groupOfNode(int index) const
    {
        const auto found = m_groups.find(index);
        return found == m_groups.end() ? std::nullopt : std::optional(found->second);
    }
    /// Which part has which elements of a primitive; null for one that has none.
    const std::vector<GltfPartRange>* rangesOfPrimitive(int mesh, std::size_t primitive) const
    {
        const auto found = m_ranges.find({mesh, primitive});
        return found == m_ranges.end() ? nullptr : &found->second;
    }

    /// Gives `node` those of a node of the document. An index without any is fine, here and below.
    void addToNode(int index, const osg::NodePtr& node) const;
    /// Gives `node` those of a mesh as those of its product, unless it has a product.
    void addMeshToNode(int mesh, const osg::NodePtr& node) const;
    void addCameraToNode(int camera, const osg::NodePtr& node) const;
    void addToMaterial(int index, const osg::MaterialPtr& material) const;
    /// Gives `node` those of a scene, of the document itself and of its asset.
    void addToScene(int index, const osg::NodePtr& node) const;

private:
    using Held = osg::RefPtr<osg::AttributeAttachment::Ptr>;
    struct NodeExtras {
        Held product;
        Held occurrence;
    };
    class Taking;

    std::unordered_map<int, NodeExtras> m_nodes;
    std::unordered_set<int> m_annotations; ///< nodes of ours above annotations
    std::unordered_map<int, Held> m_materials;
    std::unordered_map<int, Held> m_meshes;
    std::unordered_map<int, Held> m_cameras;
    std::unordered_map<int, Held> m_scenes;
    std::vector<GltfVariantSet> m_variantSets;
    std::unordered_map<int, std::map<std::string, bool>> m_nodeVariants;
    std::unordered_set<int> m_shrunk;
    std::unordered_map<int, std::vector<GltfPart>> m_parts;
    std::unordered_map<int, std::uint64_t> m_groups;
    std::map<std::pair<int, std::size_t>, std::vector<GltfPartRange>> m_ranges;
    Held m_document;
    double m_millimetresPerUnit = 1000;
    UpAxis m_upAxis = UpAxis::Y;
};

} // namespace files::gltf
