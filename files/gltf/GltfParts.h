#pragma once

#include "host/OSGSystem/Geometry.h"
#include "host/OSGSystem/Math.h"
#include "host/OSGSystem/Node.h"
#include "scene/Attributes.h"
#include "scene/Mesh.h"

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace files::gltf
{

/// A part that a node of ours draws together with others, as its table tells it.
struct GltfPart {
    std::string name;
    std::vector<std::string> path;      ///< the names of the nodes that it hangs below, from beside that node on
    std::optional<std::uint64_t> group; ///< of the last of these nodes, where names do not tell which one it is
    osg::RefPtr<osg::AttributeAttachment::Ptr> product;
    osg::RefPtr<osg::AttributeAttachment::Ptr> occurrence;
};

/// The elements of a primitive that are of one part.
struct GltfPartRange {
    std::size_t part = 0;
    std::size_t elements = 0;
    std::string material; ///< the name of that which vertex colours stand for; empty where they do not
};

/// `count` indices of `whole` from `first` on, with the vertices that they need. `whole` has elements of one kind.
osg::Mesh meshOfPart(const osg::Mesh& whole, std::size_t first, std::size_t count);

/// Brings parts that were drawn together back to where they were in the tree.
class GltfPartPlaces
{
public:
    using Geometries = std::vector<osg::RefPtr<osg::GeometryPtr>>;

    /// `part`, which draws `geometries` at `place` in the space of `anchor`; it must outlive this object.
    void add(const osg::NodePtr& anchor, const osg::Matrix& place, const GltfPart& part, Geometries geometries);

    /// `node` has this number among the nodes that parts belong to.
    void addGroup(std::uint64_t number, const osg::NodePtr& node) { m_groups.try_emplace(number, node); }

    /// Adds the nodes of all parts, when the rest of the tree is complete. A part hangs below the nodes that its path
    /// names or its group numbers. Where there is none of that name, or several, it is a group that all such parts
    /// share.
    void finish();

private:
    struct Placed {
        osg::NodePtr anchor;
        osg::Matrix place;
        const GltfPart* part = nullptr;
        Geometries geometries;
    };
    /// Children by their names; null for those that several have.
    using Children = std::map<std::string, osg::NodePtr>;

    osg::NodePtr childOf(const osg::NodePtr& node, const std::string& name);
    void add(const Placed& placed);
    bool descendToGroup(const Placed& placed, osg::NodePtr& parent, osg::Matrix& above) const;

    std::vector<Placed> m_parts;
    std::map<std::uint64_t, osg::NodePtr> m_groups;
    std::map<osg::NodePtr, Children> m_children;
};

} // namespace files::gltf
