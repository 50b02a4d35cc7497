#pragma once

#include <QObject>

#include <memory>

namespace znJobs
{

class JobRecord;

/// Deletes ended jobs from the event loop of the application object, to which it belongs. An event of its own instead
/// of QObject::deleteLater(), because a deferred delete that was asked for outside an event handler waits for the end
/// of a loop of processEvents() calls.
class JobReaper : public QObject
{
public:
    static JobReaper& instance();

    /// Deletes the job at once if none of its functions is on the stack, otherwise as soon as that holds.
    void take(const std::shared_ptr<JobRecord>& record);

    /// Deletes the job from the event loop.
    void condemn(const std::shared_ptr<JobRecord>& record);

protected:
    void customEvent(QEvent* event) override;

private:
    template <typename T>
    friend T& applicationOwned();

    JobReaper();
    void post();

    bool m_posted = false;
};

} // namespace znJobs
