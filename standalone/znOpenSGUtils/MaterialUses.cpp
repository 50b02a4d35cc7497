#include "standalone/znOpenSGUtils/MaterialUses.h"

#include "standalone/session/Session.h"

namespace zn::nodes
{

namespace
{

struct MaterialUses {
    std::map<unsigned, MaterialUse> byId;
};

MaterialUses& sessionUses()
{
    return Session::require().state<MaterialUses>();
}

} // namespace

void markAsUsed(const osg::MaterialPtr& material)
{
    MaterialUse& use = sessionUses().byId[material->getContainerId()];
    use.material = material;
    ++use.count;
}

const std::map<unsigned, MaterialUse>& materialUses()
{
    return sessionUses().byId;
}

} // namespace zn::nodes
