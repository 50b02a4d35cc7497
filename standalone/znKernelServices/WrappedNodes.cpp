#include "standalone/znKernelServices/WrappedNodes.h"

#include "host/OSGSystem/Cast.h"
#include "host/OSGSystem/FieldContainerFactory.h"
#include "standalone/session/Session.h"

#include <limits>

namespace zn::services
{

std::uint64_t livingSessionId()
{
    const Session* session = Session::current();
    return session ? session->id() : 0;
}

osg::FieldContainerPtr containerOf(const zndObject& object)
{
    if (object.getSessionId() != livingSessionId() || object.getObjectId() > std::numeric_limits<unsigned>::max())
        return {};
    return osg::FieldContainerFactory::the()->getContainer(static_cast<unsigned>(object.getObjectId()));
}

osg::NodePtr nodeOf(const zndObject& object)
{
    return osg::fcCast<osg::Node>(containerOf(object));
}

osg::ExtReferencePtr referenceOf(const zndObject& object)
{
    const osg::NodePtr node = nodeOf(object);
    return node ? osg::fcCast<osg::ExtReference>(node->getCore()) : osg::ExtReferencePtr();
}

osg::UberCameraPtr cameraOf(const zndObject& object)
{
    const osg::NodePtr node = nodeOf(object);
    return node ? osg::fcCast<osg::UberCamera>(node->getCore()) : osg::UberCameraPtr();
}

} // namespace zn::services
