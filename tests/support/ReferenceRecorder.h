#pragma once

#include "standalone/session/Session.h"
#include "standalone/znInterfaces/ReferenceObserver.h"

#include <memory>
#include <vector>

/// Keeps what `znReferenceInterface::notifyReferences` was told in a session, from its making on. One at a time in a
/// session.
class ReferenceRecorder
{
public:
    struct Notification {
        unsigned rootId = 0; ///< 0 for none
        int code = 0;
        int argument = 0;
    };

    explicit ReferenceRecorder(zn::Session& session)
    {
        session.state<zn::interfaces::ReferenceObserver>().observe =
            [notifications = m_notifications](const osg::NodePtr& root, int code, int argument) {
                notifications->push_back({root ? root->getContainerId() : 0, code, argument});
            };
    }

    const std::vector<Notification>& notifications() const { return *m_notifications; }

private:
    std::shared_ptr<std::vector<Notification>> m_notifications = std::make_shared<std::vector<Notification>>();
};
