#include "ptx/scene/ViewNodes.h"

#include "host/OSGSystem/Group.h"
#include "host/OSGSystem/Names.h"
#include "host/OSGSystem/TreeFunctions.h"
#include "host/znOpenSGUberCamera/UberCamera.h"
#include "scene/EditScope.h"
#include "scene/SceneEdits.h"
#include "scene/Tags.h"

namespace ptx::scene
{

namespace
{

osg::UberCameraPtr makeCamera(const model::View& view)
{
    const osg::UberCameraPtr camera = osg::UberCameraBase::create();
    const osg::EditScope edit(camera, osg::UberCamera::MatrixFieldMask | osg::UberCamera::ProjectionFieldMask |
                                          osg::UberCamera::HeightFieldMask | osg::UberCamera::FieldOfViewFieldMask);
    camera->setMatrix(view.placement);
    camera->setProjection(view.isParallel ? osg::UberCamera::Parallel : osg::UberCamera::Perspective);
    if (view.isParallel)
        camera->setHeight(view.height);
    else
        camera->setFieldOfView(view.fieldOfView);
    return camera;
}

} // namespace

osg::NodePtr makeViewNode(const model::View& view)
{
    const osg::NodePtr bookmark = osg::makeNodeFor(osg::Group::create());
    osg::setName(bookmark, view.name);
    osg::setTags(bookmark, {"stylar::bookmark", "bookmark_group[" + view.group + "]"});
    const osg::NodePtr camera = osg::makeNodeFor(makeCamera(view));
    osg::setName(camera, view.name);
    osg::setTags(camera, {view.name});
    osg::addChild(bookmark, camera);
    return bookmark;
}

} // namespace ptx::scene
