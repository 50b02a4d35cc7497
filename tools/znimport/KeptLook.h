#pragma once

#include "host/OSGSystem/Node.h"
#include "host/OSGSystem/SwitchMaterial.h"

#include <utility>
#include <vector>

class znStandaloneSession;

namespace znimport
{

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

} // namespace znimport
