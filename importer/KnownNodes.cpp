#include "importer/KnownNodes.h"

#include "standalone/startup/StandaloneSession.h"
#include "standalone/znVariants/SessionVariants.h"

namespace importer
{

std::unordered_set<const osg::Node*> knownNodes(zn::StandaloneSession& session)
{
    std::unordered_set<const osg::Node*> known = {session.selectedNode().get()};
    for (const auto& variant : zn::variants::sessionVariants(session).nodeVariants())
        known.insert(variant->getNode().get());
    return known;
}

} // namespace importer
