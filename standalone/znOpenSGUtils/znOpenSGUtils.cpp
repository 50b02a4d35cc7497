#include "host/znOpenSGUtils/znOpenSGUtils.h"

#include "standalone/session/Session.h"
#include "standalone/znOpenSGUtils/HelperCalls.h"
#include "standalone/znUtils/CallTrace.h"

osg::NodePtr znOpenSGUtils::getRoot()
{
    const zn::TracedCall call("znOpenSGUtils::getRoot");
    return zn::Session::require().sceneRoot();
}

bool znOpenSGUtils::call(const std::string& name, znMessage& message, int caller)
{
    const zn::TracedCall traced("znOpenSGUtils::call", name, caller);
    return zn::Session::require().state<zn::nodes::HelperCalls>().table.call(name, message, caller);
}
