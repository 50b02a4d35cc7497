#pragma once

#include "files/glb/GlbVariants.h"
#include "host/OSGSystem/Material.h"
#include "host/OSGSystem/Node.h"
#include "host/OSGSystem/Transform.h"
#include "scene/Attributes.h"

#include <optional>
#include <vector>

namespace files::glb
{

/// The matrix of a transform; the identity for all other cores.
osg::Matrix matrixOf(const osg::NodeCorePtr& core);

/// Tells an annotation's node, which says so in the file.
bool isAnnotations(const osg::NodePtr& node);

/// Decides which nodes of a tree become one node of the file, because those that stand alone below another say nothing
/// of their own there: neither a place nor attributes nor a variant's state, and no other name.
class GlbFold
{
public:
    /// `variants` must outlive this object. When it is not `isOn`, each node of the tree is one of the file. Nodes that
    /// are hidden at present are in the file when it is `withHidden`.
    GlbFold(const GlbVariants& variants, bool isOn, bool withHidden)
        : m_variants(variants), m_isOn(isOn), m_withHidden(withHidden)
    {
    }

    bool isOn() const { return m_isOn; }
    /// Whether a node is in the file, if its parent is: it is active, or shown in a variant.
    bool isShown(const osg::NodePtr& node) const
    {
        return node->isActive() || (m_withHidden && m_variants.visibility(node));
    }

    /// Nodes, each the only one below the one before it, that become one node of the file.
    struct Chain {
        osg::NodePtr first;                       ///< has the place and the name
        osg::NodePtr last;                        ///< has the content; may be the first
        osg::MaterialPtr material;                ///< that is seen below the last
        osg::AttributeAttachment::Ptr occurrence; ///< the attributes of one of them, null for none
        osg::AttributeAttachment::Ptr product;    ///< likewise
    };
    /// The chain that begins with `node`, which stands below a material group with `above`.
    Chain chain(const osg::NodePtr& node, const osg::MaterialPtr& above) const;
    /// What is in the file of the children of a chain's last node.
    struct Below {
        std::vector<osg::NodePtr> bodies; ///< geometries that the chain's node draws itself
        std::string bodyName;             ///< that all bodies have, where the chain has another
        std::vector<unsigned> nodes;      ///< the indices of the children that are nodes of their own
    };
    /// Geometries without facts of their own are bodies when they all have one name, which the mesh can keep.
    Below below(const Chain& chain) const;

    /// Where a file begins.
    struct Top {
        osg::NodePtr root;         ///< of the file, if there is no frame
        osg::Matrix above;         ///< to be applied after their own transforms
        osg::MaterialPtr material; ///< of the topmost material group above
        osg::NodePtr frame;        ///< its children are the roots, and it is the scene; null for none
    };
    /// `unit` turns the units of the tree into those of the file. The nodes above all that is told are left out. So is
    /// the frame of a file that was read, which turns its units into those of the tree: its children are the roots.
    Top top(const osg::NodePtr& root, const osg::Matrix& unit) const;

    /// The index of the only child that is in the file; none when there are several, or none.
    std::optional<unsigned> onlyChild(const osg::NodePtr& node) const;

private:
    bool hasShownChild(const osg::NodePtr& node) const;
    bool isTold(const osg::NodePtr& node) const;
    bool mayBeBody(const osg::NodePtr& node) const;
    bool isLink(const Chain& chain, const osg::NodePtr& child) const;
    bool passes(const Top& top, const osg::NodePtr& child) const;

    const GlbVariants& m_variants;
    bool m_isOn;
    bool m_withHidden;
};

} // namespace files::glb
