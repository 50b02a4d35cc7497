#pragma once

#include "host/znUtils/znMessage.h"

/// Copies the attribute `key` of `message` into `out`. An absent or empty one gives false without a word; one of
/// another type gives false, with a line and a backtrace on standard error. `out` is changed only if the result is
/// true.
///
/// Types are compared by their names, so that a value written in another module is recognised, and the value is copied
/// without another test.
template <class T>
bool getFromMessage(const znMessage& message, const std::string& key, T& out)
{
    const boost::any& value = message.get(key);
    if (value.empty())
        return false;
    const char* held = value.type().name();
    if (std::strcmp(held, typeid(T).name()) != 0) {
        std::fprintf(stderr, "getFromMessage : Attribute '%s' has wrong type (is:'%s' != req:'%s')!\n", key.c_str(),
                     held, typeid(T).name());
        znMessage::printBT();
        return false;
    }
    out = *boost::unsafe_any_cast<T>(&value);
    return true;
}
