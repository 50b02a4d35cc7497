#pragma once

#include "files/ReadTask.h"
#include "files/gltf/GltfDocument.h"
#include "host/OSGSystem/Material.h"
#include "scene/VariantTable.h"

#include <functional>
#include <map>
#include <set>
#include <string>
#include <vector>

namespace files::gltf
{

/// The variants of a document. Materials that `KHR_materials_variants` exchanges become switch materials, which show
/// what the primitive has without a variant. `KHR_node_visibility` hides nodes, and `extras.variants` of files of ours
/// tells which set shows or hides a node. Each variant is a set; files of ours tell its group and viewpoint.
class GltfVariants
{
public:
    /// `document` and `task` outlive this object.
    GltfVariants(const GltfDocument& document, ReadTask& task);

    /// `standard`, or what takes its place where the variants give `primitive` other materials, which `material` makes
    /// by their numbers.
    osg::MaterialPtr choices(const tinygltf::Primitive& primitive, const osg::MaterialPtr& standard,
                             const std::function<osg::MaterialPtr(int)>& material, const QString& place);
    /// Hides `node` when the node of this number is hidden, and notes which sets show it.
    void addNode(int index, const osg::NodePtr& node);
    /// Gives the tree the table of its variants, if it has any.
    void attach(const osg::NodePtr& root);

private:
    /// A variant of a primitive, and the number of the material that it has then.
    using Mappings = std::map<std::size_t, int>;

    Mappings mappingsOf(const tinygltf::Primitive& primitive, const QString& place);
    std::string stateOf(const osg::MaterialPtr& material);

    const GltfDocument& m_document;
    ReadTask& m_task;
    osg::VariantTable m_table;
    std::map<std::pair<osg::MaterialPtr, Mappings>, osg::RefPtr<osg::MaterialPtr>> m_choices;
    std::set<std::string> m_states; ///< names of materials among others
    std::vector<std::pair<osg::NodePtr, const std::map<std::string, bool>*>> m_nodes;
};

} // namespace files::gltf
