#include "tools/znimport/Batch.h"

#include "protocol/Formats.h"
#include "protocol/Printable.h"
#include "standalone/startup/BuiltInReaders.h"
#include "tools/znimport/Ending.h"

#include <QCoreApplication>
#include <QCryptographicHash>
#include <QDateTime>
#include <QDir>
#include <QFileInfo>
#include <QThread>

#include <algorithm>
#include <cstdio>
#include <unistd.h>

namespace znimport
{

namespace
{

bool hasOutput(int exitCode)
{
    return exitCode == succeeded || exitCode == partial;
}

} // namespace

Batch::Batch(CommandLine commandLine)
    : m_commandLine(std::move(commandLine)), m_display(stderr, isatty(STDERR_FILENO) == 1)
{
    const QByteArray words = m_commandLine.batchOptions.join(QLatin1Char('\n')).toUtf8() + ZN_VERSION;
    m_options = QString::fromLatin1(QCryptographicHash::hash(words, QCryptographicHash::Sha1).toHex().left(10));
    connect(&m_interrupt, &Interrupt::stopRequested, this, &Batch::stop);
}

int Batch::run()
{
    const files::SceneReaders readers = zn::startup::builtInReaders();
    m_plan = planBatch(m_commandLine.batchFolder, m_commandLine.outputFile, [&](const QString& extension) {
        return protocol::isConverted(extension.toStdString()) || readers.find(extension) != nullptr ||
               extension == QLatin1String("plmxml");
    });
    if (m_plan.passedOver > 0)
        complain(QStringLiteral("%1 files of %2 are of no format that is read and passed over")
                     .arg(m_plan.passedOver)
                     .arg(m_commandLine.batchFolder));
    if (m_plan.items.empty()) {
        complain(QStringLiteral("%1 holds no file that can be imported").arg(m_commandLine.batchFolder));
        return failed;
    }
    QDir().mkpath(m_commandLine.outputFile);
    m_list = std::make_unique<BatchList>(m_commandLine.outputFile + QStringLiteral("/znimport-batch.tsv"));
    if (const auto error = m_list->error()) {
        complain(*error);
        return failed;
    }
    const int jobs = m_commandLine.jobs.toInt();
    m_most = static_cast<std::size_t>(std::max(1, jobs > 0 ? jobs : QThread::idealThreadCount()));
    m_display.begin(m_commandLine.batchFolder);
    startNext();
    if (!m_runs.empty())
        QCoreApplication::exec();
    m_display.clear();
    const int code = tellTable();
    if (const auto error = m_list->error()) {
        complain(*error);
        return failed;
    }
    return m_interrupt.requested() ? interrupted : code;
}

void Batch::startNext()
{
    while (m_next < m_plan.items.size() && m_runs.size() < m_most && !m_interrupt.requested()) {
        const BatchItem& item = m_plan.items[m_next++];
        if (isDone(item))
            ++m_kept;
        else
            start(item);
    }
    showState();
}

void Batch::start(const BatchItem& item)
{
    QDir().mkpath(QFileInfo(item.output).path());
    auto run = std::make_unique<Run>();
    run->item = &item;
    run->process = std::make_unique<QProcess>();
    run->clock.start();
    Run* started = run.get();
    m_runs.push_back(std::move(run));
    // One way to end, whether it came to run or not; the process is not destroyed in its own signal.
    connect(started->process.get(), &QProcess::stateChanged, this, [this, started](QProcess::ProcessState state) {
        if (state == QProcess::NotRunning)
            QMetaObject::invokeMethod(
                this, [this, started] { ended(*started); }, Qt::QueuedConnection);
    });
    QStringList arguments = m_commandLine.batchOptions;
    arguments << QStringLiteral("--jobs=1") << QStringLiteral("--output=") + item.output << QStringLiteral("--")
              << item.input;
    started->process->start(QCoreApplication::applicationFilePath(), arguments);
}

void Batch::ended(Run& run)
{
    const QFileInfo input(run.item->input);
    const bool isWhole =
        run.process->exitStatus() == QProcess::NormalExit && run.process->error() != QProcess::FailedToStart;
    const int exitCode = isWhole ? run.process->exitCode() : failed;
    m_display.clear();
    for (const QByteArray& line : run.process->readAllStandardError().split('\n'))
        if (line.startsWith("znimport: "))
            protocol::print(stderr, line.toStdString() + '\n');
    if (!isWhole)
        complain(QStringLiteral("%1: %2").arg(run.item->name, run.process->errorString()));
    if (!m_interrupt.requested())
        m_list->add({run.item->name, exitCode, double(run.clock.elapsed()) / 1000, input.size(), stampOf(*run.item)});
    ++m_ended;
    m_runs.erase(std::find_if(m_runs.begin(), m_runs.end(), [&](const auto& each) { return each.get() == &run; }));
    startNext();
    if (m_runs.empty())
        QCoreApplication::quit();
}

void Batch::stop()
{
    for (const auto& run : m_runs)
        run->process->terminate();
}

bool Batch::isDone(const BatchItem& item)
{
    const BatchEnd* before = m_list->find(item.name);
    return before && hasOutput(before->exitCode) && before->stamp == stampOf(item) &&
           before->bytes == QFileInfo(item.input).size() && QFileInfo(item.output).isFile();
}

QString Batch::stampOf(const BatchItem& item) const
{
    return QString::number(QFileInfo(item.input).lastModified().toMSecsSinceEpoch()) + QLatin1Char('-') + m_options;
}

void Batch::showState()
{
    const std::size_t all = m_plan.items.size();
    m_display.show(static_cast<unsigned>(100 * (m_ended + m_kept) / all),
                   QStringLiteral("%1 of %2 files").arg(m_ended + m_kept).arg(all));
}

int Batch::tellTable() const
{
    std::size_t whole = 0;
    std::size_t written = 0;
    std::printf("exit   seconds        bytes  file\n");
    for (const BatchItem& item : m_plan.items) {
        const BatchEnd* end = m_list->find(item.name);
        if (!end) {
            std::printf("   -         -            -  %s\n", protocol::printableLine(item.name.toStdString()).c_str());
            continue;
        }
        whole += end->exitCode == succeeded ? 1 : 0;
        written += hasOutput(end->exitCode) ? 1 : 0;
        std::printf("%4d %9.2f %12lld  %s\n", end->exitCode, end->seconds,
                    static_cast<long long>(QFileInfo(item.output).size()),
                    protocol::printableLine(item.name.toStdString()).c_str());
    }
    std::printf("%zu of %zu files imported, %zu of them in part, %zu done before\n", written, m_plan.items.size(),
                written - whole, m_kept);
    if (whole == m_plan.items.size())
        return succeeded;
    return written == 0 ? failed : partial;
}

} // namespace znimport
