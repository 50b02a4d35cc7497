#pragma once

#include "importer/EmptyImport.h"
#include "importer/ImportRequest.h"
#include "importer/ImportResult.h"
#include "importer/PartCounts.h"

#include <QObject>

#include <memory>

namespace importer
{

/// A road is the chain of jobs that brings one file into the scene. There is one class for each chain; which one a file
/// takes follows from its name.
class ImportRoad : public QObject
{
    Q_OBJECT

public:
    /// The road of the file that `request` names.
    static std::unique_ptr<ImportRoad> forRequest(const zn::ImportRequest& request);

    /// Begins; `ended` follows from the event loop.
    virtual void start() = 0;
    /// Asks the jobs to end, which the result tells. `ended` follows as soon as they have.
    void cancel();
    /// A line of the host's log, for the result.
    void addMessage(const QString& line) { m_result.messages.append(line); }

    /// What the road is for.
    virtual Source source() const = 0;

    /// What became of the request; complete once `ended` has come. The road keeps nothing of it.
    zn::ImportResult takeResult();

Q_SIGNALS:
    /// `percent` is 0 when only the text tells something.
    void progressChanged(unsigned percent, const QString& text);
    /// The part files went on; `text` tells the counts in words.
    void partsChanged(const zn::PartCounts& counts, const QString& text);
    /// The result is complete. Comes once for each start, from the event loop.
    void ended();

protected:
    /// Its result names the file of the request.
    explicit ImportRoad(const zn::ImportRequest& request);

    /// Takes the views of part files out of the tree of the result. Tells of them, and of what the converters left out
    /// beside the parts, in the result and among its messages.
    void tellLeftOut();

    /// What was asked for.
    const zn::ImportRequest& request() const { return m_request; }

    zn::ImportResult m_result; ///< what the jobs have made so far

private:
    virtual void abortJobs() = 0;

    zn::ImportRequest m_request;
};

} // namespace importer
