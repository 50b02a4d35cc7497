// The operations of PLMXMLProductStructure at the two ends of the walk: what an occurrence puts in place of an instance's
// own, and the records that wait for geometry.

#include "cad/visualization/PLMXMLProductStructure.h"

#include "cad/xml/CADCompoundRef.h"
#include "cad/xml/CADInstance.h"
#include "cad/xml/CADOccurrence.h"
#include "cad/xml/CADPart.h"
#include "cad/xml/CADProductDef.h"
#include "cad/xml/CADProductView.h"
#include "host/OSGSystem/Cast.h"
#include "host/OSGSystem/Edit.h"
#include "host/OSGSystem/MaterialPool.h"
#include "host/OSGSystem/Names.h"
#include "host/OSGSystem/TreeFunctions.h"
#include "host/znKernel/znFileIO.h"
#include "host/znOpenSGUtils/znMaterials.h"
#include "host/znOpenSGUtils/znOpenSGUtils.h"

namespace HB::Visualization
{

using namespace XML::CAD;

namespace
{

bool waitsForFile(const CADRepresentation& representation)
{
    const std::string& format = representation.getFormat();
    return !representation.getLocation().empty() && (format == "JT" || format == "WRL" || format == "OSB");
}

/// A plain representation loses its own name to that of its part.
std::string geometryName(const CADRepresentation& representation, const CADPart* part, std::string& runningName)
{
    if (dynamic_cast<const CADCompoundRef*>(&representation))
        return representation.getName().empty() ? runningName + "-geom" : representation.getName();
    if (part)
        runningName = (part->getName().empty() ? part->getId() : part->getName()) + "-geom";
    return runningName;
}

void addToMaterialPool(const osg::NodePtr& node)
{
    const osg::NodePtr poolNode =
        znMaterials::findMaterialPool(znOpenSGUtils::getRoot(), false, true, znMaterials::AnyPool);
    const auto pool = osg::fcCast<osg::MaterialPool>(poolNode ? poolNode->getCore() : osg::NodeCorePtr());
    if (!pool)
        return;
    osg::beginEditCP(pool, osg::AllFieldsMask, 1);
    pool->add(node);
    osg::endEditCP(pool, osg::AllFieldsMask, 1);
}

/// The material group with the file's content below it, or the content alone without a group.
osg::NodePtr underMaterial(const osg::NodePtr& content, const osg::NodePtr& materialNode)
{
    if (!materialNode)
        return content;
    osg::beginEditCP(materialNode, osg::AllFieldsMask, 1);
    materialNode->addChild(content);
    osg::endEditCP(materialNode, osg::AllFieldsMask, 1);
    return materialNode;
}

} // namespace

/// Occurrences of the active view come before those of the definition; the first of all gives both texts, even an empty
/// one that a later occurrence would fill.
PLMXMLProductStructure::Override PLMXMLProductStructure::findOverride(CADInstance& instance) const
{
    const CADProductView* view = m_document.getActiveProductView();
    auto found = view ? view->findOccurrences(m_instancePath) : std::vector<CADOccurrence*>();
    const CADProductDef* definition = found.empty() ? instance.getRootProductDef() : nullptr;
    if (definition)
        found = definition->findOccurrences(m_instancePath);
    if (found.empty())
        return {};
    return {found.front()->getTransformRef(), found.front()->getMaterialRef()};
}

void PLMXMLProductStructure::addAssemblyGeometry(const osg::NodePtr& parent, CADRepresentation* representation,
                                                 CADNodeRecord* record)
{
    const osg::NodePtr node = osg::makeNodeFor(osg::Transform::create());
    osg::beginEditCP(parent, osg::AllFieldsMask, 1);
    parent->addChild(node);
    osg::endEditCP(parent, osg::AllFieldsMask, 1);
    CADNodeRecord& own = addPlace(representation, record);
    own.setNode(node);
    if (waitsForFile(*representation)) {
        own.setState(CADLoadState::FilePending);
        own.setMaterialNode(osg::deepCloneTree(m_currentMaterialNode, ""));
    }
    osg::setName(node, geometryName(*representation, dynamic_cast<CADPart*>(record->getElement()), m_currentName));
}

/// A solid part has no record of its own for its geometry: its record becomes that of the representation, and waits for a
/// file whatever the format.
void PLMXMLProductStructure::bindSolidGeometry(const osg::NodePtr& current, CADRepresentation* representation,
                                               CADNodeRecord* record)
{
    record->setState(CADLoadState::FilePending);
    record->setNode(current);
    record->setMaterialNode(osg::deepCloneTree(m_currentMaterialNode, ""));
    record->setElement(representation);
    osg::setName(current, m_currentName);
}

void PLMXMLProductStructure::realizeRecord(CADNodeRecord* record)
{
    if (!record)
        return;
    if (record->getState() == CADLoadState::Idle)
        return record->setState(CADLoadState::Realized);
    const auto* representation = dynamic_cast<const CADRepresentation*>(record->getElement());
    if (record->getState() != CADLoadState::FilePending || !representation)
        return;
    const osg::NodePtr content = createFileNode(representation->getLocation(), representation->getFormat());
    record->setFileName(representation->getLocation());
    insertContent(*record, underMaterial(content, record->getMaterialNode()));
    record->markLoaded();
}

void PLMXMLProductStructure::insertContent(CADNodeRecord& record, const osg::NodePtr& content)
{
    if (!content)
        return;
    if (znFileIO::getConvertToUberMaterials())
        znFileIO::convertToUberMaterials(content);
    addToMaterialPool(content);
    record.getNode()->insertChild(0, content);
    record.setState(CADLoadState::FileLoaded);
}

} // namespace HB::Visualization
