#include "optimization/BookmarkViewpoints.h"

#include "host/OSGSystem/Cast.h"
#include "host/OSGSystem/Edit.h"
#include "host/znKernelServices/znCameraService.h"
#include "host/znKernelServices/znKernelServiceFactory.h"
#include "host/znOpenSGUberCamera/znUberCameraPool.h"
#include "host/znOpenSGUberCamera/znUberCameraUtils.h"
#include "host/znOpenSGUtils/znNodeUtils.h"
#include "host/znQRPCUtils/znQRPCConverter.h"
#include "host/znVariants/znVariantSet.h"

namespace optimization
{

namespace
{

/// The track of the camera that bears the name of the bookmark's camera node; both are made when they are not there.
zndNode trackFor(znCameraService& service, const osg::NodePtr& node)
{
    const std::vector<std::string> tags = znNodeUtils::getTags(node);
    const QString trackName = tags.empty() ? QString() : QString::fromUtf8(tags.front().c_str());
    const zndCameraNode camera = service.createCamera(trackName, 0);
    const zndNode track = camera.getDefaultCameraTrack();
    return track.isNull() ? service.createCameraTrack(trackName + QStringLiteral("_track"), camera) : track;
}

/// Makes `camera` the viewpoint of this name, below `track`. Gives its id.
unsigned makeViewpoint(const osg::UberCameraPtr& camera, const zndNode& track, const QString& name)
{
    osg::beginEditCP(camera, osg::Transform3DBase::FlagsFieldMask, 1);
    camera->addFlag(osg::UberCamera::ViewpointFlag);
    osg::endEditCP(camera, osg::Transform3DBase::FlagsFieldMask, 1);
    const osg::NodePtr place = znQRPCConverter::idToNode(static_cast<unsigned>(track.getObjectId()));
    znUberCameraPool::the()->add(camera, place);
    znUberCameraUtils::setName(camera, name, false);
    return camera->getContainerId();
}

void listViewpoint(znVariantSet* set, unsigned id)
{
    const osg::UberCameraPtr viewpoint = znUberCameraPool::get(id);
    if (!viewpoint)
        return;
    const QString name = znUberCameraUtils::getName(viewpoint);
    set->addViewpoint(name);
    set->m_viewpointName = name;
}

void addViewpoint(znVariantSet* set, const osg::NodePtr& node, const osg::UberCameraPtr& camera,
                  const osg::NodePtr& bookmarkNode)
{
    znUberCameraPool::the()->remove(camera);
    auto* service = znKernelServiceFactory::the()->get<znCameraService>();
    if (!service)
        return;
    const zndNode track = trackFor(*service, node);
    const QString name = QString::fromUtf8(znNodeUtils::getName(bookmarkNode)) + QStringLiteral("_vp");
    auto id = static_cast<unsigned>(service->findViewpoint(name).getId());
    if (id == 0)
        id = makeViewpoint(camera, track, name);
    listViewpoint(set, id);
}

} // namespace

void initViewPoints(osg::NodePtr& bookmarkNode, znVariantSet* set)
{
    for (unsigned i = 0; i < bookmarkNode->getNChildren(); ++i) {
        const osg::NodePtr child = bookmarkNode->getChild(i);
        if (const auto camera = osg::fcCast<osg::UberCamera>(child->getCore()))
            addViewpoint(set, child, camera, bookmarkNode);
    }
}

} // namespace optimization
