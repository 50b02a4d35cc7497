#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace HB::Visualization
{

/// What a walk over an assembly may grow to before the document counts as one that refers to itself.
struct CADWalkLimits {
    std::uint32_t depth = 1000; ///< levels of parts and of compound representations
    /// Records, and places that end without one. One takes about 1 KB with its node, so that all take 8 GB at most.
    std::uint32_t records = std::uint32_t(8) << 20;
};

/// Counts the levels and the places of a walk, and remembers where it went over a limit. Whoever walks goes no further
/// once it is over.
class CADWalkGuard
{
public:
    /// Which limit a walk went over.
    enum class Fault { None, TooDeep, TooLarge };

    /// @param path where the walk stands, at any time; must outlive this
    explicit CADWalkGuard(const std::vector<std::string>& path) : m_path(path) {}
    CADWalkGuard(const CADWalkGuard&) = delete;
    CADWalkGuard& operator=(const CADWalkGuard&) = delete;

    /// A new walk begins, at no level and no place.
    void begin(const CADWalkLimits& limits)
    {
        m_limits = limits;
        m_faultPath.clear();
        m_depth = 0;
        m_places = 0;
        m_fault = Fault::None;
    }

    /// Whether it went over a limit.
    bool isOver() const { return m_fault != Fault::None; }
    /// The limit that it went over first; None while it did not.
    Fault fault() const { return m_fault; }
    /// Where the walk stood when it went over the limit.
    const std::vector<std::string>& faultPath() const { return m_faultPath; }

    /// One more place is visited.
    void countPlace()
    {
        if (++m_places > m_limits.records)
            fail(Fault::TooLarge);
    }

    /// One level of the walk while it lives.
    class Level
    {
    public:
        /// One level deeper in the walk that `guard` counts.
        explicit Level(CADWalkGuard& guard) : m_guard(guard)
        {
            if (++m_guard.m_depth > m_guard.m_limits.depth)
                m_guard.fail(Fault::TooDeep);
        }
        ~Level() { --m_guard.m_depth; }
        Level(const Level&) = delete;
        Level& operator=(const Level&) = delete;

    private:
        CADWalkGuard& m_guard;
    };

private:
    void fail(Fault fault)
    {
        if (isOver())
            return;
        m_fault = fault;
        m_faultPath = m_path;
    }

    CADWalkLimits m_limits;
    const std::vector<std::string>& m_path;
    std::vector<std::string> m_faultPath;
    std::uint32_t m_depth = 0;
    std::size_t m_places = 0;
    Fault m_fault = Fault::None;
};

} // namespace HB::Visualization
