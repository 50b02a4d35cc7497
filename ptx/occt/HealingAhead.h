#pragma once

#include "ptx/core/Outcome.h"
#include "ptx/model/Job.h"
#include "ptx/occt/meshing/ShapeBody.h"

#include <ShapeBuild_ReShape.hxx>

#include <condition_variable>
#include <cstddef>
#include <exception>
#include <memory>
#include <mutex>
#include <thread>
#include <unordered_map>
#include <vector>

class TopoDS_TShape;

namespace ptx::occt
{

/// Heals parts on other threads as soon as they are translated, while the rest of the file is still being translated.
/// The result is the one that healing them later gives, on any number of threads.
///
/// It does so for a whole conversion with all its part files, unless the settings want no healing or an attempt before
/// crashed. One thread uses it until the parts are taken.
class HealingAhead
{
public:
    explicit HealingAhead(const model::Job& job);
    /// Waits for what is being healed.
    ~HealingAhead();
    HealingAhead(const HealingAhead&) = delete;
    HealingAhead& operator=(const HealingAhead&) = delete;

    /// Takes on a part that nobody changes from now on. One that shares faces with another, which has to be healed
    /// before it, stays out, and so does one that may be split into several parts.
    void add(const TopoDS_Shape& shape);
    /// How many parts were taken on, for dropSince.
    std::size_t count() const { return m_items.size(); }
    /// Forgets the parts that were taken on since there were `count`.
    void dropSince(std::size_t count);

    /// Gives `part` its healed shape, after a wait if it is being healed; any thread may ask. Of a part that failed
    /// `trouble` tells why, and its shape is as it was.
    /// @return whether the part was healed here
    bool take(meshing::ShapeBody& part, core::Trouble& trouble);

private:
    enum class State { Waits, AtWork, Done };
    struct Item {
        meshing::ShapeBody body;
        TopoDS_Shape raw; ///< holds the identity that the item is found by
        State state = State::Waits;
        Handle(ShapeBuild_ReShape) changes;
        core::Trouble trouble;
        std::exception_ptr thrown;
    };

    /// @return whether there were any parts that share faces with `shape`
    bool finishSharers(const TopoDS_Shape& shape, std::unique_lock<std::mutex>& lock);
    void startThread();
    void work();
    void run(Item& item, std::unique_lock<std::mutex>& lock);

    const model::Job& m_job;
    unsigned m_mostThreads = 0;
    bool m_isOn = false;
    bool m_isOver = false;
    std::vector<std::unique_ptr<Item>> m_items; ///< in the order in which they came
    std::size_t m_next = 0;                     ///< the first of them that may wait
    std::unordered_map<const TopoDS_TShape*, Item*> m_byShape;
    std::unordered_map<const TopoDS_TShape*, Item*> m_owners; ///< of faces
    std::vector<std::thread> m_threads;
    std::mutex m_mutex;
    std::condition_variable m_changed;
};

} // namespace ptx::occt
