#pragma once

#include "host/OSGSystem/Node.h"
#include "host/znJobProcessing/znAbstractTimerJob.h"
#include "import/ImportExport.h"

#include <cstdint>
#include <functional>
#include <string>
#include <utility>
#include <vector>

class znFileIOService;
class znJobQueue;
class znManagedJobQueue;
class znOsbLoaderJob;
class znPtxConverterJob;

/// Imports a PLMXML document with its part files: those that the host reads by itself are read, the others are
/// converted, several at a time, and their results take the places of the reference nodes.
///
/// The state ends as 0, or as 3 when a part did not arrive. A document that is missing gives 1, and `finished` twice. A
/// document that cannot be read gives 0 and a null node: look at the node. `process` runs the event loop while it waits
/// for conversions, and cannot be aborted; the children can, each by itself.
class ZN_IMPORT_EXPORT znPLMXMLLoaderJob : public znAbstractTimerJob
{
    Q_OBJECT

public:
    /// `file` is a UTF-8 path. Converted files go to the folder of the preference "FileIO tmp path", or else to the
    /// host's temporary folder.
    znPLMXMLLoaderJob(const std::string& file, znJobQueue* queue);
    ~znPLMXMLLoaderJob() override;

    /// Where converted part files go instead, a UTF-8 path. To be set before the run.
    void setOutputDir(std::string dir);
    /// Without it converted files are left alone, and the parts count as missing. Counts for each conversion when it
    /// ends.
    void setLoadConvertedPtxFiles(bool load);

    /// The path, as it was given.
    std::string getFile() const { return m_file; }
    /// The root of the imported tree, held by nobody; null before and without one.
    osg::NodePtr& getLoadedNode() { return m_loadedNode; }

    /// Does nothing: an import runs to its end.
    void abort() override;

Q_SIGNALS:
    /// For each part file that exists, before any work on it.
    void foundChildFile(const QString&);
    /// A conversion has come to its end, well or not.
    void childPtxImportFinished(const QString&);
    /// All conversions have ended; the reading of the steady clock in seconds.
    void childrenConversionFinished(double);
    /// Before the job is queued.
    void childPtxConverterJobCreated(znPtxConverterJob*);
    /// Before the load; with the part file.
    void childOsbLoaderJobCreated(znOsbLoaderJob*, const QString&);
    /// Before the job is deleted.
    void childOsbLoaderJobFinished(znOsbLoaderJob*);
    /// The tree, before `finished`; not without one.
    void nodeReady(const osg::NodePtr&);
    /// Around the load of a part file that the host reads by itself.
    void loadingChildFileStarted(const QString&);
    /// The load is over; `state` tells how it ended.
    void loadingChildFileFinished(const QString&, znCADFileTypes::JobState state);

protected:
    void finish() override;
    /// Imports document and parts, as told above.
    void process() override;

private:
    /// A part file that the host reads, and the first node that stands for it.
    using DirectPart = std::pair<QString, osg::NodePtr>;
    class Import;

    void import();
    void createBaseLoadConnections(znAbstractJob* job, znFileIOService* service, const QString& file);
    void childrenEnded();

    std::string m_file;
    osg::NodePtr m_loadedNode;
    std::function<void(int)> m_progressCallback;
    std::string m_outputDir;
    bool m_loadConvertedPtxFiles = true;
    bool m_waitingForChildren = false;
    znManagedJobQueue* m_childQueue;
    [[maybe_unused]] znJobQueue* m_jobQueue;
    std::int64_t m_conversionStartTime = 0; ///< nanoseconds of the steady clock
};
