#include "host/znOpenSGUtils/znOpenSGUtils.h"

#include "standalone/session/znStandaloneSession.h"
#include "standalone/znKernel/KernelState.h"
#include "standalone/znUtils/CallTrace.h"

osg::NodePtr znOpenSGUtils::getRoot()
{
    const zn::TracedCall call("znOpenSGUtils::getRoot");
    return znStandaloneSession::require().sceneRoot();
}

bool znOpenSGUtils::call(const std::string& name, znMessage& message, int caller)
{
    const zn::TracedCall traced("znOpenSGUtils::call", name, caller);
    return zn::call(znStandaloneSession::require().kernel().helperCalls, name, message, caller);
}
