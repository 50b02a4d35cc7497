#pragma once

#include "standalone/session/Session.h"
#include "standalone/znKernel/LoadedGeometries.h"

#include <memory>
#include <vector>

/// Keeps what the calls of `znFileIO::load` in a session asked for, from its making on. One at a time in a session.
class LoadRecorder
{
public:
    /// A request without its hold on nodes.
    struct Request {
        std::vector<QString> files;
        unsigned parentId = 0; ///< 0 for none
        bool sceneWasEmpty = false;
        bool merge = false;
        bool select = false;
    };

    explicit LoadRecorder(zn::Session& session)
    {
        session.state<zn::kernel::LoadObserver>().observe = [requests =
                                                                 m_requests](const zn::kernel::LoadRequest& request) {
            requests->push_back({request.files, request.parent ? request.parent->getContainerId() : 0,
                                 request.sceneWasEmpty, request.merge, request.select});
        };
    }

    const std::vector<Request>& requests() const { return *m_requests; }
    /// A request of nothing before the first.
    Request latest() const { return m_requests->empty() ? Request() : m_requests->back(); }

private:
    std::shared_ptr<std::vector<Request>> m_requests = std::make_shared<std::vector<Request>>();
};
