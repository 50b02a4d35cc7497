#include "cad/visualization/CADFileNodes.h"

#include "host/OSGSystem/TreeFunctions.h"
#include "host/znKernel/znModuleBase.h"
#include "host/znKernel/znScenegraph.h"
#include "host/znOpenSGExt/NodeUtils.h"
#include "host/znUtils/znFile.h"
#include "import/TreeEdits.h"
#include "import/getFromMessage.h"

#include <QString>

#include <vector>

namespace HB::Visualization
{

namespace
{

/// The message that asks the host to read a CSB file.
constexpr std::uint64_t readCsbMessage = 0x20000;

bool isSmartFile(const std::string& location)
{
    const auto extension = QString::fromStdString(znFile::getExtension(location));
    return QString::compare(extension, QStringLiteral("qlb"), Qt::CaseInsensitive) == 0;
}

} // namespace

osg::NodePtr CADFileNodes::find(const std::string& fullPath)
{
    const auto found = m_nodes.find(fullPath);
    if (found == m_nodes.end())
        return osg::NodePtr();
    ++m_users[fullPath];
    return found->second;
}

void CADFileNodes::store(const std::string& fullPath, const osg::NodePtr& node)
{
    if (m_nodes.emplace(fullPath, node).second)
        m_users[fullPath] = 1;
}

osg::NodePtr makeFileNode(const std::string& location, const std::string& path)
{
    const osg::NodePtr node =
        osg::makeNodeFor(frame::makeReferenceCore(frame::makeFileReference(path), isSmartFile(location)));
    NodeUtils::setName(node, znFile::getBaseName(path).c_str(), true);
    return node;
}

bool addCsbContent(const osg::NodePtr& node, const std::string& path)
{
    znMessage message(readCsbMessage, "filename", QString::fromStdString(path));
    znModuleBase::sendMessage(message, false);
    osg::NodePtr content;
    if (!getFromMessage(message, "node", content) || !content)
        return false;
    frame::addChild(node, content, osg::AllFieldsMask);
    return true;
}

void addFileContent(const osg::NodePtr& node)
{
    osg::NodePtr loaded;
    std::vector<osg::NodePtr> contents;
    znScenegraph::reloadFromFile(node, loaded, contents, true, false, false);
}

} // namespace HB::Visualization
