#pragma once

#include "host/HostExport.h"

#include <boost/any.hpp>

#include <cstdint>
#include <cstdio>
#include <cstring>
#include <map>
#include <string>
#include <typeinfo>

/// A code and named values of any type: what modules that do not know each other say to each other.
class ZN_HOST_EXPORT znMessage
{
public:
    znMessage();
    /// A message with one attribute.
    znMessage(std::uint64_t code, const std::string& key, const boost::any& value);
    ~znMessage();

    /// What the message is about; 0 if it was made without a code.
    std::uint64_t getCode() const { return m_code; }

    /// Sets an attribute. One that is there already stays as it is unless `replace` is true.
    void set(const std::string& key, const boost::any& value, bool replace);

    /// The value of an attribute, empty if there is none of this name. Valid until the message changes.
    const boost::any& get(const std::string& key) const;

    /// Copies the value of an attribute into `out`. An absent one gives false without a word; one of another type gives
    /// false, with a line and a backtrace on standard error. `out` is changed only if the result is true.
    ///
    /// Types are compared by their names, because one type has a record in each module that uses it. The value is
    /// therefore copied without another test, which would compare those records.
    template <class T>
    bool get(const std::string& key, T& out) const
    {
        const auto found = m_attributes.find(key);
        if (found == m_attributes.end())
            return false;
        const char* held = found->second.type().name();
        if (std::strcmp(held, typeid(T).name()) != 0) {
            std::fprintf(stderr, "znMessage::get : Attribute '%s' has wrong type (is:'%s' != req:'%s')!\n", key.c_str(),
                         held, typeid(T).name());
            printBT();
            return false;
        }
        out = *boost::unsafe_any_cast<T>(&found->second);
        return true;
    }

    /// Prints the calls that lead here to standard error.
    static void printBT();

private:
    std::uint64_t m_code = 0;
    std::map<std::string, boost::any> m_attributes;
};
