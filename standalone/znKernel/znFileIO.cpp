#include "host/znKernel/znFileIO.h"

#include "host/OSGSystem/Cast.h"
#include "host/OSGSystem/Edit.h"
#include "host/OSGSystem/FieldContainerFactory.h"
#include "host/znUtils/znLog.h"
#include "standalone/session/znStandaloneSession.h"
#include "standalone/znKernel/KernelState.h"

namespace
{

formats::ReadOptions readOptions(const zn::Settings& settings)
{
    formats::ReadOptions options;
    options.millimetresPerUnit = settings.number(QStringLiteral("mesh.unit"));
    options.upAxis =
        settings.text(QStringLiteral("mesh.up")) == QLatin1String("y") ? formats::UpAxis::Y : formats::UpAxis::Z;
    return options;
}

void log(const formats::ReadNote& note)
{
    znLog::error(note.toString().toUtf8().constData());
}

void hang(const osg::NodePtr& node, const osg::NodePtr& parent)
{
    osg::beginEditCP(parent, osg::Node::ChildrenFieldMask, 1);
    parent->addChild(node);
    osg::endEditCP(parent, osg::Node::ChildrenFieldMask, 1);
}

/// Reads one file and hangs its tree under `parent`. False when nothing was loaded.
bool loadFile(znStandaloneSession& session, const QString& file, const osg::NodePtr& parent)
{
    const formats::ReadResult result = session.kernel().readers.read(file, readOptions(session.settings()));
    for (const formats::ReadNote& warning : result.warnings)
        log(warning);
    if (!result) {
        log(*result.error);
        return false;
    }
    hang(result.root, parent);
    session.kernel().loadedGeometries.emplace_back(result.root);
    return true;
}

} // namespace

znFileIO::loadedS::loadedS(const osg::NodePtr& node) : m_nodeId(node->getContainerId()) {}

osg::NodePtr znFileIO::loadedS::getNode() const
{
    return osg::fcCast<osg::Node>(osg::FieldContainerFactory::the()->getContainer(m_nodeId));
}

int znFileIO::load(const std::vector<QString>& files, osg::NodePtr parent, bool, bool, bool select)
{
    znStandaloneSession& session = znStandaloneSession::require();
    if (!parent)
        parent = session.sceneRoot();
    std::size_t loaded = 0;
    for (const QString& file : files)
        loaded += loadFile(session, file, parent) ? 1 : 0;
    if (select && loaded > 0)
        session.select(session.kernel().loadedGeometries.back().getNode());
    if (loaded == 0)
        return 0;
    return loaded == files.size() ? LoadedFully : LoadedInPart;
}

const std::vector<znFileIO::loadedS>& znFileIO::getLoadedGeometriesList()
{
    return znStandaloneSession::require().kernel().loadedGeometries;
}
