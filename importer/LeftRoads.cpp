#include "importer/LeftRoads.h"

#include "importer/RunningImport.h"
#include "scene/SceneEdits.h"
#include "standalone/reading/ReaderProcess.h"

#include <algorithm>

namespace importer
{

void LeftRoads::take(zn::Session& session, std::unique_ptr<ImportRoad> road)
{
    ImportRoad& left = *road;
    m_roads.push_back(std::move(road));
    connect(&left, &ImportRoad::ended, this, [this, &session, &left] { ended(session, left); });
    zn::reading::setCancelled(session, true);
    left.cancel();
}

void LeftRoads::ended(zn::Session& session, ImportRoad& road)
{
    const zn::ImportResult result = road.takeResult();
    if (result.node && result.node->getParent())
        osg::subChild(result.node->getParent(), result.node);
    const auto place =
        std::find_if(m_roads.begin(), m_roads.end(), [&road](const auto& left) { return left.get() == &road; });
    place->release()->deleteLater();
    m_roads.erase(place);
    if (!m_roads.empty())
        return;
    endImport(session);
    Q_EMIT emptied();
}

} // namespace importer
