#pragma once

#include "ptx/core/PartMarks.h"

#include <atomic>
#include <cstddef>
#include <optional>
#include <set>
#include <string>

namespace ptx::core
{

/// What the CAD kernel is at work on, in a file beside the output, so that a conversion that it crashed begins anew in
/// the same process without that (see ProcessEnd.h).
///
/// A part is named by its number among the meshed ones, which is the same in every attempt.
class Rescue
{
public:
    /// How often a conversion may begin anew.
    static constexpr int MostAttempts = 3;

    /// `path` is the file of marks, `attempt` how often the conversion began anew so far: 0 starts the file, any other
    /// takes out of it what crashed.
    Rescue(const std::string& path, int attempt);
    /// Removes the file, unless it is somebody else's.
    ~Rescue();
    Rescue(const Rescue&) = delete;
    Rescue& operator=(const Rescue&) = delete;

    /// Held while the kernel is at work on something, by the thread that lets it work. It begins and ends in one
    /// thread, and a thread holds one at a time.
    class Mark
    {
    public:
        Mark(Rescue& rescue, std::size_t place);
        ~Mark();
        Mark(const Mark&) = delete;
        Mark& operator=(const Mark&) = delete;

    private:
        Rescue& m_rescue;
        std::size_t m_place;
    };

    Mark workOnPart(std::size_t part) { return Mark(*this, FirstPart + part); }
    Mark translate() { return Mark(*this, Translation); }
    /// For healing parts before they have numbers. Several threads may be at it; marks of theirs begin and end one at a
    /// time, which is for the caller to see to.
    Mark workAhead() { return Mark(*this, Ahead); }

    /// Not after a crash: nobody can tell which parts to leave out.
    bool mayWorkAhead() const { return m_attempt == 0; }
    /// Whether this is the last attempt. One that crashed at work ahead cost nothing but time, and does not count.
    bool isLastAttempt() const { return m_attempt == MostAttempts + (m_hasCrashedAhead ? 1 : 0); }

    /// How many attempts crashed while the file's entities became shapes.
    int translationCrashes() const { return m_translationCrashes; }
    const std::set<std::size_t>& lostParts() const { return m_lostParts; }
    bool isLost(std::size_t part) const { return m_lostParts.contains(part); }

    /// For the handler of a fatal signal, in the thread that it hit: marks what crashed.
    /// @return whether there is anything to leave out
    bool noteCrash() const;
    const std::string& path() const { return m_path; }
    /// Why there is no file of marks, without which a crash ends the conversion; empty when there is one.
    const std::string& trouble() const { return m_marks->trouble(); }

private:
    // Places in the file.
    static constexpr std::size_t Crashes = 0; ///< a digit: how often the translation crashed
    static constexpr std::size_t Translation = 1;
    static constexpr std::size_t Ahead = 2;
    static constexpr std::size_t FirstPart = 3;

    std::string lettersAfterCrash();
    void blame(std::string& letters, char blamed);

    std::string m_path;
    int m_attempt;
    bool m_hasCrashedAhead = false;
    std::set<std::size_t> m_lostParts;
    int m_translationCrashes = 0;
    std::optional<PartMarks> m_marks;
    std::atomic<int> m_atWork{0};
    std::atomic<int> m_ahead{0}; ///< of those
};

} // namespace ptx::core
