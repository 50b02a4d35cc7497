#include "host/znKernel/znFileIO.h"

#include "host/OSGSystem/Cast.h"
#include "host/OSGSystem/FieldContainerFactory.h"
#include "standalone/OSGSystem/SceneEdits.h"
#include "standalone/session/znStandaloneSession.h"
#include "standalone/znKernel/KernelState.h"
#include "standalone/znKernel/TreeReading.h"
#include "standalone/znUtils/CallTrace.h"

namespace
{

void hang(const osg::NodePtr& node, const osg::NodePtr& parent)
{
    if (node && parent)
        osg::addChild(parent, node);
}

/// False when nothing was loaded.
bool loadFile(znStandaloneSession& session, const QString& file, const osg::NodePtr& parent)
{
    const std::optional<osg::NodePtr> root = zn::readTree(session, file);
    if (!root)
        return false;
    hang(*root, parent);
    session.kernel().loadedGeometries.emplace_back(*root);
    return true;
}

} // namespace

znFileIO::loadedS::loadedS(const osg::NodePtr& node) : m_nodeId(node ? node->getContainerId() : 0) {}

osg::NodePtr znFileIO::loadedS::getNode() const
{
    return osg::fcCast<osg::Node>(osg::FieldContainerFactory::the()->getContainer(m_nodeId));
}

int znFileIO::load(const std::vector<QString>& files, osg::NodePtr parent, bool sceneWasEmpty, bool merge, bool select)
{
    const zn::TracedCall call("znFileIO::load", files, parent, sceneWasEmpty, merge, select);
    znStandaloneSession& session = znStandaloneSession::require();
    session.kernel().lastLoad = {files, parent ? parent->getContainerId() : 0, sceneWasEmpty, merge, select};
    std::size_t loaded = 0;
    for (const QString& file : files)
        loaded += loadFile(session, file, parent) ? 1 : 0;
    if (loaded == 0)
        return 0;
    if (select)
        session.select(session.kernel().loadedGeometries.back().getNode());
    return loaded == files.size() ? LoadedFully : LoadedInPart;
}

const std::vector<znFileIO::loadedS>& znFileIO::getLoadedGeometriesList()
{
    const zn::TracedCall call("znFileIO::getLoadedGeometriesList");
    return znStandaloneSession::require().kernel().loadedGeometries;
}
