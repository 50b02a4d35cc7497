#include "host/znInterfaces/znInterfaceFactory.h"
#include "host/znInterfaces/znReferenceInterface.h"
#include "standalone/session/znStandaloneSession.h"
#include "standalone/znKernel/KernelState.h"
#include "standalone/znUtils/CallTrace.h"

namespace
{

/// Keeps nothing itself: each notification goes to the session that is alive, and nowhere without one.
class SessionReferences final : public znReferenceInterface
{
public:
    void notifyReferences(const osg::NodePtr& root, int code, int argument) override
    {
        const zn::TracedCall call("znReferenceInterface::notifyReferences", root, code, argument);
        if (const znStandaloneSession* session = znStandaloneSession::current())
            session->kernel().referenceNotices.push_back({root ? root->getContainerId() : 0, code, argument});
    }
};

} // namespace

znInterfaceObject::znInterfaceObject() = default;
znInterfaceObject::~znInterfaceObject() = default;
znReferenceInterface::znReferenceInterface() = default;
znReferenceInterface::~znReferenceInterface() = default;

znInterfaceFactory* znInterfaceFactory::the()
{
    static znInterfaceFactory only;
    return &only;
}

znInterfaceObject* znInterfaceFactory::get(std::type_index type) const
{
    static SessionReferences references;
    return type == typeid(znReferenceInterface) ? &references : nullptr;
}
