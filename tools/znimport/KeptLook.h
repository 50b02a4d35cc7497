#pragma once

#include "host/OSGSystem/Node.h"
#include "host/OSGSystem/SwitchMaterial.h"

#include <utility>
#include <vector>

namespace zn
{
class StandaloneSession;
} // namespace zn

namespace znimport
{

/// Keeps how the scene looks, as far as variant sets can change it, and brings it back in the end.
class KeptLook
{
public:
    explicit KeptLook(zn::StandaloneSession& session);
    ~KeptLook();
    KeptLook(const KeptLook&) = delete;
    KeptLook& operator=(const KeptLook&) = delete;

private:
    zn::StandaloneSession& m_session;
    std::vector<std::pair<osg::RefPtr<osg::NodePtr>, bool>> m_actives;
    std::vector<std::pair<osg::RefPtr<osg::SwitchMaterialPtr>, unsigned>> m_choices;
    unsigned m_viewId = 0;
};

} // namespace znimport
