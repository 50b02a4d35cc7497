#include "ptx/readers/jt/ShapeSupply.h"

#include <algorithm>
#include <system_error>

namespace ptx::jt
{

namespace
{

constexpr std::size_t SlotsOfThread = 4;

} // namespace

ShapeSupply::ShapeSupply(const JtFile& file, const std::vector<graph::Id>& order, unsigned threads)
    : m_file(file), m_ahead(SlotsOfThread * threads)
{
    m_slots.reserve(order.size());
    for (const graph::Id id : order)
        m_slots.push_back({id, State::Open, {}, nullptr});
    try {
        for (std::size_t i = 1; i < std::min<std::size_t>(threads, order.size()); ++i)
            m_threads.emplace_back([this] { work(); });
    } catch (const std::system_error&) {
        // Those that there are will do, and be they none.
    }
}

ShapeSupply::~ShapeSupply()
{
    {
        const std::lock_guard lock(m_mutex);
        m_isOver = true;
    }
    m_hasRoom.notify_all();
    for (std::thread& thread : m_threads)
        thread.join();
}

shapes::Shape ShapeSupply::decode(graph::Id id) const
{
    return m_file.shapeOf(*m_file.graph.find(id));
}

// Behind the last slot that may be worked on.
std::size_t ShapeSupply::end() const
{
    return std::min(m_slots.size(), m_first + m_ahead);
}

void ShapeSupply::work()
{
    std::unique_lock lock(m_mutex);
    for (;;) {
        m_next = std::max(m_next, m_first);
        while (m_next < end() && m_slots[m_next].state != State::Open)
            ++m_next;
        if (m_isOver || m_next >= m_slots.size())
            return;
        if (m_next >= end()) {
            m_hasRoom.wait(lock);
            continue;
        }
        const std::size_t i = m_next++;
        Slot& slot = m_slots[i];
        slot.state = State::Running;
        lock.unlock();
        decodeInto(slot);
        lock.lock();
        slot.state = State::Done;
        if (i < m_first)
            slot.shape = {};
        m_isDone.notify_all();
    }
}

void ShapeSupply::decodeInto(Slot& slot)
{
    try {
        slot.shape = decode(slot.id);
    } catch (...) {
        slot.failure = std::current_exception();
    }
}

std::size_t ShapeSupply::findNext(graph::Id id) const
{
    std::size_t i = m_first;
    while (i < end() && m_slots[i].id != id)
        ++i;
    return i < end() ? i : m_slots.size();
}

// What is still running is dropped by its thread.
void ShapeSupply::passOver(std::size_t next)
{
    for (std::size_t i = m_first; i < next; ++i)
        if (m_slots[i].state == State::Done)
            m_slots[i].shape = {};
    m_first = next;
    m_hasRoom.notify_all();
}

shapes::Shape ShapeSupply::take(graph::Id id)
{
    std::unique_lock lock(m_mutex);
    const std::size_t i = findNext(id);
    if (i == m_slots.size()) {
        lock.unlock();
        return decode(id);
    }
    Slot& slot = m_slots[i];
    passOver(i);
    if (slot.state == State::Open) {
        slot.state = State::Done;
        passOver(i + 1);
        lock.unlock();
        return decode(id);
    }
    m_isDone.wait(lock, [&] { return slot.state == State::Done; });
    shapes::Shape shape = std::move(slot.shape);
    const std::exception_ptr failure = slot.failure;
    passOver(i + 1);
    if (failure)
        std::rethrow_exception(failure);
    return shape;
}

} // namespace ptx::jt
