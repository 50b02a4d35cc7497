#pragma once

#include <Standard_Handle.hxx>

class STEPCAFControl_Reader;
class StepData_StepModel;

namespace ptx::core
{
class Log;
} // namespace ptx::core

namespace ptx::step
{

/// Warns of entities that OCCT could not read as they should be, by their numbers in the text; of those of one
/// type with one complaint the first is named and the others are counted. `model` comes fresh from the text.
void warnOfUnreadEntities(const Handle(StepData_StepModel) & model, core::Log& log);

/// The same of entities that OCCT read and could not translate. To be called after the transfer.
void warnOfUntranslatedEntities(const STEPCAFControl_Reader& reader, core::Log& log);

} // namespace ptx::step
