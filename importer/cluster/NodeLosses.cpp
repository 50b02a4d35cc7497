#include "importer/cluster/NodeLosses.h"

#include "converter/znPtxConverterJob.h"
#include "importer/cluster/SlurmText.h"
#include "protocol/FileNames.h"

#include <QFile>
#include <QVariant>

namespace importer::cluster
{

namespace
{

// On the job itself, since addresses of jobs are used again.
const char lostNodeProperty[] = "znLostNode";

QString inputOf(const znProcessJob& job)
{
    const auto* const conversion = qobject_cast<const znPtxConverterJob*>(&job);
    return conversion ? conversion->getInputFile() : NodeLosses::tr("a conversion");
}

/// Where the reason of a failure is looked for.
void writeLastWords(const znProcessJob& job, const QString& text)
{
    const auto* const conversion = qobject_cast<const znPtxConverterJob*>(&job);
    if (!conversion)
        return;
    QFile log(conversion->getOutputFile() + QLatin1String(protocol::LogSuffix));
    if (log.open(QIODevice::Append))
        log.write('\n' + QByteArray(protocol::LogErrorMark) + text.toUtf8() + '\n');
}

} // namespace

NodeLosses::NodeLosses(const QStringList& nodes) : m_left(nodes)
{
    m_judgeBefore = znJobs::setLossJudge([this](znProcessJob& job, const QString& command, const QByteArray& output) {
        return judge(job, command, output);
    });
}

NodeLosses::~NodeLosses()
{
    znJobs::setLossJudge(m_judgeBefore);
}

void NodeLosses::addNode(const QString& node)
{
    if (m_left.removeAll(node) == 0)
        return;
    m_lost.append(node);
    Q_EMIT nodeFailed(node);
}

znJobs::LossVerdict NodeLosses::judge(znProcessJob& job, const QString& command, const QByteArray& output)
{
    const QString node = failedNode(output);
    if (node.isEmpty())
        return m_judgeBefore ? m_judgeBefore(job, command, output) : znJobs::LossVerdict();
    addNode(node);
    const QString before = job.property(lostNodeProperty).toString();
    job.setProperty(lostNodeProperty, node);
    if (before.isEmpty()) {
        Q_EMIT conversionLost(tr("%1: the node %2 failed; it is converted again on another").arg(inputOf(job), node));
        return {true, onNodes(command, m_left)};
    }
    const QString text = tr("The node %1 failed, and before it the node %2.").arg(node, before);
    writeLastWords(job, text);
    Q_EMIT conversionLost(inputOf(job) + QStringLiteral(": ") + text);
    return {true, std::nullopt};
}

} // namespace importer::cluster
