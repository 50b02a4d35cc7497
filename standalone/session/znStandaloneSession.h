#pragma once

#include "host/HostExport.h"
#include "host/OSGSystem/Node.h"
#include "host/znUtils/znMessage.h"
#include "standalone/session/Settings.h"
#include "standalone/znUtils/LogSink.h"

#include <QString>

#include <memory>

namespace zn
{
struct KernelState;
}

/// The open host while it lives: every state that the contract's static calls reach belongs to one session. One is alive
/// at a time, on the thread of the application object, which must exist.
///
/// When a session ends, its scene goes, its temporary folder is removed, and containers that are still alive are swept:
/// pointers to them must not be used any more.
class ZN_HOST_EXPORT znStandaloneSession
{
public:
    znStandaloneSession();
    ~znStandaloneSession();
    znStandaloneSession(const znStandaloneSession&) = delete;
    znStandaloneSession& operator=(const znStandaloneSession&) = delete;

    /// The living session, null without one.
    static znStandaloneSession* current();
    /// The living session; ends the program with a message when there is none.
    static znStandaloneSession& require();

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

    /// The folder of this session for temporary files.
    QString temporaryFolder() const { return m_temporaryFolder; }

    zn::KernelState& kernel() const { return *m_kernel; }

private:
    zn::Settings m_settings;
    znMessage m_preferences;
    osg::RefPtr<osg::NodePtr> m_root;
    std::uint32_t m_selectedId = 0;
    QString m_temporaryFolder;
    std::unique_ptr<zn::KernelState> m_kernel;
};
