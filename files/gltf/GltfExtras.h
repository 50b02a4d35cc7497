#pragma once

#include "files/gltf/GltfJson.h"
#include "host/OSGSystem/Material.h"
#include "host/OSGSystem/Node.h"
#include "scene/Attributes.h"

#include <unordered_map>
#include <vector>

namespace files::gltf
{

/// Takes all members of a document but those extras that nobody reads. For one document.
MemberFilter memberFilter();

/// The attributes that a document gives its nodes, materials and scenes as extras: in the form that `files/glb`
/// writes, or in any other. Of others, texts, numbers and booleans become attributes of the occurrence, arrays of these
/// lists of texts, and what stands in objects has the names on the way to it with dots between.
class GltfExtras
{
public:
    GltfExtras() = default;
    /// Takes the extras out of `document`. Warns of how many values no attribute can be.
    GltfExtras(nlohmann::json& document, ReadTask& task);

    /// Gives `node` those of a node of the document. An index without any is fine, here and below.
    void addToNode(int index, const osg::NodePtr& node) const;
    void addToMaterial(int index, const osg::MaterialPtr& material) const;
    /// Gives `node` those of a scene and of the document itself.
    void addToScene(int index, const osg::NodePtr& node) const;

private:
    using Held = osg::RefPtr<osg::AttributeAttachment::Ptr>;
    struct NodeExtras {
        Held product;
        Held occurrence;
    };
    class Taking;

    std::unordered_map<int, NodeExtras> m_nodes;
    std::unordered_map<int, Held> m_materials;
    std::unordered_map<int, Held> m_scenes;
    Held m_document;
};

} // namespace files::gltf
