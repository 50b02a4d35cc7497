#pragma once

class STEPCAFControl_Reader;

namespace ptx
{
class Log;
}

namespace ptx::step
{

/// Warns of each entity that the kernel could not read as it should be, by its number in the text. To be called after
/// the reading.
void warnOfUnreadEntities(const STEPCAFControl_Reader& reader, Log& log);

/// The same of entities that the kernel read and could not translate. To be called after the transfer.
void warnOfUntranslatedEntities(const STEPCAFControl_Reader& reader, Log& log);

} // namespace ptx::step
