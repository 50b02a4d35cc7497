// The scene, the calls into the kernel, messages and the log.
#include "host/OSGSystem/FieldContainerFactory.h"
#include "host/OSGSystem/Group.h"
#include "host/OSGSystem/TreeFunctions.h"
#include "host/znKernel/znController.h"
#include "host/znKernel/znModuleBase.h"
#include "host/znKernel/znOSGWidget.h"
#include "host/znKernel/znPreferences.h"
#include "host/znKernel/znPtxHelper.h"
#include "host/znKernel/znScenegraph.h"
#include "host/znKernel/znTexSearch.h"
#include "host/znKernel/znTypeConverter.h"
#include "host/znOpenSGUtils/znNodeUtils.h"
#include "host/znOpenSGUtils/znOpenSGUtils.h"
#include "host/znQRPCUtils/znQRPCConverter.h"
#include "host/znUtils/znFile.h"
#include "host/znUtils/znLog.h"
#include "host/znUtils/znMessage.h"

// No window, no pictures, nobody who listens to calls or messages.
void znController::setBusy(bool, bool) {}
bool znController::call(const std::string&, znMessage&, int)
{
    return false;
}
void znModuleBase::sendMessage(znMessage&, bool) {}
void znOSGWidget::cancelAntialiasing() {}
void znOSGWidget::showAllMains(bool) {}
void znTexSearch::setCurrentFile(const char*) {}
void znTexSearch::clearCurrentFile() {}
bool znOpenSGUtils::call(const std::string&, znMessage&, int)
{
    return false;
}

osg::NodePtr znScenegraph::getRoot()
{
    static const osg::RefPtr<osg::NodePtr> root(osg::makeNodeFor(osg::Group::create()));
    return root;
}
bool znScenegraph::isEmpty()
{
    return getRoot()->getNChildren() == 0;
}
osg::NodePtr znScenegraph::getSelectedNode()
{
    return {};
}
osg::NodePtr znScenegraph::environmentGeometrySwitch()
{
    return {};
}
osg::NodePtr znScenegraph::createEnvironmentGeometrySwitch(const osg::NodePtr& content)
{
    return content;
}
znNodePtr znScenegraph::unshareNode(const osg::NodePtr& node, DuplicateBehaviour, bool, bool)
{
    return znNodePtr(node);
}
bool znScenegraph::reloadFromFile(const osg::NodePtr&, osg::NodePtr&, std::vector<osg::NodePtr>&, bool, bool, bool)
{
    return false;
}
osg::NodePtr znOpenSGUtils::getRoot()
{
    return znScenegraph::getRoot();
}

osg::NodePtr znQRPCConverter::idToNode(unsigned id)
{
    const osg::FieldContainerPtr found = osg::FieldContainerFactory::the()->getContainer(id);
    return osg::NodePtr(dynamic_cast<osg::Node*>(found.get()));
}
osg::NodePtr znTypeConverter::convertNode(const zndNode& node)
{
    return znQRPCConverter::idToNode(static_cast<unsigned>(node.getObjectId()));
}
zndNode znTypeConverter::convertNode(const osg::NodePtr& node)
{
    return node ? zndNode(node->getContainerId()) : zndNode();
}

// Converters of this host tag nothing.
bool znPtxHelper::isConvertedPtxTree(const osg::NodePtr&)
{
    return false;
}
void znPtxHelper::removePtxTag(const osg::NodePtr&) {}
std::pair<std::string, std::string> znPtxHelper::createProcessCommand(const std::string& input, bool,
                                                                      const std::string& outputDir)
{
    const std::string output = outputDir + znFile::getBaseName(input) + ".outline";
    return {"cp \"" + input + "\" \"" + output + "\"", output};
}
std::string znPtxHelper::createStylarConvertCommand(const std::string&, std::string& convertedFile, const std::string&)
{
    convertedFile.clear();
    return {};
}
QString znPtxHelper::getProcessErrorDescription(int exitCode, const std::string&)
{
    return QStringLiteral("the copy ended with %1").arg(exitCode);
}

void znLog::error(const char* text)
{
    std::fprintf(stderr, "%s\n", text);
}

const znMessage& znPreferences::getData()
{
    static const znMessage data;
    return data;
}
znMessage::znMessage() = default;
znMessage::znMessage(std::uint64_t code, const std::string& key, const boost::any& value) : m_code(code)
{
    m_attributes[key] = value;
}
znMessage::~znMessage() = default;
void znMessage::set(const std::string& key, const boost::any& value, bool replace)
{
    if (replace || !m_attributes.contains(key))
        m_attributes[key] = value;
}
const boost::any& znMessage::get(const std::string& key) const
{
    static const boost::any nothing;
    const auto found = m_attributes.find(key);
    return found == m_attributes.end() ? nothing : found->second;
}
void znMessage::printBT() {}
