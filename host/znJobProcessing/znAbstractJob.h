#pragma once

#include "host/HostExport.h"
#include "import/filetypes/znCADFileTypes.h"

#include <QMetaType>
#include <QObject>
#include <QString>

#include <memory>

namespace znJobs
{
class JobRecord;
}

Q_DECLARE_METATYPE(znCADFileTypes::JobState)

/// A piece of work that runs once or several times and announces each end with a state.
///
/// **A run** begins with run() and ends with finished(). Its signals come in this order:
///
///     starting()           from run(), before the work begins; slots are called directly, so they can still change it
///     started()            once; a process job's comes from the frame when the process runs, a processing job's from
///                          its own process()
///     progressChanged()    any number of times, from job code
///     finished(state)      from finish()
///
/// finished() comes once a run. The frame adds none and swallows none: a job that announces its end twice is heard
/// twice, though a queue counts one end. From starting() to the end of the work, another run() is refused with a
/// warning. A job that has ended can be run again. A finish() that calls run() instead of znAbstractJob::finish() goes
/// on with the run that was about to end, in the same queue slot.
///
/// **State.** JobWaiting until the first run assigns another. A process job is JobRunning from its launch to the end of
/// its process, then JobSucceeded or JobFailed; a processing job assigns its state itself. finished() carries the
/// state.
///
/// **Exceptions.** An exception that leaves a process() ends at run(). If processingFinished() was emitted before it
/// arrives there (by a guard, during unwinding), the run has ended with the state of that moment. Otherwise the state
/// becomes JobFailed and finished() follows. The exception's text becomes the error text either way.
///
/// **Abort.** A job that waits in a queue ends with finished(JobFailed) without having run; none of its other signals
/// come. An abort from a slot on starting() takes the work back: finished(JobFailed) is next. What abort() does to a
/// job at work is told by each class. A job that neither waits nor runs ignores it.
///
/// **Ownership.** A job belongs to its QObject parent or to whoever made it, until it ends in a queue that deletes
/// ended jobs. Such a queue deletes it from the event loop (also from one nested in somebody's wait), after every slot
/// connected to finished() has returned and the job's own functions are off the stack. Whoever wants to delete a job
/// from one of its own signals calls deleteLater(). Destroying a job that waits takes it out of its queue; destroying
/// one that runs stops it. Neither emits finished(). A processing job must not be destroyed while its process()
/// is on the stack, unless process() touches nothing of the job afterwards.
///
/// **Threads and loops.** There is one thread, that of the application object. Jobs may open nested event loops and so
/// may slots; everything here holds inside them.
class ZN_HOST_EXPORT znAbstractJob : public QObject
{
    Q_OBJECT

public:
    ~znAbstractJob() override;

    /// Begins a run.
    virtual void run() = 0;

    /// Asks for the end of the run, see above. Ends a job that waits in a queue or for its timer.
    virtual void abort();

    /// Whether this is the conversion of a Mechanor file. The open host treats such a job like any other.
    virtual bool isMechanorJob() const;

    /// How far the job is, or how its last run ended; see State above.
    znCADFileTypes::JobState getState() const { return m_state; }

    /// Why the job failed, for the user; empty if there is nothing to say. Kept until a later run replaces it.
    QString getErrorText() const { return m_errorText; }

Q_SIGNALS:
    /// A run begins. Comes from run(), before the work; what slots change then counts for this run.
    void starting();
    /// The work has begun.
    void started();

    /// `value` is a percentage, 0 when only `text` matters.
    void progressChanged(unsigned int value, const QString& text);

    /// The run has ended with `state`. Slots may call run() again or deleteLater(), never delete the job.
    void finished(znCADFileTypes::JobState state);

protected:
    /// A job that waits for its first run. With a null `parent` it belongs to whoever makes it.
    explicit znAbstractJob(QObject* parent);

    /// Ends the run: emits finished() with m_state. The work's end calls the virtual function; an override ends with
    /// this one, or starts a new run and leaves it out.
    virtual void finish();

    /// Called by each run(). Connects the job's own signals and slots the first time, and sets m_connectionsMade. An
    /// override makes its connections, then calls its base, then sets the flag, all of it only if the flag is clear.
    virtual void createBaseConnections() = 0;

    /// What getErrorText() tells; written by the work, in the language of the user.
    QString m_errorText;
    /// What getState() and finished() tell.
    znCADFileTypes::JobState m_state = znCADFileTypes::JobWaiting;
    /// Whether createBaseConnections() has made its connections.
    bool m_connectionsMade = false;

private:
    friend class znJobs::JobRecord;

    const std::shared_ptr<znJobs::JobRecord> m_record;
};
