#pragma once

#include <chrono>

namespace frame
{

/// Lets the thread rest for `time`, or until its event loop has something to deliver: a child process that has ended,
/// an event that was posted, a timer. It delivers nothing itself.
///
/// What waits already when the rest begins may be something that the caller's pass through the events does not deliver,
/// a deferred deletion for example, and cannot be told from new events. It ends one rest in 50 ms early and no more, so
/// that a loop of passes and rests takes at most 20 passes a second more than one with full rests. The end of a child
/// ends a rest whatever waits, also when it came before the rest, and the rest behind that one if anything waits, as
/// the first pass may have posted what the second does. The collection of an ended child may count once more.
void restUntilEvents(std::chrono::milliseconds time);

} // namespace frame
