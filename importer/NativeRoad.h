#pragma once

#include "host/znJobProcessing/znJobQueue.h"
#include "importer/ImportRoad.h"

namespace importer
{

/// A file that the host reads by itself goes through the file loader job. A scene file comes in as it was written; the
/// tree of any other one is put in order (`optimizeMeshTree`).
class NativeRoad : public ImportRoad
{
    Q_OBJECT

public:
    /// The file of the request is one that the host reads.
    explicit NativeRoad(const zn::ImportRequest& request) : ImportRoad(request) {}

    void start() override;
    Source source() const override;

private:
    /// The file loader job ends no load that has begun; a reader in a process of its own is ended by the importer.
    void abortJobs() override;
    void optimize();

    znJobQueue m_queue;
};

} // namespace importer
