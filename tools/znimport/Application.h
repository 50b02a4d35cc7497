#pragma once

#include "importer/Importer.h"
#include "importer/cluster/ClusterImport.h"
#include "standalone/startup/StandaloneSession.h"
#include "standalone/znUtils/CallTrace.h"
#include "tools/znimport/CommandLine.h"
#include "tools/znimport/Interrupt.h"
#include "tools/znimport/ProgressDisplay.h"
#include "tools/znimport/Report.h"
#include "tools/znimport/SceneChoices.h"

#include <QObject>

#include <atomic>
#include <memory>
#include <optional>

namespace znimport
{

/// One run of the tool: imports the files of a command line in turn, prints and writes what was
/// asked for, and reports on that. An interrupted run reports nothing.
class Application : public QObject
{
    Q_OBJECT

public:
    explicit Application(CommandLine commandLine);

    /// Runs to the end. Needs an application object.
    /// @return the exit code: 0 all imported, 1 nothing imported or the output not written, 2 wrong use, 3 in part,
    ///         130 interrupted
    int run();

private:
    void begin();
    void openCluster();
    void clusterEnded(const QString& reason);
    bool applyVariant();
    void importNext();
    void importFinished(const zn::ImportResult& result);
    void stop();
    /// Prints and writes what was asked for. Gives the exit code so far.
    int presentScene();
    int exitCode() const;
    bool choose();
    bool writePartsList();
    bool writeOutputs();
    int writeReport(int code);
    void warn(const QString& text);
    void fail(const QString& text);

    CommandLine m_commandLine;
    SceneChoices m_choices;
    std::optional<zn::CallTrace> m_trace;
    importer::cluster::SharedFolder m_clusterFolder; ///< the scene stands on files in it
    zn::StandaloneSession m_session;
    std::unique_ptr<zn::ClusterImport> m_cluster;
    zn::Importer m_importer;
    Interrupt m_interrupt;
    ProgressDisplay m_display;
    Report m_report;
    QString m_partFiles; ///< those that would be read
    int m_next = 0;
    int m_imported = 0;
    int m_incomplete = 0;
    bool m_clusterFailed = false;
    std::atomic<bool> m_cancelWriting = false;
};

} // namespace znimport
