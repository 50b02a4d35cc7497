#pragma once

#include "ptx/readers/jt/JtFile.h"

#include <condition_variable>
#include <exception>
#include <mutex>
#include <thread>
#include <vector>

namespace ptx::jt
{

/// Decodes shapes of a file on several threads, a little ahead of the one that takes them. What comes out does not
/// depend on the number of threads.
class ShapeSupply
{
public:
    /// `order` are the shape nodes that are going to be taken, as far as is known; `threads` counts the taker's own.
    ShapeSupply(const JtFile& file, const std::vector<graph::Id>& order, unsigned threads);
    /// Waits for what is being decoded.
    ~ShapeSupply();
    ShapeSupply(const ShapeSupply&) = delete;
    ShapeSupply& operator=(const ShapeSupply&) = delete;

    /// What the node `id`, which is in the file, draws. For one thread. A node that is not next in the order is decoded
    /// on the spot.
    shapes::Shape take(graph::Id id);

private:
    enum class State { Open, Running, Done };
    struct Slot {
        graph::Id id;
        State state = State::Open;
        shapes::Shape shape;
        std::exception_ptr failure;
    };

    shapes::Shape decode(graph::Id id) const;
    void work();
    void decodeInto(Slot& slot);
    std::size_t end() const;
    std::size_t findNext(graph::Id id) const;
    void passOver(std::size_t next);

    const JtFile& m_file;
    std::size_t m_ahead; ///< slots that may be decoded before they are asked for
    std::vector<Slot> m_slots;
    std::size_t m_first = 0; ///< not yet taken or passed over
    std::size_t m_next = 0;  ///< where to look for an open slot
    bool m_isOver = false;
    std::mutex m_mutex;
    std::condition_variable m_hasRoom;
    std::condition_variable m_isDone;
    std::vector<std::thread> m_threads;
};

} // namespace ptx::jt
