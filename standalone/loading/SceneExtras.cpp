#include "standalone/loading/SceneExtras.h"

#include "host/OSGSystem/Cast.h"
#include "host/OSGSystem/TreeFunctions.h"
#include "host/znOpenSGUberCamera/znUberCameraUtils.h"
#include "scene/SceneEdits.h"
#include "scene/Tags.h"
#include "standalone/session/Session.h"
#include "standalone/znOpenSGUberCamera/SessionCameras.h"
#include "standalone/znVariants/StoredVariants.h"

#include <algorithm>
#include <vector>

namespace zn
{

namespace
{

osg::UberCameraPtr cameraOf(const osg::NodePtr& node)
{
    return osg::fcCast<osg::UberCamera>(node->getCore());
}

/// The child of `root` that a file carries its cameras in; null when there is none.
osg::NodePtr carriedCameras(const osg::NodePtr& root)
{
    for (unsigned i = root->getNChildren(); i > 0; --i) {
        const std::vector<std::string>& tags = osg::tagsOf(root->getChild(i - 1));
        if (std::find(tags.begin(), tags.end(), SceneWithExtras::camerasTag) != tags.end())
            return root->getChild(i - 1);
    }
    return {};
}

/// Takes viewpoints out of `track` whose names the session has.
void dropKnownViewpoints(const zn::cameras::CameraTree& cameras, const osg::NodePtr& track)
{
    for (unsigned i = track->getNChildren(); i > 0; --i) {
        const osg::NodePtr node = track->getChild(i - 1);
        const osg::UberCameraPtr camera = cameraOf(node);
        if (camera && cameras.findViewpoint(znUberCameraUtils::getName(camera)).cameraId != 0)
            osg::subChild(track, node);
    }
}

void listCameras(zn::cameras::CameraTree& cameras, const osg::NodePtr& root)
{
    osg::traverse(root, [&](const osg::NodePtr& node) {
        const osg::UberCameraPtr camera = node ? cameraOf(node) : osg::UberCameraPtr();
        if (camera)
            cameras.list(camera, node);
        return node ? osg::Action::Continue : osg::Action::Skip;
    });
}

/// The children of `parent`, which they leave, in their order.
std::vector<osg::RefPtr<osg::NodePtr>> takenChildren(const osg::NodePtr& parent)
{
    std::vector<osg::RefPtr<osg::NodePtr>> children;
    while (parent->getNChildren() > 0) {
        children.emplace_back(parent->getChild(parent->getNChildren() - 1));
        osg::subChild(parent, children.back().get());
    }
    std::reverse(children.begin(), children.end());
    return children;
}

/// Hangs a camera that a file carried into the session's tree; what is new in one of a known name goes below that. What
/// came is listed at once, for the next one may bear its name.
void takeCamera(zn::cameras::CameraTree& cameras, const osg::NodePtr& node)
{
    for (unsigned i = 0; i < node->getNChildren(); ++i)
        dropKnownViewpoints(cameras, node->getChild(i));
    const osg::UberCameraPtr camera = cameraOf(node);
    const osg::NodePtr known = camera ? cameras.findCamera(znUberCameraUtils::getName(camera)) : osg::NodePtr();
    if (!known) {
        osg::addChild(cameras.root(), node);
        listCameras(cameras, node);
        return;
    }
    for (const osg::RefPtr<osg::NodePtr>& track : takenChildren(node)) {
        if (track.get()->getNChildren() == 0)
            continue;
        osg::addChild(known, track.get());
        listCameras(cameras, track.get());
    }
}

void takeCameras(zn::cameras::CameraTree& cameras, const osg::NodePtr& root)
{
    const osg::RefPtr<osg::NodePtr> carried(carriedCameras(root));
    if (!carried)
        return;
    osg::subChild(root, carried);
    listCameras(cameras, cameras.root());
    for (const osg::RefPtr<osg::NodePtr>& node : takenChildren(carried.get()))
        takeCamera(cameras, node.get());
}

} // namespace

SceneWithExtras::SceneWithExtras(Session& session) : m_root(session.sceneRoot())
{
    osg::VariantTable table = zn::variants::storedVariants(zn::variants::sessionVariants(session), m_root);
    m_hasVariants = !table.empty();
    if (m_hasVariants)
        osg::attach(m_root, osg::VariantAttachment::create(std::move(table)));
    const osg::NodePtr cameras = zn::cameras::sessionCameras(session).root();
    if (cameras->getNChildren() == 0)
        return;
    m_cameras = cameras;
    osg::setTags(m_cameras, {camerasTag});
    osg::addChild(m_root, m_cameras);
}

SceneWithExtras::~SceneWithExtras()
{
    if (m_hasVariants)
        osg::detach(m_root, osg::VariantAttachment::of(m_root));
    if (m_cameras)
        osg::subChild(m_root, m_cameras);
}

QStringList takeExtras(Session& session, const osg::NodePtr& root)
{
    if (!root)
        return {};
    QStringList complaints;
    if (const auto variants = osg::VariantAttachment::of(root)) {
        complaints = zn::variants::addStoredVariants(zn::variants::sessionVariants(session), variants->table(), root);
        osg::detach(root, variants);
    }
    zn::cameras::CameraTree& cameras = zn::cameras::sessionCameras(session);
    takeCameras(cameras, root);
    listCameras(cameras, root);
    return complaints;
}

} // namespace zn
