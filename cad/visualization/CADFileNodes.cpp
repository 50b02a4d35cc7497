// The operations of CADProductStructure on the files that a document refers to.

#include "cad/visualization/CADProductStructure.h"

#include "cad/xml/CADRepresentation.h"
#include "host/OSGSystem/Edit.h"
#include "host/OSGSystem/TreeFunctions.h"
#include "host/znKernel/znModuleBase.h"
#include "host/znKernel/znScenegraph.h"
#include "host/znOpenSGExt/ExtReference.h"
#include "host/znOpenSGExt/NodeUtils.h"
#include "host/znUtils/znFile.h"
#include "import/Platform.h"
#include "import/getFromMessage.h"

#include <QString>
#include <QUrl>

namespace HB::Visualization
{

namespace
{

/// The message that asks the host to read a CSB file.
constexpr std::uint64_t readCsbMessage = 0x20000;

osg::FileReferencePtr fileReference(const std::string& path)
{
    const osg::FileReferencePtr file = osg::FileReference::create();
    osg::beginEditCP(file, osg::FileReference::PathFieldMask, 1);
    file->setPath(path);
    osg::endEditCP(file, osg::FileReference::PathFieldMask, 1);
    return file;
}

bool isSmartFile(const std::string& location)
{
    const auto extension = QString::fromStdString(znFile::getExtension(location));
    return QString::compare(extension, QStringLiteral("qlb"), Qt::CaseInsensitive) == 0;
}

osg::ExtReferencePtr referenceCore(const std::string& location, const std::string& path)
{
    const osg::ExtReferencePtr core = osg::ExtReference::create();
    const bool isSmart = isSmartFile(location);
    const osg::FieldMask mask =
        isSmart ? osg::ExtReference::SmartFileFieldMask : osg::ExtReference::SourceFileFieldMask;
    osg::beginEditCP(core, mask, 1);
    if (isSmart)
        core->setSmartFile(fileReference(path));
    else
        core->setSourceFile(fileReference(path));
    osg::endEditCP(core, mask, 1);
    return core;
}

osg::NodePtr referenceNode(const std::string& location, const std::string& path)
{
    const osg::NodePtr node = osg::makeNodeFor(referenceCore(location, path));
    NodeUtils::setName(node, znFile::getBaseName(path).c_str(), true);
    return node;
}

} // namespace

std::string CADProductStructure::getNodeLocation(std::uint32_t id) const
{
    const CADNodeRecord& waiting = checkedRecord(id);
    if (waiting.getState() != CADLoadState::FilePending)
        return {};
    const auto* representation = dynamic_cast<const XML::CAD::CADRepresentation*>(waiting.getElement());
    return representation ? representation->getLocation() : std::string();
}

std::string CADProductStructure::getNodeFileName(std::uint32_t id) const
{
    const std::string location = getNodeLocation(id);
    return location.empty() ? location : decodedPath(location);
}

std::string CADProductStructure::resolvePath(const std::string& relative) const
{
    const char* path = m_filePath.c_str();
    const std::string folder(path, PathFindFileNameA(path));
    const bool hasPrefix = !relative.empty() && std::string("./\\").find(relative.front()) != std::string::npos;
    return folder + (hasPrefix ? relative.substr(2) : relative);
}

std::string CADProductStructure::fullPath(const std::string& path) const
{
    return PathIsRelativeA(path.c_str()) ? resolvePath(path) : path;
}

std::string CADProductStructure::decodedPath(const std::string& location) const
{
    const QByteArray path = QString::fromStdString(fullPath(location)).toUtf8();
    return QUrl::fromPercentEncoding(path).toStdString();
}

osg::NodePtr CADProductStructure::findFileNode(const std::string& path)
{
    const std::string full = fullPath(path);
    const auto found = m_fileNodes.find(full);
    if (found == m_fileNodes.end())
        return osg::NodePtr();
    ++m_fileUsers[full];
    return found->second;
}

void CADProductStructure::storeFileNode(const std::string& path, const osg::NodePtr& node)
{
    const std::string full = fullPath(path);
    if (m_fileNodes.emplace(full, node).second)
        m_fileUsers[full] = 1;
}

osg::NodePtr CADProductStructure::createFileNode(const std::string& location, const std::string& format)
{
    if (location.empty())
        return osg::NodePtr();
    const std::string path = decodedPath(location);
    if (const osg::NodePtr found = findFileNode(path))
        return osg::cloneTree(found, true);
    const osg::NodePtr node = referenceNode(location, path);
    const bool isCsb = format == "CSB";
    const bool isRead = m_loadFiles && znFile::exists(path, false, false);
    if (isRead && isCsb)
        fillFromMessage(node, path);
    else if (isRead)
        fillFromFile(node, path);
    else if (!m_loadFiles && !isCsb)
        storeFileNode(path, node);
    return node;
}

void CADProductStructure::fillFromMessage(const osg::NodePtr& node, const std::string& path)
{
    znMessage message(readCsbMessage, "filename", QString::fromStdString(path));
    znModuleBase::sendMessage(message, false);
    osg::NodePtr content;
    if (!getFromMessage(message, "node", content) || !content)
        return;
    osg::beginEditCP(node, osg::AllFieldsMask, 1);
    node->addChild(content);
    osg::endEditCP(node, osg::AllFieldsMask, 1);
    storeFileNode(path, node);
}

/// The node counts as the file's even if its content cannot be read, so that one bad file is tried once.
void CADProductStructure::fillFromFile(const osg::NodePtr& node, const std::string& path)
{
    osg::NodePtr loaded;
    std::vector<osg::NodePtr> contents;
    znScenegraph::reloadFromFile(node, loaded, contents, true, false, false);
    storeFileNode(path, node);
}

} // namespace HB::Visualization
