#include "cad/visualization/CADProductStructure.h"

#include "cad/xml/CADRepresentation.h"
#include "host/OSGSystem/Names.h"
#include "host/OSGSystem/TreeFunctions.h"
#include "host/znUtils/znFile.h"
#include "import/Platform.h"

#include <QString>
#include <QUrl>

#include <stdexcept>

namespace HB::Visualization
{

CADProductStructure::~CADProductStructure()
{
    m_fileNodes.clear();
    m_nodes.clear();
}

std::uint32_t CADProductStructure::getChildCount(std::uint32_t id) const
{
    return checkedRecord(id).getChildCount();
}

std::uint32_t CADProductStructure::getChild(std::uint32_t id, std::uint32_t childNum) const
{
    return checkedRecord(id).getChild(childNum);
}

std::string CADProductStructure::getNodeName(std::uint32_t id) const
{
    const osg::NodePtr& node = checkedRecord(id).getNode();
    const char* name = node ? osg::getName(node) : nullptr;
    return name ? name : "";
}

void CADProductStructure::requestLoad(std::uint32_t id)
{
    CADNodeRecord& target = checkedRecord(id);
    target.requestLoad();
    for (std::uint32_t i = 0; i < target.getChildCount(); ++i)
        requestLoad(target.getChild(i));
}

void CADProductStructure::requestUnload(std::uint32_t id)
{
    CADNodeRecord& target = checkedRecord(id);
    target.requestUnload();
    for (std::uint32_t i = 0; i < target.getChildCount(); ++i)
        requestUnload(target.getChild(i));
}

void CADProductStructure::setMarked(std::uint32_t id, bool marked)
{
    checkedRecord(id).setMarked(marked);
}

bool CADProductStructure::isMarked(std::uint32_t id) const
{
    return checkedRecord(id).isMarked();
}

void CADProductStructure::setActive(std::uint32_t id, bool active)
{
    checkedRecord(id).setActive(active);
}

bool CADProductStructure::isActive(std::uint32_t id) const
{
    return checkedRecord(id).isActive();
}

void CADProductStructure::setAuxiliary(std::uint32_t id, bool)
{
    checkId(id);
}

bool CADProductStructure::getAuxiliary(std::uint32_t id) const
{
    return checkedRecord(id).isAuxiliary();
}

std::string CADProductStructure::getUserDataText(std::uint32_t id) const
{
    return checkedRecord(id).getUserDataText();
}

void CADProductStructure::setTranslation(std::uint32_t id, float x, float y, float z)
{
    checkedRecord(id).setTranslation(x, y, z);
}

std::vector<float> CADProductStructure::getTranslation(std::uint32_t id) const
{
    return checkedRecord(id).getTranslation();
}

void CADProductStructure::setRotation(std::uint32_t id, float x, float y, float z, float angle)
{
    checkedRecord(id).setRotation(x, y, z, angle);
}

std::vector<float> CADProductStructure::getRotation(std::uint32_t id) const
{
    return checkedRecord(id).getRotation();
}

void CADProductStructure::setScale(std::uint32_t id, float x, float y, float z)
{
    checkedRecord(id).setScale(x, y, z);
}

std::vector<float> CADProductStructure::getScale(std::uint32_t id) const
{
    return checkedRecord(id).getScale();
}

void CADProductStructure::checkId(std::uint32_t id) const
{
    if (id >= m_nodes.size())
        throw std::runtime_error("No node with Id: " + std::to_string(id));
}

CADNodeRecord& CADProductStructure::checkedRecord(std::uint32_t id) const
{
    checkId(id);
    return record(id);
}

osg::NodePtr CADProductStructure::getSceneNode(std::uint32_t id) const
{
    return checkedRecord(id).getNode();
}

void CADProductStructure::realizeNode(std::uint32_t id)
{
    realizeRecord(&checkedRecord(id));
}

std::uint32_t CADProductStructure::addRecord(XML::CAD::CADBase* element)
{
    m_nodes.push_back(std::make_unique<CADNodeRecord>(element));
    return static_cast<std::uint32_t>(m_nodes.size() - 1);
}

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
    return m_fileNodes.find(fullPath(path));
}

void CADProductStructure::storeFileNode(const std::string& path, const osg::NodePtr& node)
{
    m_fileNodes.store(fullPath(path), node);
}

osg::NodePtr CADProductStructure::createFileNode(const std::string& location, const std::string& format)
{
    if (location.empty())
        return osg::NodePtr();
    const std::string path = decodedPath(location);
    if (const osg::NodePtr found = findFileNode(path))
        return osg::cloneTree(found, true);
    const osg::NodePtr node = makeFileNode(location, path);
    if (fillFileNode(node, path, format == "CSB"))
        storeFileNode(path, node);
    return node;
}

/// Whether the node is the one that stands for the file from here on. It is even if its content cannot be read, so that
/// one bad file is tried once.
bool CADProductStructure::fillFileNode(const osg::NodePtr& node, const std::string& path, bool isCsb) const
{
    if (!m_loadFiles)
        return !isCsb;
    if (!znFile::exists(path, false, false))
        return false;
    if (isCsb)
        return addCsbContent(node, path);
    addFileContent(node);
    return true;
}

} // namespace HB::Visualization
