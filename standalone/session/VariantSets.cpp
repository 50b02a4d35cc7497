#include "standalone/session/VariantSets.h"

#include "standalone/session/znStandaloneSession.h"
#include "standalone/znKernel/KernelState.h"

namespace zn
{

QStringList variantSetNames(znStandaloneSession& session)
{
    QStringList names;
    for (const auto& set : session.kernel().variants.sets())
        names << set->getName();
    return names;
}

std::optional<QStringList> applyVariantSet(znStandaloneSession& session, const QString& name)
{
    const znVariantSet* set = session.kernel().variants.findSet(name);
    if (!set)
        return std::nullopt;
    return VariantStore::apply(*set, session.kernel().cameras);
}

} // namespace zn
