#include "standalone/session/znStandaloneSession.h"

#include "host/znKernelServices/znKernelServiceFactory.h"
#include "standalone/OSGSystem/ContainerRegistry.h"
#include "standalone/znJobProcessing/ProcessLimit.h"
#include "standalone/znKernel/KernelState.h"
#include "standalone/znKernelServices/Services.h"
#include "standalone/znUtils/LogSink.h"
#include "standalone/znUtils/TemporaryFolder.h"

#include <utility>

znStandaloneSession::znStandaloneSession() : m_kernel(std::make_unique<zn::KernelState>())
{
    m_kernel->referenceService = zn::makeReferenceService();
    setService<znReferenceService>(m_kernel->referenceService.get());
    m_kernel->cameraService = zn::makeCameraService();
    setService<znCameraService>(m_kernel->cameraService.get());
    znUtils::setTemporaryFolder(temporaryFolder().toStdString());
    znJobs::setProcessLimitProvider([this] {
        const int most = settings().processes.most;
        return most > 0 ? static_cast<unsigned>(most) : znJobs::defaultProcessLimit();
    });
}

znStandaloneSession::~znStandaloneSession()
{
    end();
}

std::vector<osg::LivingContainer> znStandaloneSession::end()
{
    if (current() != this)
        return {};
    znJobs::setProcessLimitProvider({});
    znKernelServiceFactory::the()->m_services.clear();
    znUtils::setTemporaryFolder({});
    znUtils::setLogSink({});
    m_kernel.reset();
    clear();
    std::vector<osg::LivingContainer> left = osg::livingContainers();
    osg::sweepContainers();
    leave();
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
    return static_cast<znStandaloneSession*>(Session::current());
}

znStandaloneSession& znStandaloneSession::require()
{
    return static_cast<znStandaloneSession&>(Session::require());
}

void znStandaloneSession::setLogSink(znUtils::LogSink sink)
{
    znUtils::setLogSink(std::move(sink));
}
