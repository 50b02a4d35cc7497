#include "import/Rest.h"

#include "import/Platform.h"

#include <QAbstractEventDispatcher>

#include <algorithm>
#include <thread>

namespace frame
{

namespace
{

using Clock = std::chrono::steady_clock;

// How late an event may be noticed, against how often is looked for it.
constexpr std::chrono::milliseconds Slice(2);
constexpr std::chrono::milliseconds BetweenExtraPasses(50);

// With the event loop of GLib, which Qt uses where it can, descriptors and timers count; without it posted events alone
// do.
bool hasEvents()
{
    QAbstractEventDispatcher* dispatcher = QAbstractEventDispatcher::instance();
    return dispatcher && dispatcher->hasPendingEvents();
}

bool mayPassOnceMore()
{
    thread_local Clock::time_point last;
    const Clock::time_point now = Clock::now();
    if (now - last < BetweenExtraPasses)
        return false;
    last = now;
    return true;
}

// Whether a child's end has ended it.
bool restUntil(Clock::time_point end, bool isBehindAChild)
{
    const bool wasWaiting = hasEvents();
    if (wasWaiting && (isBehindAChild || mayPassOnceMore()))
        return false;
    for (Clock::time_point now = Clock::now(); now < end; now = Clock::now()) {
        std::this_thread::sleep_for(std::min<Clock::duration>(Slice, end - now));
        if (childProcessHasEnded())
            return true;
        if (!wasWaiting && hasEvents())
            return false;
    }
    return false;
}

} // namespace

void restUntilEvents(std::chrono::milliseconds time)
{
    // The pass behind the end of a child posts what the next one does, the start of another child for example.
    thread_local bool isBehindAChild = false;
    isBehindAChild = childProcessHasEnded() || restUntil(Clock::now() + time, isBehindAChild);
}

} // namespace frame
