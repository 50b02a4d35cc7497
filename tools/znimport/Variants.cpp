#include "tools/znimport/Variants.h"

#include "standalone/session/znStandaloneSession.h"
#include "standalone/znKernel/KernelState.h"

namespace variants
{

namespace
{

QString lineOf(const znVariantSet& set)
{
    QString line = set.getName();
    if (set.getGroup())
        line += QStringLiteral(" [%1]").arg(set.getGroup()->getName());
    if (!set.m_viewpointName.isEmpty())
        line += QStringLiteral(" from ") + set.m_viewpointName;
    return line;
}

QString allNames(const zn::VariantStore& store)
{
    QStringList names;
    for (const auto& set : store.sets())
        names << QStringLiteral("'%1'").arg(set->getName());
    return names.isEmpty() ? QStringLiteral("the scene has none")
                           : QStringLiteral("the scene has ") + names.join(QStringLiteral(", "));
}

} // namespace

std::string describe(znStandaloneSession& session)
{
    std::string text;
    for (const auto& set : session.kernel().variants.sets())
        text += lineOf(*set).toStdString() + '\n';
    return text;
}

Result apply(znStandaloneSession& session, const QString& setName)
{
    const zn::VariantStore& store = session.kernel().variants;
    const znVariantSet* set = store.findSet(setName);
    if (!set)
        return {QStringLiteral("there is no variant set '%1'; %2").arg(setName, allNames(store)), {}};
    return {{}, zn::VariantStore::apply(*set, session.kernel().cameras)};
}

} // namespace variants
