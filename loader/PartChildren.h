#pragma once

#include "host/OSGSystem/Node.h"
#include "import/filetypes/znCADFileTypes.h"
#include "loader/UnloadedParts.h"

#include <QObject>
#include <QString>

#include <functional>
#include <utility>
#include <vector>

class znManagedJobQueue;
class znOsbLoaderJob;
class znPtxConverterJob;

namespace parts
{

/// The child jobs of a loader job: converts part files on the loader's queue, loads each result, and has it placed at
/// every node that waits for it.
///
/// A part's entry leaves the table when its road has ended, however it ended. A part counts as arrived, once, when its
/// converted file gave a node. All of it happens within the signals of the children, on their thread. The table must
/// outlive this object, and this object every child that it started.
class PartChildren
{
public:
    /// Puts `loaded`, which belongs to the child load, at the waiting node `target`.
    using Arrival = std::function<void(const osg::NodePtr& target, const osg::NodePtr& loaded)>;

    /// What the loader tells its own listeners.
    struct Events {
        std::function<void(znPtxConverterJob*)> converterCreated;           ///< before the job is connected and queued
        std::function<void(znOsbLoaderJob*, const QString&)> loaderCreated; ///< before the load; with the part file
        std::function<void(znOsbLoaderJob*)> loaderFinished;                ///< after the placing
        std::function<void(const QString&)> importFinished; ///< the part's conversion ended, well or not
    };

    /// `queue` runs the conversions; `parts` loses the entry of each part that has ended. Neither is owned.
    PartChildren(znManagedJobQueue* queue, UnloadedParts& parts, Arrival arrival, Events events);
    PartChildren(const PartChildren&) = delete;
    PartChildren& operator=(const PartChildren&) = delete;

    /// `wanted` is asked at the end of each conversion. Where it says no, the converted file is left alone and the part
    /// counts as not arrived. Without this all are loaded.
    void setLoadResults(std::function<bool()> wanted) { m_wantsResults = std::move(wanted); }

    /// Queues the conversion of the part file `path` into `outputDir`. The queue does not start by this.
    void convert(const std::string& path, const QString& outputDir);

    /// How many parts have arrived so far.
    std::size_t arrivedCount() const { return m_arrived; }

    /// Runs the event loop and rests in turn until `waiting` is false.
    static void wait(const bool& waiting);

private:
    void converterFinished(const std::string& path, znPtxConverterJob* converter, znCADFileTypes::JobState state);
    void startLoad(const std::string& path, const QString& file, const QString& partFile);
    void loadFinished(const std::string& path, znOsbLoaderJob* load);

    znManagedJobQueue* m_queue;
    UnloadedParts& m_parts;
    Arrival m_arrival;
    Events m_events;
    std::function<bool()> m_wantsResults;
    std::size_t m_arrived = 0;
    QObject m_listener; ///< ends the connections with this object
    /// A listener may take waiting nodes out of the tree that keeps them alive.
    std::vector<osg::RefPtr<osg::NodePtr>> m_waiting;
};

} // namespace parts
