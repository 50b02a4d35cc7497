#pragma once

#include "host/HostExport.h"
#include "host/OSGSystem/Node.h"
#include "host/znUtils/znMessage.h"
#include "standalone/session/Settings.h"

#include <QString>

#include <cstdint>
#include <memory>
#include <typeindex>
#include <unordered_map>
#include <utility>
#include <vector>

namespace zn
{

class SessionFolder;

/// What the modules of a living host share: the scene, the selection, the settings, a folder for temporary files, and a
/// place for whatever a module has to remember while the host lives. One is alive at a time, on the thread of the
/// application object. It knows no module; `zn::StandaloneSession` puts them together.
class ZN_HOST_EXPORT Session
{
public:
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;

    /// The living session, null without one.
    static Session* current();
    /// The living session; ends the program with a message when there is none.
    static Session& require();

    /// Tells this session from all others of the process; never 0.
    std::uint64_t id() const { return m_id; }

    /// The settings of this session; a change counts from the next question on.
    Settings& settings() { return m_settings; }

    /// What `znPreferences::getData` answers.
    znMessage& preferences() { return m_preferences; }

    /// The root of the scene, a group; lives as long as the session.
    osg::NodePtr sceneRoot() const { return m_root; }
    /// Null when nothing is selected or the selected node is gone.
    osg::NodePtr selectedNode() const;
    /// Null takes the selection away.
    void select(const osg::NodePtr& node);

    /// The folder of this session for temporary files.
    QString temporaryFolder() const;

    /// What the module that declares `State` remembers: made with its default constructor when it is first asked for,
    /// gone with the session, the newest first. A module names a type of its own here, so that no other can meet it.
    template <class State>
    State& state()
    {
        const std::type_index type(typeid(State));
        const auto found = m_states.find(type);
        if (found != m_states.end())
            return static_cast<Kept<State>*>(found->second)->value;
        auto kept = std::make_unique<Kept<State>>();
        State& value = kept->value;
        keep(type, std::move(kept));
        return value;
    }

protected:
    Session();
    ~Session();

    /// Destroys the states, then the scene. The session is still the living one meanwhile.
    void clear();
    /// Removes the temporary folder; from now on no session is alive.
    void leave();

private:
    struct Keepable {
        virtual ~Keepable() = default;
    };
    template <class State>
    struct Kept : Keepable {
        State value{};
    };

    void keep(std::type_index type, std::unique_ptr<Keepable> state);

    std::uint64_t m_id;
    Settings m_settings;
    znMessage m_preferences;
    osg::RefPtr<osg::NodePtr> m_root;
    std::uint32_t m_selectedId = 0;
    std::unique_ptr<SessionFolder> m_folder;
    std::vector<std::pair<std::type_index, std::unique_ptr<Keepable>>> m_order;
    std::unordered_map<std::type_index, Keepable*> m_states;
};

} // namespace zn
