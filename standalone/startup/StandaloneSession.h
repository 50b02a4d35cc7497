#pragma once

#include "host/HostExport.h"
#include "host/znKernelServices/znBaseService.h"
#include "scene/ContainerRegistry.h"
#include "standalone/session/Session.h"
#include "standalone/znUtils/LogSink.h"

#include <memory>
#include <typeinfo>
#include <vector>

class znCameraService;
class znReferenceService;

namespace zn
{

/// The open host while it lives: every state that the contract's static calls reach belongs to one session. One is
/// alive at a time, on the thread of the application object, which must exist.
///
/// When a session ends, its scene goes, its temporary folder is removed, and containers that are still alive are swept:
/// pointers to them must not be used any more. All jobs must have ended before.
class ZN_HOST_EXPORT StandaloneSession : public Session
{
public:
    StandaloneSession();
    /// Ends the session if `end` did not.
    ~StandaloneSession();

    /// The living session, null without one.
    static StandaloneSession* current();
    /// The living session; ends the program with a message when there is none.
    static StandaloneSession& require();

    /// Ends the session before its destruction and names the containers that were still alive, without the scene's own.
    /// Nothing else of a session may be used after its end.
    std::vector<osg::LivingContainer> end();

    /// Where the host's log goes while this session lives; an empty sink stands for the standard error stream.
    void setLogSink(utils::LogSink sink);

    /// Makes `service`, which must live as long as the session, the one that `znKernelServiceFactory::get<T>` finds;
    /// null stands for a service that is known but missing.
    template <class T>
    void setService(znBaseService* service)
    {
        listService(typeid(T).hash_code(), service);
    }
    /// Makes the service of type `T` unknown.
    template <class T>
    void removeService()
    {
        dropService(typeid(T).hash_code());
    }

private:
    static void listService(std::size_t type, znBaseService* service);
    static void dropService(std::size_t type);

    std::unique_ptr<znReferenceService> m_referenceService;
    std::unique_ptr<znCameraService> m_cameraService;
};

} // namespace zn
