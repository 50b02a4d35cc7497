#include "standalone/startup/StandaloneSession.h"

#include "host/znKernelServices/znKernelServiceFactory.h"
#include "scene/ContainerRegistry.h"
#include "standalone/startup/BuiltInReaders.h"
#include "standalone/znAssets/AssetCalls.h"
#include "standalone/znJobProcessing/ProcessLimit.h"
#include "standalone/znKernel/ControllerCalls.h"
#include "standalone/znKernel/LauncherFailure.h"
#include "standalone/znKernelServices/CameraService.h"
#include "standalone/znKernelServices/ReferenceService.h"
#include "standalone/znOpenSGUtils/HelperCalls.h"
#include "standalone/znUtils/LogSink.h"
#include "standalone/znUtils/TemporaryFolder.h"

#include <utility>

namespace zn
{

namespace
{

void offerAssetCalls(Session& session)
{
    CallTable& controller = session.state<kernel::ControllerCalls>().table;
    controller.offer("getSelectedMaterialAssetDirectory", assets::getSelectedMaterialAssetDirectory);
    controller.offer("applyMaterialAssetsToNodes", assets::applyMaterialAssetsToNodes);
    session.state<nodes::HelperCalls>().table.offer("loadMaterialAsset", assets::loadMaterialAsset);
}

znJobs::ProcessLimitProvider processLimitOf(const Settings& settings)
{
    return [&settings] {
        const int most = settings.processes.most;
        return most > 0 ? static_cast<unsigned>(most) : znJobs::defaultProcessLimit();
    };
}

} // namespace

StandaloneSession::StandaloneSession()
    : m_referenceService(services::makeReferenceService()), m_cameraService(services::makeCameraService())
{
    setService<znReferenceService>(m_referenceService.get());
    setService<znCameraService>(m_cameraService.get());
    utils::setTemporaryFolder(temporaryFolder().toStdString());
    znJobs::setProcessLimitProvider(processLimitOf(settings()));
    znJobs::setLossJudge(kernel::judgeLaunch);
    state<files::SceneReaders>() = startup::sessionReaders(*this);
    offerAssetCalls(*this);
}

StandaloneSession::~StandaloneSession()
{
    end();
}

std::vector<osg::LivingContainer> StandaloneSession::end()
{
    if (current() != this)
        return {};
    znJobs::setProcessLimitProvider({});
    znJobs::setLossJudge({});
    znKernelServiceFactory::the()->m_services.clear();
    utils::setTemporaryFolder({});
    utils::setLogSink({});
    clear();
    std::vector<osg::LivingContainer> left = osg::livingContainers();
    osg::sweepContainers();
    leave();
    return left;
}

void StandaloneSession::listService(std::size_t type, znBaseService* service)
{
    znKernelServiceFactory::the()->m_services.insert(type, service);
}

void StandaloneSession::dropService(std::size_t type)
{
    znKernelServiceFactory::the()->m_services.remove(type);
}

StandaloneSession* StandaloneSession::current()
{
    return static_cast<StandaloneSession*>(Session::current());
}

StandaloneSession& StandaloneSession::require()
{
    return static_cast<StandaloneSession&>(Session::require());
}

void StandaloneSession::setLogSink(utils::LogSink sink)
{
    utils::setLogSink(std::move(sink));
}

} // namespace zn
