#pragma once

#include "ptx/core/Outcome.h"

#include <Standard_Failure.hxx>
#include <Standard_OutOfMemory.hxx>

#include <exception>
#include <new>
#include <string>

namespace ptx::occt
{

/// The text of an exception of OCCT.
inline std::string failureText(const Standard_Failure& failure)
{
    const char* text = failure.GetMessageString();
    return std::string(failure.DynamicType()->Name()) + (text && *text ? std::string(": ") + text : std::string());
}

/// Runs `work`; whatever OCCT throws becomes a failure "`doing` failed: ...". A failed allocation goes on as
/// std::bad_alloc, for whoever knows the limits.
template <class Work>
core::Trouble guarded(const char* doing, Work work)
{
    try {
        return work();
    } catch (const Standard_OutOfMemory&) {
        throw std::bad_alloc();
    } catch (const Standard_Failure& failure) {
        return core::Failure{core::ExitCode::Damaged, std::string(doing) + " failed: " + failureText(failure)};
    } catch (const std::bad_alloc&) {
        throw;
    } catch (const std::exception& failure) {
        return core::Failure{core::ExitCode::Damaged, std::string(doing) + " failed: " + failure.what()};
    }
}

} // namespace ptx::occt
