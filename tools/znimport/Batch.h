#pragma once

#include "tools/znimport/BatchList.h"
#include "tools/znimport/BatchPlan.h"
#include "tools/znimport/CommandLine.h"
#include "tools/znimport/Interrupt.h"
#include "tools/znimport/ProgressDisplay.h"

#include <QElapsedTimer>
#include <QObject>
#include <QProcess>

#include <memory>
#include <vector>

namespace znimport
{

/// Imports each file of a folder in a process of its own, several at a time, and writes a GLB file for each; what one
/// file does to its process is nothing to the others. Files that a batch before has done, unchanged and with the same
/// options, are left as they are.
class Batch : public QObject
{
    Q_OBJECT

public:
    explicit Batch(CommandLine commandLine);

    /// @return the exit code: 0 when all came in whole, 1 when none came in, 3 when some did not or came in in part,
    /// 130 after an interruption
    int run();

private:
    struct Run {
        const BatchItem* item = nullptr;
        std::unique_ptr<QProcess> process;
        QElapsedTimer clock;
    };

    void startNext();
    void start(const BatchItem& item);
    void ended(Run& run);
    void stop();
    bool isDone(const BatchItem& item);
    QString stampOf(const BatchItem& item) const;
    void showState();
    int tellTable() const;

    CommandLine m_commandLine;
    QString m_options; ///< a mark of the options that outputs depend on
    Interrupt m_interrupt;
    ProgressDisplay m_display;
    BatchPlan m_plan;
    std::unique_ptr<BatchList> m_list;
    std::vector<std::unique_ptr<Run>> m_runs;
    std::size_t m_next = 0;
    std::size_t m_most = 1; ///< runs at a time
    std::size_t m_ended = 0;
    std::size_t m_kept = 0; ///< files that were done before
};

} // namespace znimport
