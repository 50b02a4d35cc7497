#include "standalone/session/VariantSets.h"

#include "standalone/session/znStandaloneSession.h"
#include "standalone/znOpenSGUberCamera/SessionCameras.h"
#include "standalone/znVariants/SessionVariants.h"

namespace zn
{

QStringList variantSetNames(znStandaloneSession& session)
{
    QStringList names;
    for (const auto& set : sessionVariants(session).sets())
        names << set->getName();
    return names;
}

std::optional<QStringList> applyVariantSet(znStandaloneSession& session, const QString& name)
{
    const znVariantSet* set = sessionVariants(session).findSet(name);
    if (!set)
        return std::nullopt;
    return SessionVariants::apply(*set, sessionCameras(session));
}

} // namespace zn
