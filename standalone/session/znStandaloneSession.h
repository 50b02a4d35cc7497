#pragma once

#include "host/HostExport.h"
#include "host/OSGSystem/Node.h"
#include "host/znKernelServices/znBaseService.h"
#include "host/znUtils/znMessage.h"
#include "standalone/OSGSystem/ContainerRegistry.h"
#include "standalone/session/Settings.h"
#include "standalone/znUtils/LogSink.h"

#include <QString>

#include <memory>
#include <typeinfo>
#include <vector>

namespace zn
{
struct KernelState;
}

/// The open host while it lives: every state that the contract's static calls reach belongs to one session. One is alive
/// at a time, on the thread of the application object, which must exist.
///
/// When a session ends, its scene goes, its temporary folder is removed, and containers that are still alive are swept:
/// pointers to them must not be used any more. All jobs must have ended before.
class ZN_HOST_EXPORT znStandaloneSession
{
public:
    znStandaloneSession();
    /// Ends the session if `end` did not.
    ~znStandaloneSession();
    znStandaloneSession(const znStandaloneSession&) = delete;
    znStandaloneSession& operator=(const znStandaloneSession&) = delete;

    /// The living session, null without one.
    static znStandaloneSession* current();
    /// The living session; ends the program with a message when there is none.
    static znStandaloneSession& require();

    /// Ends the session before its destruction and names the containers that were still alive, without the scene's own.
    /// Nothing else of a session may be used after its end.
    std::vector<osg::LivingContainer> end();

    /// Tells this session from all others of the process; never 0.
    std::uint64_t id() const { return m_id; }

    /// The settings of this session; a change counts from the next question on.
    zn::Settings& settings() { return m_settings; }

    /// What `znPreferences::getData` answers.
    znMessage& preferences() { return m_preferences; }

    /// The root of the scene, a group; lives as long as the session.
    osg::NodePtr sceneRoot() const { return m_root; }
    /// Null when nothing is selected or the selected node is gone.
    osg::NodePtr selectedNode() const;
    /// Null takes the selection away.
    void select(const osg::NodePtr& node);

    /// Where the host's log goes while this session lives; an empty sink stands for the standard error stream.
    void setLogSink(znUtils::LogSink sink);

    /// Makes `service`, which must live as long as the session, the one that `znKernelServiceFactory::get<T>` finds; null
    /// stands for a service that is known but missing.
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

    /// The folder of this session for temporary files.
    QString temporaryFolder() const { return m_temporaryFolder; }

    /// What the implementation keeps; of no use outside of it.
    zn::KernelState& kernel() const { return *m_kernel; }

private:
    static void listService(std::size_t type, znBaseService* service);
    static void dropService(std::size_t type);

    std::uint64_t m_id;
    zn::Settings m_settings;
    znMessage m_preferences;
    osg::RefPtr<osg::NodePtr> m_root;
    std::uint32_t m_selectedId = 0;
    QString m_temporaryFolder;
    std::unique_ptr<zn::KernelState> m_kernel;
};
