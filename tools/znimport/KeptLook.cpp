#include "tools/znimport/KeptLook.h"

#include "host/OSGSystem/Cast.h"
#include "host/OSGSystem/Edit.h"
#include "standalone/startup/StandaloneSession.h"
#include "standalone/znOpenSGUberCamera/SessionCameras.h"
#include "standalone/znVariants/SessionVariants.h"

namespace znimport
{

KeptLook::KeptLook(zn::StandaloneSession& session) : m_session(session)
{
    const zn::variants::SessionVariants& store = zn::variants::sessionVariants(session);
    for (const auto& variant : store.nodeVariants())
        if (const osg::NodePtr node = variant->getNode())
            m_actives.emplace_back(node, node->isActive());
    for (const auto& variant : store.materialVariants())
        if (const auto choices = osg::fcCast<osg::SwitchMaterial>(variant->getMaterial()))
            m_choices.emplace_back(choices, choices->getChoice());
    if (const osg::UberCameraPtr view = zn::cameras::sessionCameras(session).view())
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
    zn::cameras::sessionCameras(m_session).look(m_viewId);
}

} // namespace znimport
