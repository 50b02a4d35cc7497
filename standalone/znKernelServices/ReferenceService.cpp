#include "standalone/znKernelServices/ReferenceService.h"
#include "host/znKernelServices/znKernelServiceFactory.h"
#include "scene/SceneEdits.h"

#include "host/OSGSystem/TreeFunctions.h"
#include "host/znOpenSGExt/ExtReference.h"
#include "standalone/znKernelServices/WrappedNodes.h"
#include "standalone/znUtils/CallTrace.h"

namespace
{

class ReferenceService final : public znReferenceService
{
public:
    zndReferenceNode createReference(const zndNode& parent) override
    {
        const zn::TracedCall call("znReferenceService::createReference", parent.getObjectId());
        const osg::NodePtr node = osg::makeNodeFor(osg::ExtReferenceBase::create());
        if (const osg::NodePtr place = zn::services::nodeOf(parent))
            osg::addChild(place, node);
        return zndReferenceNode(node->getContainerId());
    }
};

} // namespace

std::unique_ptr<znReferenceService> zn::services::makeReferenceService()
{
    return std::make_unique<ReferenceService>();
}
