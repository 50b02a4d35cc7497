#include "standalone/znVariants/VariantSets.h"

#include "standalone/session/Session.h"
#include "standalone/znOpenSGUberCamera/SessionCameras.h"
#include "standalone/znVariants/SessionVariants.h"

namespace zn
{

QStringList variantSetNames(Session& session)
{
    QStringList names;
    for (const auto& set : variants::sessionVariants(session).sets())
        names << set->getName();
    return names;
}

std::optional<QStringList> applyVariantSet(Session& session, const QString& name)
{
    const znVariantSet* set = variants::sessionVariants(session).findSet(name);
    if (!set)
        return std::nullopt;
    return variants::SessionVariants::apply(*set, zn::cameras::sessionCameras(session));
}

} // namespace zn
