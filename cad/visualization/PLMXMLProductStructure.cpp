#include "cad/visualization/PLMXMLProductStructure.h"

#include "cad/visualization/PLMXMLContent.h"
#include "cad/visualization/PLMXMLGeometry.h"
#include "cad/visualization/PLMXMLMaterials.h"
#include "cad/visualization/PLMXMLOverrides.h"
#include "cad/xml/CADInstance.h"
#include "cad/xml/CADInstanceGraph.h"
#include "cad/xml/CADMaterial.h"
#include "cad/xml/CADPart.h"
#include "cad/xml/CADProductDef.h"
#include "cad/xml/CADRepresentation.h"
#include "host/OSGSystem/Names.h"
#include "host/OSGSystem/Transform.h"
#include "host/OSGSystem/TreeFunctions.h"
#include "host/znUtils/znFile.h"
#include "host/znUtils/znLog.h"
#include "import/TreeEdits.h"

#include <exception>

namespace HB::Visualization
{

using namespace XML::CAD;

namespace
{

osg::NodePtr transformNode()
{
    return osg::makeNodeFor(osg::Transform::create());
}

/// A path as text, without its middle if it is long.
std::string shortened(const std::vector<std::string>& path)
{
    constexpr std::size_t shown = 10;
    std::string text;
    for (std::size_t i = 0; i < path.size(); ++i) {
        if (i >= shown && i + shown < path.size())
            continue;
        text += i == 0 ? "" : i > shown && i + shown == path.size() ? "/.../" : "/";
        text += path[i];
    }
    return text;
}

/// Destroys a tree that nobody holds when an exception leaves the work on it, so that there is memory to tell why.
class UnfinishedTree
{
public:
    explicit UnfinishedTree(const osg::NodePtr& root) : m_root(root) {}
    UnfinishedTree(const UnfinishedTree&) = delete;
    UnfinishedTree& operator=(const UnfinishedTree&) = delete;
    ~UnfinishedTree()
    {
        if (std::uncaught_exceptions() <= m_exceptions)
            return;
        m_root.addRef();
        m_root.subRef();
    }

private:
    osg::NodePtr m_root;
    int m_exceptions = std::uncaught_exceptions();
};

/// An instance below another one that brings nothing of its own.
bool bringsNothing(const CADInstance& instance)
{
    return dynamic_cast<const CADInstance*>(instance.getParent()) && !instance.hasTransformRef() &&
           !instance.hasMaterialRef();
}

} // namespace

PLMXMLProductStructure::~PLMXMLProductStructure() = default;

bool PLMXMLProductStructure::loadDocument(const std::string& fileName)
{
    m_filePath = fileName;
    try {
        m_document.load(fileName);
    } catch (const std::exception&) {
        return false;
    }
    return true;
}

void PLMXMLProductStructure::beginAnew()
{
    clearRecords();
    m_guard.begin(m_limits);
    m_transforms.clear();
    m_instancePath.clear();
    m_currentName.clear();
    m_currentMaterialNode = osg::NodePtr();
}

osg::NodePtr PLMXMLProductStructure::createScene()
{
    beginAnew();
    const osg::NodePtr root = transformNode();
    const UnfinishedTree unfinished(root);
    osg::setName(root, znFile::getBaseName(m_filePath));
    CADProductDef* definition = m_document.getProductDef(0);
    if (!definition)
        return root;
    buildGraphs(root, *definition);
    return m_guard.isOver() ? abandon(root) : root;
}

void PLMXMLProductStructure::buildGraphs(const osg::NodePtr& root, CADProductDef& definition)
{
    CADNodeRecord& top = addPlace(&definition, nullptr);
    top.setNode(root);
    for (std::uint32_t i = 0; i < definition.getInstanceGraphCount() && !m_guard.isOver(); ++i)
        buildInstanceGraph(root, definition.getInstanceGraph(i), &top);
}

CADNodeRecord& PLMXMLProductStructure::addPlace(CADBase* element, CADNodeRecord* parent)
{
    m_guard.countPlace();
    const std::uint32_t id = addRecord(element);
    if (parent)
        parent->addChild(id);
    return record(id);
}

osg::NodePtr PLMXMLProductStructure::abandon(const osg::NodePtr& root)
{
    znLog::error(describeFault().c_str());
    beginAnew();
    root.addRef();
    root.subRef();
    return osg::NodePtr();
}

std::string PLMXMLProductStructure::describeFault() const
{
    const bool isDeep = m_guard.fault() == CADWalkGuard::Fault::TooDeep;
    std::string text = "'" + m_filePath + "' refers to itself, or is an assembly of more than ";
    text += isDeep ? std::to_string(m_limits.depth) + " levels" : std::to_string(m_limits.records) + " records";
    return text + ": " + shortened(m_guard.faultPath());
}

void PLMXMLProductStructure::buildInstanceGraph(const osg::NodePtr& parent, CADInstanceGraph* graph,
                                                CADNodeRecord* record)
{
    if (!graph)
        return;
    const osg::NodePtr node = transformNode();
    frame::addChild(parent, node, osg::AllFieldsMask);
    for (const auto& reference : graph->getRootRefs()) {
        if (m_guard.isOver())
            return;
        CADInstance* instance = m_document.findInstance(reference);
        m_currentName.clear();
        if (instance)
            buildInstance(node, instance, record);
        else
            buildPart(node, m_document.findPart(reference), record);
    }
}

void PLMXMLProductStructure::buildInstance(const osg::NodePtr& parent, CADInstance* instance, CADNodeRecord* record)
{
    if (!instance)
        return m_guard.countPlace();
    m_instancePath.push_back(instance->getId());
    const PLMXMLOverride replacement = findOverride(m_document, *instance, m_instancePath);
    // The id stays on the path here, so that occurrences below later siblings match no more. Documents live with it.
    if (bringsNothing(*instance) && replacement.transform.empty() && replacement.material.empty())
        return m_guard.countPlace();
    osg::NodePtr current = parent;
    if (!replacement.transform.empty() || instance->hasTransformRef())
        current = m_transforms.addInstanceTransform(
            current, replacement.transform.empty() ? instance->getTransformRef() : replacement.transform, *instance);
    const osg::NodePtr outerMaterialNode = m_currentMaterialNode;
    if (!replacement.material.empty() || instance->hasMaterialRef())
        addMaterialGroup(current, replacement.material.empty() ? instance->getMaterialRef() : replacement.material);
    placePart(current, *instance, record);
    m_instancePath.pop_back();
    m_currentMaterialNode = outerMaterialNode;
}

void PLMXMLProductStructure::placePart(const osg::NodePtr& parent, const CADInstance& instance, CADNodeRecord* record)
{
    CADPart* part = m_document.findPart(instance.getPartRef());
    if (!m_currentName.empty())
        m_currentName = instance.getName().empty() ? instance.getId() : instance.getName();
    buildPart(parent, part, record);
}

const std::string& PLMXMLProductStructure::partName(const CADPart& part)
{
    if (!part.getName().empty())
        m_currentName = part.getName();
    else if (m_currentName.empty())
        m_currentName = part.getId();
    return m_currentName;
}

void PLMXMLProductStructure::buildPart(const osg::NodePtr& parent, CADPart* part, CADNodeRecord* record)
{
    const CADWalkGuard::Level level(m_guard);
    if (!part)
        return m_guard.countPlace();
    CADNodeRecord& own = addPlace(part, record);
    const osg::NodePtr node = transformNode();
    const UnfinishedTree unfinished(node);
    const std::string name = partName(*part);
    osg::setName(node, name);
    own.setNode(node);
    for (const auto& reference : part->getRepresentationRefs()) {
        if (m_guard.isOver())
            break;
        m_currentName = name;
        buildRepresentation(node, m_document.findRepresentation(reference), &own);
    }
    for (const auto& reference : part->getInstanceRefs()) {
        if (m_guard.isOver())
            break;
        m_currentName = name;
        buildInstance(node, m_document.findInstance(reference), &own);
    }
    frame::addChild(parent, node, osg::AllFieldsMask);
    // The parent is known only now, and a solid part's geometry may have left its own node here.
    own.setNode(node);
}

void PLMXMLProductStructure::buildRepresentation(const osg::NodePtr& parent, CADRepresentation* representation,
                                                 CADNodeRecord* record)
{
    const CADWalkGuard::Level level(m_guard);
    const auto* part = dynamic_cast<const CADPart*>(record->getElement());
    if (!representation || !part)
        return m_guard.countPlace();
    if (!representation->getCompoundRefs().empty()) {
        for (const auto& reference : representation->getCompoundRefs()) {
            if (m_guard.isOver())
                return;
            buildRepresentation(parent, m_document.findRepresentation(reference), record);
        }
        return;
    }
    const osg::NodePtr current = m_transforms.addRepresentationTransform(parent, representation->getTransformRef());
    if (part->getType() == CADPart::Type::Solid)
        bindSolidGeometry(current, representation, record);
    else if (part->getType() == CADPart::Type::Assembly)
        addAssemblyGeometry(current, representation, record);
    else
        m_guard.countPlace();
}

/// The group is a leaf beside what it applies to: the records below each take a copy of it.
void PLMXMLProductStructure::addMaterialGroup(const osg::NodePtr& parent, const std::string& reference)
{
    const CADMaterial* source = m_document.findMaterial(reference);
    if (!source)
        return;
    const osg::NodePtr node = makeMaterialNode(*source);
    frame::addChild(parent, node);
    m_currentMaterialNode = node;
}

void PLMXMLProductStructure::addAssemblyGeometry(const osg::NodePtr& parent, CADRepresentation* representation,
                                                 CADNodeRecord* record)
{
    const osg::NodePtr node = osg::makeNodeFor(osg::Transform::create());
    frame::addChild(parent, node, osg::AllFieldsMask);
    CADNodeRecord& own = addPlace(representation, record);
    own.setNode(node);
    if (waitsForFile(*representation)) {
        own.setState(CADLoadState::FilePending);
        own.setMaterialNode(osg::deepCloneTree(m_currentMaterialNode, ""));
    }
    osg::setName(node, geometryName(*representation, dynamic_cast<CADPart*>(record->getElement()), m_currentName));
}

/// A solid part has no record of its own for its geometry: its record becomes that of the representation, and waits for
/// a file whatever the format.
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
    insertContent(*record, content);
    record->markLoaded();
}

} // namespace HB::Visualization
