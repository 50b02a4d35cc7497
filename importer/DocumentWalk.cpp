#include "importer/DocumentWalk.h"

#include "cad/xml/CADInstance.h"
#include "cad/xml/CADInstanceGraph.h"
#include "cad/xml/CADOccurrence.h"
#include "cad/xml/CADPart.h"
#include "cad/xml/CADProductDef.h"
#include "cad/xml/CADProductView.h"
#include "host/OSGSystem/Cast.h"
#include "host/OSGSystem/MaterialGroup.h"
#include "host/OSGSystem/Names.h"
#include "host/znOpenSGExt/ExtReference.h"

#include <string>
#include <vector>

using namespace HB::XML::CAD;

namespace importer
{

namespace
{

/// The nodes that the loader made for an instance, in the node around it.
struct InstanceShape {
    CADInstance* instance = nullptr;
    const CADPart* part = nullptr;
    const CADOccurrence* occurrence = nullptr;
    bool hasTransform = false;
    bool hasMaterial = false;
    bool isOverride = false;

    unsigned nodes() const { return hasTransform ? 1 : (hasMaterial ? 1 : 0) + (part ? 1 : 0); }
};

bool isReference(const osg::NodePtr& node)
{
    return static_cast<bool>(osg::fcCast<osg::ExtReference>(node->getCore()));
}

class Walk
{
public:
    Walk(const CADDocument& document, const std::function<void(const DocumentPlace&)>& visit)
        : m_document(document), m_visit(visit)
    {
    }

    bool run(const osg::NodePtr& root)
    {
        const CADProductDef* definition = m_document.getProductDef(0);
        if (!definition)
            return true;
        for (unsigned i = 0; i < definition->getInstanceGraphCount(); ++i) {
            if (i >= root->getNChildren())
                return false;
            addRoots(*definition->getInstanceGraph(i), root->getChild(i));
        }
        return m_isSound;
    }

private:
    void addRoots(const CADInstanceGraph& graph, const osg::NodePtr& node)
    {
        unsigned next = 0;
        for (const std::string& reference : graph.getRootRefs()) {
            if (CADInstance* instance = m_document.findInstance(reference))
                addInstance(*instance, node, next, 0);
            else if (const CADPart* part = m_document.findPart(reference))
                addPart({childAt(node, next++), part, nullptr, nullptr, {}, false, 0, 0});
        }
    }

    osg::NodePtr childAt(const osg::NodePtr& node, unsigned index)
    {
        m_isSound = m_isSound && node && index < node->getNChildren();
        return m_isSound ? node->getChild(index) : osg::NodePtr();
    }

    /// The path keeps the id of an instance that brings nothing, as the loader's does.
    void addInstance(CADInstance& instance, const osg::NodePtr& parent, unsigned& next, unsigned level)
    {
        m_path.push_back(instance.getId());
        const InstanceShape shape = shapeOf(instance);
        if (isNothing(shape))
            return;
        osg::NodePtr around = parent;
        unsigned inner = next;
        if (shape.hasTransform) {
            around = childAt(parent, next);
            inner = 0;
        }
        next += shape.nodes();
        DocumentPlace place{{}, shape.part, &instance, shape.occurrence, {}, shape.isOverride, level, 0};
        if (shape.hasMaterial)
            place.material = groupAt(around, inner++);
        if (shape.part) {
            place.node = childAt(around, inner);
            addPart(place);
        }
        m_path.pop_back();
    }

    osg::NodePtr groupAt(const osg::NodePtr& node, unsigned index)
    {
        const osg::NodePtr group = childAt(node, index);
        m_isSound = m_isSound && osg::fcCast<osg::MaterialGroup>(group->getCore());
        return group;
    }

    static bool isNothing(const InstanceShape& shape)
    {
        return dynamic_cast<const CADInstance*>(shape.instance->getParent()) && !shape.hasTransform &&
               !shape.hasMaterial;
    }

    InstanceShape shapeOf(CADInstance& instance) const
    {
        InstanceShape shape{&instance, m_document.findPart(instance.getPartRef()), occurrenceOf(instance)};
        shape.isOverride = shape.occurrence && !shape.occurrence->getMaterialRef().empty();
        shape.hasMaterial = shape.isOverride || instance.hasMaterialRef();
        shape.hasTransform =
            instance.hasTransformRef() || (shape.occurrence && !shape.occurrence->getTransformRef().empty());
        return shape;
    }

    /// That of the view counts before that of the definition.
    const CADOccurrence* occurrenceOf(CADInstance& instance) const
    {
        if (const CADProductView* view = m_document.getActiveProductView())
            if (const auto found = view->findOccurrences(m_path); !found.empty())
                return found.front();
        const CADProductDef* definition = instance.getRootProductDef();
        const auto found = definition ? definition->findOccurrences(m_path) : std::vector<CADOccurrence*>();
        return found.empty() ? nullptr : found.front();
    }

    /// The nodes of instances are the last children, but for the reference to the file of a solid.
    void addPart(DocumentPlace place)
    {
        const char* name = place.node ? osg::getName(place.node) : nullptr;
        m_isSound =
            m_isSound && place.node && (place.part->getName().empty() || place.part->getName() == (name ? name : ""));
        if (!m_isSound)
            return;
        const unsigned count = place.node->getNChildren();
        const unsigned nodes = instanceNodes(*place.part);
        const unsigned behind =
            count > 0 && place.part->getType() == CADPart::Type::Solid && isReference(place.node->getChild(count - 1));
        m_isSound = nodes + behind <= count;
        if (!m_isSound)
            return;
        unsigned next = count - nodes - behind;
        place.ownChildren = next;
        m_visit(place);
        for (const std::string& reference : place.part->getInstanceRefs())
            if (CADInstance* instance = m_document.findInstance(reference); instance && m_isSound)
                addInstance(*instance, place.node, next, place.level + 1);
    }

    unsigned instanceNodes(const CADPart& part)
    {
        unsigned nodes = 0;
        for (const std::string& reference : part.getInstanceRefs())
            if (CADInstance* instance = m_document.findInstance(reference)) {
                m_path.push_back(instance->getId());
                const InstanceShape shape = shapeOf(*instance);
                nodes += isNothing(shape) ? 0 : shape.nodes();
                m_path.pop_back();
            }
        return nodes;
    }

    const CADDocument& m_document;
    const std::function<void(const DocumentPlace&)>& m_visit;
    std::vector<std::string> m_path;
    bool m_isSound = true;
};

} // namespace

bool walkDocument(const CADDocument& document, const osg::NodePtr& root,
                  const std::function<void(const DocumentPlace&)>& visit)
{
    return Walk(document, visit).run(root);
}

} // namespace importer
