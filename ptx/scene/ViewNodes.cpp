#include "ptx/scene/ViewNodes.h"

#include "host/OSGSystem/Group.h"
#include "host/OSGSystem/Names.h"
#include "host/OSGSystem/TreeFunctions.h"
#include "host/znOpenSGUberCamera/UberCamera.h"
#include "scene/EditScope.h"
#include "scene/MatrixMath.h"
#include "scene/SceneEdits.h"
#include "scene/Tags.h"
#include "scene/ViewTags.h"

#include <utility>

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

/// What `facts` of a camera at `placement` are in the space around it.
osg::ViewFacts seenFromOutside(osg::ViewFacts facts, const osg::Matrix& placement)
{
    for (osg::HalfSpace& section : facts.sections) {
        const osg::Vec3f normal = osg::transformVector(placement, {section[0], section[1], section[2]});
        const float eye = normal.x * placement[12] + normal.y * placement[13] + normal.z * placement[14];
        section = {normal.x, normal.y, normal.z, section[3] - eye};
    }
    return facts;
}

} // namespace

osg::NodePtr makeViewNode(const model::View& view)
{
    const osg::NodePtr bookmark = osg::makeNodeFor(osg::Group::create());
    osg::setName(bookmark, view.name);
    std::vector<std::string> tags = {"stylar::bookmark", "bookmark_group[" + view.group + "]"};
    for (std::string& tag : osg::tagsFor(seenFromOutside(view.facts, view.placement)))
        tags.push_back(std::move(tag));
    osg::setTags(bookmark, std::move(tags));
    const osg::UberCameraPtr core = makeCamera(view);
    osg::setTags(core, osg::tagsFor(view.facts));
    const osg::NodePtr camera = osg::makeNodeFor(core);
    osg::setName(camera, view.name);
    osg::setTags(camera, {view.name});
    osg::addChild(bookmark, camera);
    return bookmark;
}

} // namespace ptx::scene
