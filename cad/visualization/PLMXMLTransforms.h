#pragma once

#include "host/OSGSystem/Transform.h"

#include <map>
#include <string>

namespace HB::XML::CAD
{
class CADDocument;
class CADInstance;
} // namespace HB::XML::CAD

namespace HB::Visualization
{

/// The transforms of a document as nodes of one scene. Translations are taken for metres and become millimetres.
class PLMXMLTransforms
{
public:
    /// `document` must outlive this.
    explicit PLMXMLTransforms(const XML::CAD::CADDocument& document) : m_document(document) {}

    /// A node below `parent` that bears the name of `instance`, or else that of its part. All instances with one
    /// reference share one core; a reference that leads nowhere moves nothing.
    osg::NodePtr addInstanceTransform(const osg::NodePtr& parent, const std::string& reference,
                                      const XML::CAD::CADInstance& instance);
    /// A node below `parent`; `parent` itself when the reference leads nowhere. Representations take a core that an
    /// instance made before, but give none to each other.
    osg::NodePtr addRepresentationTransform(const osg::NodePtr& parent, const std::string& reference);

    /// Another scene begins.
    void clear() { m_cores.clear(); }

private:
    osg::TransformPtr sharedCore(const std::string& reference);

    const XML::CAD::CADDocument& m_document;
    std::map<std::string, osg::TransformPtr> m_cores; // not counted: the cores live in the tree
};

} // namespace HB::Visualization
