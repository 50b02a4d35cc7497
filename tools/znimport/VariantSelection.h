#pragma once

#include <QStringList>

#include <optional>
#include <string>

namespace zn
{
class StandaloneSession;
} // namespace zn

namespace znimport
{

/// One line a set: its name, its group in brackets, and the viewpoint behind "from", as far as it has them.
std::string describeVariantSets(zn::StandaloneSession& session);

/// How the choice of a set went.
struct ChosenVariantSet {
    std::optional<QString> error; ///< there is no such set; names those that there are
    QStringList warnings;
};

/// Applies the set of this name.
ChosenVariantSet chooseVariantSet(zn::StandaloneSession& session, const QString& setName);

} // namespace znimport
