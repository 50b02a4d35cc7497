#include "host/znOpenSGUtils/znOpenSGUtils.h"

#include "standalone/session/znStandaloneSession.h"
#include "standalone/znUtils/CallTrace.h"

osg::NodePtr znOpenSGUtils::getRoot()
{
    const zn::TracedCall call("znOpenSGUtils::getRoot");
    return znStandaloneSession::require().sceneRoot();
}
