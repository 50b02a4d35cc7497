#pragma once

#include <QList>
#include <QPointer>

class znAbstractJob;

namespace znJobs
{

/// Jobs need nothing beside their own fields here.
class JobRecord
{
};

class QueueRecord
{
public:
    QList<QPointer<znAbstractJob>> waiting;
    QPointer<znAbstractJob> running;
    bool isOpen = false;
    bool deletesEnded = false;
};

} // namespace znJobs
