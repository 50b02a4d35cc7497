#include "standalone/startup/znStandaloneSession.h"

#include "host/znKernelServices/znKernelServiceFactory.h"
#include "scene/ContainerRegistry.h"
#include "standalone/startup/BuiltInReaders.h"
#include "standalone/znAssets/AssetCalls.h"
#include "standalone/znJobProcessing/ProcessLimit.h"
#include "standalone/znKernel/ControllerCalls.h"
#include "standalone/znKernelServices/CameraService.h"
#include "standalone/znKernelServices/ReferenceService.h"
#include "standalone/znOpenSGUtils/HelperCalls.h"
#include "standalone/znUtils/LogSink.h"
#include "standalone/znUtils/TemporaryFolder.h"

#include <utility>

namespace
{

void offerAssetCalls(zn::Session& session)
{
    zn::CallTable& controller = session.state<zn::ControllerCalls>().table;
    controller.offer("getSelectedMaterialAssetDirectory", zn::getSelectedMaterialAssetDirectory);
    controller.offer("applyMaterialAssetsToNodes", zn::applyMaterialAssetsToNodes);
    session.state<zn::HelperCalls>().table.offer("loadMaterialAsset", zn::loadMaterialAsset);
}

znJobs::ProcessLimitProvider processLimitOf(const zn::Settings& settings)
{
    return [&settings] {
        const int most = settings.processes.most;
        return most > 0 ? static_cast<unsigned>(most) : znJobs::defaultProcessLimit();
    };
}

} // namespace

znStandaloneSession::znStandaloneSession()
    : m_referenceService(zn::makeReferenceService()), m_cameraService(zn::makeCameraService())
{
    setService<znReferenceService>(m_referenceService.get());
    setService<znCameraService>(m_cameraService.get());
    znUtils::setTemporaryFolder(temporaryFolder().toStdString());
    znJobs::setProcessLimitProvider(processLimitOf(settings()));
    state<formats::SceneReaders>() = zn::builtInReaders();
    offerAssetCalls(*this);
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
