#pragma once

#include "converter/znPtxConverterJob.h" // whole, so that queued signals can carry pointers to it
#include "host/znJobProcessing/znOsbLoaderJob.h"
#include "import/ImportExport.h"
#include "loader/UnloadedParts.h"

#include <cstdint>

class znManagedJobQueue;

/// Loads a converted scene file, then converts and loads the part files that it only refers to, several at a time, and
/// puts each at every reference node that names it.
///
/// Part files are taken in when the original file may refer to any, at least two processes are allowed and its format's
/// referenced files are wanted; otherwise references stay as they are. A part is converted once, next to the converted
/// file, however many nodes name it, and as one file with whatever it refers to.
///
/// The state ends as 1 when the file itself cannot be loaded, as 3 when a part did not arrive, else as 0. `process`
/// does not return before the last child has ended; it runs the event loop meanwhile. An exception that leaves it on
/// the way leaves the state as it was.
class ZN_IMPORT_EXPORT znPtxLoaderJob : public znOsbLoaderJob
{
    Q_OBJECT

public:
    /// `originalFile` is the CAD file that `convertedFile` was made from.
    znPtxLoaderJob(const QString& convertedFile, const QString& originalFile);
    ~znPtxLoaderJob() override;

    /// The path of the CAD file, as it was given.
    QString getOriginalFile() const { return m_originalFile; }

    /// Aborts the children that are there; the job itself ends when all have ended, with what has arrived.
    void abort() override;

Q_SIGNALS:
    /// For one part: this signal, childPtxConverterJobCreated, childOsbLoaderJobCreated, childOsbLoaderJobFinished,
    /// childPtxImportFinished; the last one also for a part that failed. The first two come for all parts before the
    /// first conversion begins.
    void startingChildPtxImport(const QString& partFile);
    /// The road of this part has ended, well or not; `partFile` is its path.
    void childPtxImportFinished(const QString& partFile);
    /// Once, when all conversions have ended, with the seconds that they took; not without parts.
    void childrenConversionFinished(double seconds);
    /// The job is neither connected nor queued yet. It goes when it has ended.
    void childPtxConverterJobCreated(znPtxConverterJob* job);
    /// The converted part is about to be loaded.
    void childOsbLoaderJobCreated(znOsbLoaderJob* job, const QString& partFile);
    /// The part is in its places, or gave no node. The job goes after this.
    void childOsbLoaderJobFinished(znOsbLoaderJob* job);

protected:
    /// Loads the file and then its parts, as told above.
    void process() override;

private:
    void import();
    void loadConvertedFile();
    void repairStoredReference();
    bool importParts();
    UnloadedParts getUnloadedPartFiles();
    void childrenEnded();

    QString m_originalFile;
    bool m_waiting = false;
    /// Part of the class's layout; nothing here asks for it.
    [[maybe_unused]] bool m_isFirstRun = true;
    znManagedJobQueue* m_childQueue;
    std::int64_t m_startTime = 0; ///< nanoseconds of the steady clock
};
