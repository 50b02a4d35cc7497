#include "standalone/znInterfaces/SessionReferences.h"

#include "standalone/session/Session.h"
#include "standalone/znInterfaces/ReferenceObserver.h"
#include "standalone/znUtils/CallTrace.h"

void zn::interfaces::SessionReferences::notifyReferences(const osg::NodePtr& root, int code, int argument)
{
    const TracedCall call("znReferenceInterface::notifyReferences", root, code, argument);
    Session* session = Session::current();
    if (session && session->state<ReferenceObserver>().observe)
        session->state<ReferenceObserver>().observe(root, code, argument);
}
