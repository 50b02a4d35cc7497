#pragma once

#include "host/OSGSystem/Material.h"
#include "host/OSGSystem/Names.h"
#include "host/OSGSystem/Node.h"

#include <QString>

#include <functional>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

namespace zn
{

/// Receives, from its construction to its destruction, each call that the library makes into the host, as text: the
/// name of the operation and its arguments. Calls that the host makes on the way are not told. One trace is alive at a
/// time; without one a call costs the look at one pointer.
class ZN_HOST_EXPORT CallTrace
{
public:
    /// Called with the text of each call, on the thread of the caller.
    using Sink = std::function<void(const std::string& call)>;

    /// Begins the trace. No other one may be alive.
    explicit CallTrace(Sink sink) : m_sink(std::move(sink)) { state().living = this; }
    ~CallTrace() { state().living = nullptr; }
    CallTrace(const CallTrace&) = delete;
    CallTrace& operator=(const CallTrace&) = delete;

private:
    friend class TracedCall;

    struct State {
        CallTrace* living = nullptr;
        unsigned depth = 0; ///< of the calls that began under a trace
    };
    static State& state()
    {
        static State only;
        return only;
    }

    Sink m_sink;
};

/// How values stand in a trace.
namespace tracetext
{

///@{
/// The text of one argument: words and numbers as they are, texts in single quotes, lists in brackets, a container by
/// kind, id and name, what is missing as null.
inline std::string of(bool value)
{
    return value ? "true" : "false";
}
inline std::string of(const std::string& text)
{
    return "'" + text + "'";
}
inline std::string of(const char* text)
{
    return text ? of(std::string(text)) : "null";
}
inline std::string of(const QString& text)
{
    return of(text.toStdString());
}
inline std::string of(const char* kind, const osg::AttachmentContainerPtr& container)
{
    if (!container)
        return "null";
    const char* name = osg::getName(container);
    return kind + std::to_string(container->getContainerId()) + (name ? " " + of(name) : std::string());
}
inline std::string of(const osg::NodePtr& node)
{
    return of("node ", node);
}
inline std::string of(const osg::MaterialPtr& material)
{
    return of("material ", material);
}
template <class Number, std::enable_if_t<std::is_arithmetic_v<Number>, int> = 0>
std::string of(Number value)
{
    return QString::number(value).toStdString();
}
template <class T>
std::string of(const std::vector<T>& values)
{
    std::string text;
    for (const T& value : values)
        text += (text.empty() ? "" : ", ") + of(value);
    return "[" + text + "]";
}
///@}

} // namespace tracetext

/// Stands at the head of an operation of the host, as the one point that tells a trace of the call.
class TracedCall
{
public:
    /// Tells the living trace, if there is one, of a call of the operation `name`.
    template <class... Arguments>
    explicit TracedCall(const char* name, const Arguments&... arguments) : m_counted(CallTrace::state().living)
    {
        if (m_counted && CallTrace::state().depth++ == 0)
            CallTrace::state().living->m_sink(text(name, {tracetext::of(arguments)...}));
    }
    ~TracedCall()
    {
        if (m_counted)
            --CallTrace::state().depth;
    }
    TracedCall(const TracedCall&) = delete;
    TracedCall& operator=(const TracedCall&) = delete;

private:
    static std::string text(const char* name, const std::vector<std::string>& arguments)
    {
        std::string list;
        for (const std::string& argument : arguments)
            list += (list.empty() ? "" : ", ") + argument;
        return std::string(name) + "(" + list + ")";
    }

    bool m_counted;
};

} // namespace zn
