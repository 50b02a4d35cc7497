#pragma once

#include "host/OSGSystem/Node.h"
#include "host/OSGSystem/SwitchMaterial.h"

#include <QStringList>

#include <optional>
#include <string>
#include <utility>
#include <vector>

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

/// The names of the sets, in their order.
QStringList names(znStandaloneSession& session);

/// A name of a file for each name of a set, without an ending: what file systems do not take becomes "_", and names that
/// would be one file, whatever the case of their letters, are numbered.
QStringList fileNames(const QStringList& setNames);

/// Keeps how the scene looks, as far as variant sets can change it, and brings it back in the end.
class KeptLook
{
public:
    explicit KeptLook(znStandaloneSession& session);
    ~KeptLook();
    KeptLook(const KeptLook&) = delete;
    KeptLook& operator=(const KeptLook&) = delete;

private:
    znStandaloneSession& m_session;
    std::vector<std::pair<osg::RefPtr<osg::NodePtr>, bool>> m_actives;
    std::vector<std::pair<osg::RefPtr<osg::SwitchMaterialPtr>, unsigned>> m_choices;
    unsigned m_viewId = 0;
};

} // namespace variants
