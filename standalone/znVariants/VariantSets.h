#pragma once

#include <QString>
#include <QStringList>

#include <optional>

/// The variant sets of a session's scene, for hosts that show and switch them. They are made through `znVariants`, and
/// files bring them along.
namespace zn
{

class Session;

/// The names of all sets, in the order in which they were made.
QStringList variantSetNames(Session& session);

/// Brings materials, nodes and view to what the set of this name wants of them. Nothing when there is no such set, else
/// a sentence for each wish that could not be met; the others are.
std::optional<QStringList> applyVariantSet(Session& session, const QString& name);

} // namespace zn
