#pragma once

#include <QString>

namespace zn
{
class Session;
} // namespace zn

namespace importer
{

/// From now on what is read in `session` belongs to the import of `file`, and may be read as its rules for references
/// say.
void beginImport(zn::Session& session, const QString& file);

/// The import has ended: it leaves no rule, no cancel and no note of what it loaded behind.
void endImport(zn::Session& session);

} // namespace importer
