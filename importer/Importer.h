#pragma once

#include "importer/ImportRequest.h"
#include "importer/ImportResult.h"
#include "importer/PartCounts.h"

#include <QObject>

#include <memory>

namespace zn
{
class StandaloneSession;
} // namespace zn

namespace importer
{
class ImportRoad;
enum class Source;
} // namespace importer

namespace zn
{

/// Imports files into the scene of a session, one after the other: it picks the jobs that a file needs by its name,
/// runs them in turn, and says what came of it.
///
/// While it lives it receives the session's log, of several the one that was made last, and hands each line on. For
/// each `import` comes one `finished`, from the event loop.
class Importer : public QObject
{
    Q_OBJECT

public:
    /// `session` must outlive it. Made and used on the thread of the application object, as the jobs are.
    explicit Importer(zn::StandaloneSession& session, QObject* parent = nullptr);
    /// A running import is cancelled: it ends as soon as its jobs let it, tells nobody and leaves nothing in the scene.
    /// That may be done from any slot; `session` must stay until the event loop in which the import began is back.
    ~Importer() override;

    /// Begins the import of the file that `request` names; where one whose importer is gone has not come to its end,
    /// after that. Refused with a warning while another one of this importer runs.
    void import(const ImportRequest& request);

    /// Ends the running import as soon as its jobs let it; its result says that it was cancelled.
    void cancel();

    /// Whether an import has begun whose `finished` has not come yet.
    bool isRunning() const { return m_road != nullptr; }

Q_SIGNALS:
    /// `percent` is 0 when only the text tells something.
    void progressChanged(unsigned percent, const QString& text);
    /// The part files of an assembly went on; `text` tells the counts in words.
    void partsChanged(const zn::PartCounts& counts, const QString& text);
    /// A line of the host's log.
    void message(const QString& line);
    /// The import has ended, however it did. The result holds a reference on its node.
    void finished(const zn::ImportResult& result);

private:
    void receiveLog(const QString& line);
    void begin(const QString& file);
    void roadEnded();
    void tellIdleSettings(ImportResult& result, importer::Source source) const;
    void lookAtNormals(ImportResult& result) const;
    void mapBoxes(ImportResult& result) const;

    zn::StandaloneSession& m_session;
    std::unique_ptr<importer::ImportRoad> m_road;
    bool m_hasBegun = false;      ///< the road, which may have to wait
    bool m_countsNormals = false; ///< of the file that is imported
};

} // namespace zn
