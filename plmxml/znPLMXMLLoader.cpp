#include "plmxml/znPLMXMLLoader.h"

#include "cad/visualization/PLMXMLProductStructure.h"
#include "host/OSGSystem/Cast.h"
#include "host/OSGSystem/Edit.h"
#include "host/OSGSystem/TreeFunctions.h"
#include "host/znOpenSGExt/ExtReference.h"
#include "host/znOpenSGExt/NodeUtils.h"
#include "host/znOpenSGUtils/znNodeUtils.h"
#include "host/znUtils/znFile.h"
#include "host/znUtils/znLog.h"
#include "import/TreeEdits.h"
#include "import/TreeNotices.h"

#include <boost/algorithm/string/predicate.hpp>

#include <locale>
#include <utility>

using HB::Visualization::PLMXMLProductStructure;

namespace
{

/// True for a file that the host reads by itself and keeps as what it is.
bool isSmartFile(const std::string& name)
{
    const std::string extension = znFile::getExtension(name);
    const std::locale letters;
    return boost::iequals(extension, "qlb", letters) || boost::iequals(extension, "osb", letters);
}

osg::FileReferencePtr makePartFile(const std::string& fullPath, const std::string& location)
{
    const osg::FileReferencePtr file = osg::FileReference::create();
    const osg::FieldMask mask = osg::FileReference::PathFieldMask | osg::FileReference::RelativePathFieldMask;
    osg::beginEditCP(file, mask, 1);
    file->setPath(fullPath);
    file->setRelativePath(location);
    osg::endEditCP(file, mask, 1);
    return file;
}

osg::ExtReferencePtr makeDocumentCore(const std::string& fileName)
{
    const osg::FileReferencePtr file = frame::makeFileReference(fileName);
    const osg::ExtReferencePtr core = osg::ExtReference::create();
    const osg::FieldMask mask = osg::ExtReference::StateFieldMask | osg::ExtReference::SourceFileFieldMask;
    osg::beginEditCP(core, mask, 1);
    core->setSourceFile(file);
    core->setState(frame::loadedReference);
    osg::endEditCP(core, mask, 1);
    return core;
}

} // namespace

znPLMXMLLoader::znPLMXMLLoader(const std::string& fileName) : m_fileName(fileName) {}

znPLMXMLLoader::znPLMXMLLoader(const znPLMXMLLoader&) = default;

znPLMXMLLoader::znPLMXMLLoader(znPLMXMLLoader&& other) noexcept
    : m_fileName(std::exchange(other.m_fileName, {})), m_loadReferencedFiles(other.m_loadReferencedFiles),
      m_node(other.m_node), m_referenceNodes(std::exchange(other.m_referenceNodes, {})),
      m_unloadedParts(std::exchange(other.m_unloadedParts, {}))
{
}

znPLMXMLLoader& znPLMXMLLoader::operator=(const znPLMXMLLoader&) = default;

znPLMXMLLoader& znPLMXMLLoader::operator=(znPLMXMLLoader&& other) noexcept
{
    if (this != &other) {
        m_fileName = std::exchange(other.m_fileName, {});
        m_loadReferencedFiles = other.m_loadReferencedFiles;
        m_node = other.m_node;
        m_referenceNodes = std::exchange(other.m_referenceNodes, {});
        m_unloadedParts = std::exchange(other.m_unloadedParts, {});
    }
    return *this;
}

znPLMXMLLoader::~znPLMXMLLoader() = default;

bool znPLMXMLLoader::load()
{
    if (m_fileName.empty())
        return false;
    PLMXMLProductStructure structure;
    structure.setLoadFiles(m_loadReferencedFiles);
    if (!structure.loadDocument(m_fileName)) {
        znLog::error(("Couldn't open '" + m_fileName + "'!").c_str());
        return false;
    }
    m_node = structure.createScene();
    if (!m_node)
        return false;
    addReferences(structure);
    convertToTransform3D(m_node);
    createReference(m_node, m_fileName);
    return true;
}

osg::NodePtr znPLMXMLLoader::getNode() const
{
    return m_node;
}

bool znPLMXMLLoader::loadReferencedFiles() const
{
    return m_loadReferencedFiles;
}

void znPLMXMLLoader::setLoadReferencedFiles(bool load)
{
    m_loadReferencedFiles = load;
}

UnloadedParts znPLMXMLLoader::getUnloadedParts() const
{
    return m_unloadedParts;
}

void znPLMXMLLoader::addReferences(PLMXMLProductStructure& structure)
{
    const std::uint32_t count = structure.getNodeCount();
    for (std::uint32_t id = 0; id < count; ++id) {
        if (m_loadReferencedFiles)
            structure.realizeNode(id);
        const osg::NodePtr node = structure.getSceneNode(id);
        const std::string fullPath = structure.getNodeFileName(id);
        const std::string location = structure.getNodeLocation(id);
        if (node && !(fullPath.empty() && location.empty()))
            addReference(node, fullPath, location);
    }
}

void znPLMXMLLoader::addReference(const osg::NodePtr& parent, const std::string& fullPath, const std::string& location)
{
    if (const auto known = m_referenceNodes.find(fullPath); known != m_referenceNodes.end()) {
        const osg::NodePtr clone = osg::cloneTree(known->second, true);
        frame::addChild(parent, clone, osg::AllFieldsMask);
        m_unloadedParts[fullPath].push_back(clone);
        return;
    }
    const std::string& name = location.empty() ? fullPath : location;
    const osg::NodePtr reference = osg::Node::create();
    frame::exchangeCore(reference, frame::makeReferenceCore(makePartFile(fullPath, location), isSmartFile(name)));
    NodeUtils::setName(reference, znFile::getBaseName(name).c_str(), true);
    frame::addChild(parent, reference, osg::AllFieldsMask);
    m_unloadedParts[fullPath].push_back(reference);
    m_referenceNodes[fullPath] = reference;
}

/// Parents first. A product structure may be as deep as a document nests.
void znPLMXMLLoader::convertToTransform3D(const osg::NodePtr& node)
{
    osg::traverse(node, [](const osg::NodePtr& step) {
        znNodeUtils::convertTransformToTransform3D(step);
        return osg::Action::Continue;
    });
}

void znPLMXMLLoader::createReference(osg::NodePtr& node, const std::string& fileName)
{
    const osg::ExtReferencePtr core = makeDocumentCore(fileName);
    const auto transform = osg::fcCast<osg::Transform>(node->getCore());
    if (transform && transform->isIdentity()) {
        frame::exchangeCore(node, core);
    } else {
        const osg::NodePtr reference = osg::Node::create();
        const osg::FieldMask mask = osg::Node::CoreFieldMask | osg::Node::ChildrenFieldMask;
        osg::beginEditCP(reference, mask, 1);
        reference->setCore(core);
        reference->addChild(node);
        osg::endEditCP(reference, mask, 1);
        znNodeUtils::setName(reference, znFile::getBaseName(fileName).c_str(), true, nullptr);
        node = reference;
    }
    frame::notifyReferences(node, frame::TreeNotice::PlmxmlTree);
}
