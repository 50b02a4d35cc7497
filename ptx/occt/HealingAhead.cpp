#include "ptx/occt/HealingAhead.h"

#include "ptx/occt/Healing.h"
#include "ptx/occt/OcctGuard.h"
#include "ptx/occt/OcctSetup.h"

#include <TopExp_Explorer.hxx>
#include <TopoDS_Iterator.hxx>
#include <TopoDS_TShape.hxx>

#include <algorithm>

namespace ptx::occt
{

namespace
{

/// Whether the document will hold `shape` as one part: OCCT makes an assembly of what is more than solids.
bool staysWhole(const TopoDS_Shape& shape)
{
    if (shape.IsNull() || shape.ShapeType() != TopAbs_COMPOUND)
        return !shape.IsNull();
    for (TopoDS_Iterator child(shape); child.More(); child.Next())
        if (child.Value().ShapeType() != TopAbs_SOLID)
            return false;
    return shape.NbChildren() > 0;
}

} // namespace

HealingAhead::HealingAhead(const model::Job& job)
    : m_job(job), m_mostThreads(core::threadCount(job.settings) - 1),
      m_isOn(job.settings.isOn(core::Setting::Heal) && job.rescue.mayWorkAhead())
{
}

HealingAhead::~HealingAhead()
{
    {
        const std::lock_guard lock(m_mutex);
        m_isOver = true;
    }
    m_changed.notify_all();
    for (std::thread& thread : m_threads)
        thread.join();
}

void HealingAhead::add(const TopoDS_Shape& shape)
{
    if (!m_isOn || !staysWhole(shape))
        return;
    std::unique_lock lock(m_mutex);
    if (finishSharers(shape, lock))
        return;
    auto item = std::make_unique<Item>();
    item->raw = item->body.shape = shape;
    item->body.precision = precisionOf(shape, item->body.precision);
    m_byShape.emplace(shape.TShape().get(), item.get());
    for (TopExp_Explorer face(shape, TopAbs_FACE); face.More(); face.Next())
        m_owners.emplace(face.Current().TShape().get(), item.get());
    m_items.push_back(std::move(item));
    lock.unlock();
    if (m_threads.size() < m_mostThreads)
        startThread();
    m_changed.notify_one();
}

// What is healed first decides what the faces become, so that the part that came first has to be done, on any number of
// threads.
bool HealingAhead::finishSharers(const TopoDS_Shape& shape, std::unique_lock<std::mutex>& lock)
{
    bool isShared = false;
    for (TopExp_Explorer face(shape, TopAbs_FACE); face.More(); face.Next())
        if (const auto owner = m_owners.find(face.Current().TShape().get()); owner != m_owners.end()) {
            Item& item = *owner->second;
            if (item.state == State::Waits)
                run(item, lock);
            m_changed.wait(lock, [&] { return item.state == State::Done; });
            isShared = true;
        }
    return isShared;
}

void HealingAhead::dropSince(std::size_t count)
{
    std::unique_lock lock(m_mutex);
    for (std::size_t i = count; i < m_items.size(); ++i) {
        Item& item = *m_items[i];
        m_changed.wait(lock, [&] { return item.state != State::AtWork; });
        m_byShape.erase(item.raw.TShape().get());
        for (TopExp_Explorer face(item.raw, TopAbs_FACE); face.More(); face.Next())
            m_owners.erase(face.Current().TShape().get());
    }
    m_items.resize(std::min(count, m_items.size()));
    m_next = std::min(m_next, m_items.size());
}

bool HealingAhead::take(meshing::ShapeBody& part, core::Trouble& trouble)
{
    std::unique_lock lock(m_mutex);
    const auto found = m_byShape.find(part.shape.TShape().get());
    if (found == m_byShape.end() || !found->second->raw.IsEqual(part.shape)) {
        finishSharers(part.shape, lock);
        return false;
    }
    Item& item = *found->second;
    m_byShape.erase(found);
    item.raw.Nullify();
    if (item.state == State::Waits) {
        item.state = State::Done; // left to whoever asked
        item.body.shape.Nullify();
        return false;
    }
    m_changed.wait(lock, [&] { return item.state == State::Done; });
    lock.unlock();
    if (item.thrown)
        std::rethrow_exception(item.thrown);
    trouble = std::move(item.trouble);
    part.shape = std::move(item.body.shape);
    part.mayBeInsideOut = item.body.mayBeInsideOut;
    if (!item.changes.IsNull())
        followMarks(part, *item.changes);
    item.changes.Nullify();
    return true;
}

void HealingAhead::startThread()
{
    m_threads.emplace_back([this] { work(); });
}

void HealingAhead::work()
{
    std::unique_lock lock(m_mutex);
    while (true) {
        while (m_next < m_items.size() && m_items[m_next]->state != State::Waits)
            ++m_next;
        if (m_isOver)
            return;
        if (m_next == m_items.size()) {
            m_changed.wait(lock);
            continue;
        }
        const core::Rescue::Mark mark = m_job.rescue.workAhead();
        run(*m_items[m_next++], lock);
    }
}

void HealingAhead::run(Item& item, std::unique_lock<std::mutex>& lock)
{
    item.state = State::AtWork;
    lock.unlock();
    try {
        item.trouble = guarded("healing", [&]() -> core::Trouble {
            item.changes = healShape(item.body, m_mostThreads > 0);
            return std::nullopt;
        });
    } catch (...) {
        item.thrown = std::current_exception();
    }
    lock.lock();
    item.state = State::Done;
    m_changed.notify_all();
}

} // namespace ptx::occt
