#pragma once

#include "importer/ImportRoad.h"

#include <QObject>

#include <memory>
#include <vector>

namespace zn
{
class Session;
} // namespace zn

namespace importer
{

/// The roads whose importers went while they were under way. Their jobs run the event loop, and may be on the stack
/// when that happens: such a road is cancelled, and goes when its jobs have ended, at the latest with the session.
/// Nobody is told, and nothing of it stays in the scene. A state of the session.
class LeftRoads : public QObject
{
    Q_OBJECT

public:
    /// Takes over `road`, the one that is under way in `session`.
    void take(zn::Session& session, std::unique_ptr<ImportRoad> road);
    /// Whether none is under way any more.
    bool isEmpty() const { return m_roads.empty(); }

Q_SIGNALS:
    /// There are none any more: another import may begin.
    void emptied();

private:
    void ended(zn::Session& session, ImportRoad& road);

    std::vector<std::unique_ptr<ImportRoad>> m_roads;
};

} // namespace importer
