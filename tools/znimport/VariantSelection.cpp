#include "tools/znimport/VariantSelection.h"

#include "standalone/startup/StandaloneSession.h"
#include "standalone/znVariants/SessionVariants.h"
#include "standalone/znVariants/VariantSets.h"

namespace znimport
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

QString allNames(zn::StandaloneSession& session)
{
    const QStringList all = zn::variantSetNames(session);
    return all.isEmpty() ? QStringLiteral("the scene has none")
                         : QStringLiteral("the scene has '%1'").arg(all.join(QStringLiteral("', '")));
}

} // namespace

std::string describeVariantSets(zn::StandaloneSession& session)
{
    std::string text;
    for (const auto& set : zn::variants::sessionVariants(session).sets())
        text += lineOf(*set).toStdString() + '\n';
    return text;
}

ChosenVariantSet chooseVariantSet(zn::StandaloneSession& session, const QString& setName)
{
    const std::optional<QStringList> warnings = zn::applyVariantSet(session, setName);
    if (!warnings)
        return {QStringLiteral("there is no variant set '%1'; %2").arg(setName, allNames(session)), {}};
    return {{}, *warnings};
}

} // namespace znimport
