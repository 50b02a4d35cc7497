#include "tools/znimport/Variants.h"

#include "host/OSGSystem/Cast.h"
#include "host/OSGSystem/Edit.h"
#include "standalone/startup/znStandaloneSession.h"
#include "standalone/znOpenSGUberCamera/SessionCameras.h"
#include "standalone/znVariants/SessionVariants.h"

#include <QSet>

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

QString allNames(znStandaloneSession& session)
{
    const QStringList all = names(session);
    return all.isEmpty() ? QStringLiteral("the scene has none")
                         : QStringLiteral("the scene has '%1'").arg(all.join(QStringLiteral("', '")));
}

/// Leaves room for a number and an ending in 255 bytes of UTF-8.
constexpr int longestFileName = 60;

QString fileName(const QString& setName)
{
    QString name = setName.left(longestFileName);
    for (QChar& letter : name)
        if (!letter.isPrint() || QStringLiteral("/\\:*?\"<>|").contains(letter))
            letter = QLatin1Char('_');
    if (name.startsWith(QLatin1Char('.')))
        name[0] = QLatin1Char('_');
    return name;
}

} // namespace

std::string describe(znStandaloneSession& session)
{
    std::string text;
    for (const auto& set : zn::sessionVariants(session).sets())
        text += lineOf(*set).toStdString() + '\n';
    return text;
}

Result apply(znStandaloneSession& session, const QString& setName)
{
    const zn::SessionVariants& store = zn::sessionVariants(session);
    const znVariantSet* set = store.findSet(setName);
    if (!set)
        return {QStringLiteral("there is no variant set '%1'; %2").arg(setName, allNames(session)), {}};
    return {{}, zn::SessionVariants::apply(*set, zn::sessionCameras(session))};
}

QStringList names(znStandaloneSession& session)
{
    QStringList names;
    for (const auto& set : zn::sessionVariants(session).sets())
        names << set->getName();
    return names;
}

QStringList fileNames(const QStringList& setNames)
{
    QStringList files;
    QSet<QString> taken;
    for (const QString& setName : setNames) {
        const QString plain = fileName(setName);
        QString name = plain;
        for (int number = 2; taken.contains(name.toCaseFolded()); ++number)
            name = QStringLiteral("%1 %2").arg(plain).arg(number);
        taken.insert(name.toCaseFolded());
        files << name;
    }
    return files;
}

KeptLook::KeptLook(znStandaloneSession& session) : m_session(session)
{
    const zn::SessionVariants& store = zn::sessionVariants(session);
    for (const auto& variant : store.nodeVariants())
        if (const osg::NodePtr node = variant->getNode())
            m_actives.emplace_back(node, node->isActive());
    for (const auto& variant : store.materialVariants())
        if (const auto choices = osg::fcCast<osg::SwitchMaterial>(variant->getMaterial()))
            m_choices.emplace_back(choices, choices->getChoice());
    if (const osg::UberCameraPtr view = zn::sessionCameras(session).view())
        m_viewId = view->getContainerId();
}

KeptLook::~KeptLook()
{
    for (const auto& [node, isActive] : m_actives) {
        osg::beginEditCP(node, osg::Node::ActiveFieldMask, 1);
        node->setActive(isActive);
        osg::endEditCP(node, osg::Node::ActiveFieldMask, 1);
    }
    for (const auto& [material, choice] : m_choices) {
        osg::beginEditCP(material, osg::SwitchMaterialBase::ChoiceFieldMask, 1);
        material->setChoice(choice);
        osg::endEditCP(material, osg::SwitchMaterialBase::ChoiceFieldMask, 1);
    }
    zn::sessionCameras(m_session).look(m_viewId);
}

} // namespace variants
