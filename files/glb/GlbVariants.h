#pragma once

#include "files/glb/GlbJson.h"
#include "host/OSGSystem/Material.h"
#include "host/OSGSystem/Node.h"
#include "scene/VariantTable.h"

#include <unordered_map>
#include <utility>

namespace files::glb
{

/// The variants that the root of a tree carries as `osg::VariantAttachment`, the way a file tells them: one variant of
/// `KHR_materials_variants` for each set, in the same order.
class GlbVariants
{
public:
    /// Those that `root` carries; none for null.
    explicit GlbVariants(const osg::NodePtr& root);

    /// A material and the numbers of the variants in which it is seen.
    using Mapping = std::pair<osg::MaterialPtr, std::vector<std::size_t>>;
    /// What is seen in place of `material` in those variants that say so; empty when none does.
    std::vector<Mapping> mappings(const osg::MaterialPtr& material) const;

    /// What the sets want of a node: the name of each set that wants something, with true for shown. Null when no set
    /// does.
    const Json* visibility(const osg::NodePtr& node) const;

    /// How many nodes are hidden at present that some set says something of.
    std::size_t hidden() const { return m_hidden; }

    /// Name, group and viewpoint of each set; an empty list when there are none.
    Json sets() const;
    /// The member of `extensions`.
    Json extension() const;

private:
    /// The state that a set, by its number, wants of a material.
    using States = std::map<std::size_t, std::string>;

    void addSet(std::size_t number, const osg::VariantTable::Set& set, const osg::NodePtr& root);
    osg::MaterialPtr seen(const osg::MaterialPtr& material, std::size_t set, bool& isTold) const;

    osg::VariantTable m_table;
    std::unordered_map<std::string, States> m_states; ///< by the name of the material
    std::unordered_map<const osg::Node*, Json> m_visibility;
    std::size_t m_hidden = 0;
};

} // namespace files::glb
