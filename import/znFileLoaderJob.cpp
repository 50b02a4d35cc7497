#include "import/znFileLoaderJob.h"

#include "host/znKernel/znFileIO.h"
#include "host/znKernel/znScenegraph.h"
#include "host/znKernel/znTypeConverter.h"
#include "host/znKernelServices/znKernelServiceFactory.h"
#include "host/znKernelServices/znReferenceService.h"
#include "import/InsertionNode.h"
#include "import/TreeEdits.h"

#include <QFileInfo>

namespace
{

znCADFileTypes::JobState stateOf(int loadResult)
{
    return loadResult == 0 ? znCADFileTypes::JobFailed : znCADFileTypes::JobSucceeded;
}

} // namespace

znFileLoaderJob::znFileLoaderJob(const QString& file, const zndNode& target, QObject* parent)
    : znAbstractTimerJob(100, parent), m_file(file), m_target(target)
{
}

znFileLoaderJob::~znFileLoaderJob() = default;

void znFileLoaderJob::abort() {}

void znFileLoaderJob::process()
{
    Q_EMIT started();
    const osg::NodePtr place = frame::insertionNode(m_target.getObjectId());
    zndReferenceNode reference(0);
    if (m_target.isTypeOf(&zndReferenceNode::staticMetaObject))
        reference.assign(m_target.getSessionId(), m_target.getObjectId());

    if (reference.isValid() && reference.hasSmartReference())
        refresh(reference);
    else if (reference.isValid())
        fill(place);
    else if (m_importAsSmartReference)
        createSmartReference(place);
    else
        load(place);
    Q_EMIT processingFinished();
}

void znFileLoaderJob::refresh(zndReferenceNode& reference)
{
    reference.loadSmartReference();
    reference.setName(QFileInfo(m_file).baseName());
    m_loadedNode = znTypeConverter::convertNode(reference);
    m_state = znCADFileTypes::JobSucceeded;
}

/// The file's own top node goes; its content hangs directly below the reference. The node that the load needed is left
/// to itself: nobody refers to it.
void znFileLoaderJob::fill(const osg::NodePtr& place)
{
    const osg::NodePtr loaded = osg::Node::create();
    m_state = stateOf(znFileIO::load({m_file}, loaded, znScenegraph::isEmpty(), false, false));
    if (m_state == znCADFileTypes::JobFailed || loaded->getNChildren() == 0)
        return;
    frame::moveChildren(loaded->getChild(0), place);
    frame::markReferenceLoaded(place);
    m_loadedNode = place;
}

void znFileLoaderJob::createSmartReference(const osg::NodePtr& place)
{
    auto* service = znKernelServiceFactory::the()->get<znReferenceService>();
    zndReferenceNode reference = service->createReference(znTypeConverter::convertNode(place));
    reference.setSmartPath(m_file);
    refresh(reference);
}

void znFileLoaderJob::load(const osg::NodePtr& place)
{
    m_state = stateOf(znFileIO::load({m_file}, place, znScenegraph::isEmpty(), false, m_loadBehavior));
    if (m_state != znCADFileTypes::JobSucceeded)
        return;
    const std::vector<znFileIO::loadedS>& list = znFileIO::getLoadedGeometriesList();
    m_loadedNode = list.empty() ? osg::NodePtr() : list.back().getNode();
}
