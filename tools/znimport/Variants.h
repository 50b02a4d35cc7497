#pragma once

#include <QStringList>

#include <optional>
#include <string>

class znStandaloneSession;

/// What the tool does with variant sets.
namespace variants
{

/// One line a set: its name, its group in brackets, and the viewpoint behind "from", as far as it has them.
std::string describe(znStandaloneSession& session);

/// How applying a set went.
struct Result {
    std::optional<QString> error; ///< there is no such set; names those that there are
    QStringList warnings;
};

Result apply(znStandaloneSession& session, const QString& setName);

} // namespace variants
