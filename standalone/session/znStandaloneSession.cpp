#include "standalone/session/znStandaloneSession.h"

#include "host/OSGSystem/Cast.h"
#include "host/OSGSystem/FieldContainerFactory.h"
#include "host/OSGSystem/Group.h"
#include "host/OSGSystem/Names.h"
#include "host/OSGSystem/TreeFunctions.h"
#include "host/znKernelServices/znKernelServiceFactory.h"
#include "standalone/OSGSystem/ContainerRegistry.h"
#include "standalone/znJobProcessing/ProcessLimit.h"
#include "standalone/znKernel/KernelState.h"
#include "standalone/znKernelServices/Services.h"
#include "standalone/znUtils/LogSink.h"
#include "standalone/znUtils/TemporaryFolder.h"

#include <QDir>
#include <QTemporaryDir>

#include <utility>

namespace
{

znStandaloneSession* living = nullptr;

std::uint64_t nextSessionId()
{
    static std::uint64_t last = 0;
    return ++last;
}

QString makeTemporaryFolder()
{
    QTemporaryDir folder;
    folder.setAutoRemove(false);
    if (!folder.isValid())
        qFatal("cannot make a temporary folder: %s", qPrintable(folder.errorString()));
    return folder.path();
}

osg::NodePtr makeSceneRoot()
{
    const osg::NodePtr root = osg::makeNodeFor(osg::Group::create());
    osg::setName(root, "Scene");
    return root;
}

} // namespace

znStandaloneSession::znStandaloneSession()
    : m_id(nextSessionId()), m_root(makeSceneRoot()), m_temporaryFolder(makeTemporaryFolder()),
      m_kernel(std::make_unique<zn::KernelState>())
{
    if (living)
        qFatal("a second session was started while one is alive");
    living = this;
    m_kernel->referenceService = zn::makeReferenceService();
    setService<znReferenceService>(m_kernel->referenceService.get());
    m_kernel->cameraService = zn::makeCameraService();
    setService<znCameraService>(m_kernel->cameraService.get());
    znUtils::setTemporaryFolder(m_temporaryFolder.toStdString());
    znJobs::setProcessLimitProvider([this] {
        const int most = m_settings.integer(QStringLiteral("processes.most"));
        return most > 0 ? static_cast<unsigned>(most) : znJobs::defaultProcessLimit();
    });
}

znStandaloneSession::~znStandaloneSession()
{
    end();
}

std::vector<osg::LivingContainer> znStandaloneSession::end()
{
    if (living != this)
        return {};
    znJobs::setProcessLimitProvider({});
    znKernelServiceFactory::the()->m_services.clear();
    znUtils::setTemporaryFolder({});
    znUtils::setLogSink({});
    m_kernel.reset();
    m_root = osg::NodePtr();
    std::vector<osg::LivingContainer> left = osg::livingContainers();
    osg::sweepContainers();
    QDir(m_temporaryFolder).removeRecursively();
    living = nullptr;
    return left;
}

void znStandaloneSession::listService(std::size_t type, znBaseService* service)
{
    znKernelServiceFactory::the()->m_services.insert(type, service);
}

void znStandaloneSession::dropService(std::size_t type)
{
    znKernelServiceFactory::the()->m_services.remove(type);
}

znStandaloneSession* znStandaloneSession::current()
{
    return living;
}

znStandaloneSession& znStandaloneSession::require()
{
    if (!living)
        qFatal("the host was called without a session");
    return *living;
}

osg::NodePtr znStandaloneSession::selectedNode() const
{
    return osg::fcCast<osg::Node>(osg::FieldContainerFactory::the()->getContainer(m_selectedId));
}

void znStandaloneSession::select(const osg::NodePtr& node)
{
    m_selectedId = node ? node->getContainerId() : 0;
}

void znStandaloneSession::setLogSink(znUtils::LogSink sink)
{
    znUtils::setLogSink(std::move(sink));
}
