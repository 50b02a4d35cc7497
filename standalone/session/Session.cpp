#include "standalone/session/Session.h"

#include "host/OSGSystem/Cast.h"
#include "host/OSGSystem/FieldContainerFactory.h"
#include "host/OSGSystem/Group.h"
#include "host/OSGSystem/Names.h"
#include "host/OSGSystem/TreeFunctions.h"
#include "standalone/session/SessionFolder.h"

#include <utility>

namespace zn
{

namespace
{

Session* living = nullptr;

std::uint64_t nextSessionId()
{
    static std::uint64_t last = 0;
    return ++last;
}

osg::NodePtr makeSceneRoot()
{
    const osg::NodePtr root = osg::makeNodeFor(osg::Group::create());
    osg::setName(root, "Scene");
    return root;
}

} // namespace

Session::Session() : m_id(nextSessionId()), m_root(makeSceneRoot()), m_folder(std::make_unique<SessionFolder>())
{
    if (living)
        qFatal("a second session was started while one is alive");
    living = this;
}

Session::~Session() = default;

QString Session::temporaryFolder() const
{
    return m_folder->path();
}

void Session::clear()
{
    while (!m_order.empty()) {
        const auto newest = std::move(m_order.back());
        m_order.pop_back();
        m_states.erase(newest.first);
    }
    m_root = osg::NodePtr();
}

void Session::leave()
{
    m_folder->remove();
    living = nullptr;
}

void Session::keep(std::type_index type, std::unique_ptr<Keepable> state)
{
    m_states.emplace(type, state.get());
    m_order.emplace_back(type, std::move(state));
}

Session* Session::current()
{
    return living;
}

Session& Session::require()
{
    if (!living)
        qFatal("the host was called without a session");
    return *living;
}

osg::NodePtr Session::selectedNode() const
{
    return osg::fcCast<osg::Node>(osg::FieldContainerFactory::the()->getContainer(m_selectedId));
}

void Session::select(const osg::NodePtr& node)
{
    m_selectedId = node ? node->getContainerId() : 0;
}

} // namespace zn
