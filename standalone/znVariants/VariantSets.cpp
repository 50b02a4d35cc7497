#include "standalone/znVariants/VariantSets.h"

#include "standalone/session/Session.h"
#include "standalone/znOpenSGUberCamera/CameraTree.h"
#include "standalone/znVariants/VariantStore.h"

namespace zn
{

QStringList variantSetNames(Session& session)
{
    QStringList names;
    for (const auto& set : session.state<VariantStore>().sets())
        names << set->getName();
    return names;
}

std::optional<QStringList> applyVariantSet(Session& session, const QString& name)
{
    const znVariantSet* set = session.state<VariantStore>().findSet(name);
    if (!set)
        return std::nullopt;
    return VariantStore::apply(*set, session.state<CameraTree>());
}

} // namespace zn
