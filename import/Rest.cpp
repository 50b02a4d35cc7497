#include "import/Rest.h"

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

// With the event loop of GLib, which Qt uses where it can, the ends of child processes count; without it posted events
// alone do.
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

} // namespace

void restUntilEvents(std::chrono::milliseconds time)
{
    const Clock::time_point end = Clock::now() + time;
    const bool wasWaiting = hasEvents();
    if (wasWaiting && mayPassOnceMore())
        return;
    for (Clock::time_point now = Clock::now(); now < end; now = Clock::now()) {
        std::this_thread::sleep_for(wasWaiting ? end - now : std::min<Clock::duration>(Slice, end - now));
        if (!wasWaiting && hasEvents())
            return;
    }
}

} // namespace frame
