#pragma once

#include <QtDebug>

namespace parts
{

/// Calls `body` and then `end`, also when an exception leaves `body`; that exception goes on to the caller. `end` may
/// throw as well, since it tells listeners: its exception goes on unless there is one already, which counts more.
template <class Body, class End>
void runToEnd(const Body& body, const End& end)
{
    try {
        body();
    } catch (...) {
        try {
            end();
        } catch (...) {
            qWarning() << "A listener failed while an exception was on its way";
        }
        throw;
    }
    end();
}

} // namespace parts
