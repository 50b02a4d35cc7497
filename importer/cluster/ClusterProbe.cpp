#include "importer/cluster/ClusterProbe.h"

#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QUuid>

#include <csignal>
#include <sys/prctl.h>

namespace importer::cluster
{

namespace
{

// Names may hold anything, so the answers tell inputs by their number. The output is looked at last: it is what this
// process waits for.
const char script[] = R"sh(
node=${SLURMD_NODENAME:-$(hostname)}
token=$1; text=$2; program=$3; shift 3
say() { printf 'probe %s %s\n' "$node" "$1"; exit 0; }
number=0
while [ $# -ge 2 ]; do
    size=$(wc -c <"$2" | tr -d ' ') || size=none
    [ "$size" = "$1" ] || say "input-$number"
    number=$((number + 1)); shift 2
done
command -v "$program" >/dev/null || say program
[ "$(cat "$token")" = "$text" ] || say read
printf %s "$text" >"$token-$node" || say write
say fine
)sh";

/// Dies with this process.
class ProbeProcess : public QProcess
{
protected:
    void setupChildProcess() override
    {
        ::setpgid(0, 0);
        ::prctl(PR_SET_PDEATHSIG, SIGKILL);
        ::signal(SIGPIPE, SIG_DFL);
    }
};

QByteArray contentOf(const QString& name)
{
    QFile file(name);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace

ClusterProbe::ClusterProbe(Question question, QObject* parent)
    : QObject(parent), m_question(std::move(question)), m_token(QUuid::createUuid().toByteArray(QUuid::WithoutBraces)),
      m_tokenFile(m_question.outputFolder + QStringLiteral("/probe-") + QString::fromLatin1(m_token.left(8)))
{
}

ClusterProbe::~ClusterProbe()
{
    if (m_process) {
        m_process->blockSignals(true);
        m_process->terminate();
        if (!m_process->waitForFinished(3000))
            m_process->kill();
        m_process->waitForFinished(1000);
    }
    QFile::remove(m_tokenFile);
    for (const QString& node : qAsConst(m_question.allocation.nodes))
        QFile::remove(answerFile(node));
}

void ClusterProbe::start()
{
    m_process = std::make_unique<ProbeProcess>();
    m_process->setProcessChannelMode(QProcess::MergedChannels);
    m_process->setStandardInputFile(QProcess::nullDevice());
    connect(m_process.get(), qOverload<int, QProcess::ExitStatus>(&QProcess::finished), this,
            &ClusterProbe::processEnded);
    connect(
        m_process.get(), &QProcess::errorOccurred, this,
        [this](QProcess::ProcessError error) {
            if (error == QProcess::FailedToStart)
                Q_EMIT failed(tr("srun cannot be started: is Slurm installed here?"));
        },
        Qt::QueuedConnection);
    QFile token(m_tokenFile);
    if (token.open(QIODevice::WriteOnly) && token.write(m_token) == m_token.size() && token.flush())
        return m_process->start(QStringLiteral("srun"), arguments());
    const QString reason = m_tokenFile + QStringLiteral(": ") + token.errorString();
    QMetaObject::invokeMethod(
        this, [this, reason] { Q_EMIT failed(reason); }, Qt::QueuedConnection);
}

QStringList ClusterProbe::arguments() const
{
    const QString count = QString::number(m_question.allocation.nodes.size());
    QStringList words{QStringLiteral("--jobid=") + m_question.allocation.job,
                      QStringLiteral("--job-name=") + m_question.stepName,
                      QStringLiteral("--exact"),
                      QStringLiteral("--nodes=") + count,
                      QStringLiteral("--ntasks=") + count,
                      QStringLiteral("--ntasks-per-node=1"),
                      QStringLiteral("--cpus-per-task=1"),
                      QStringLiteral("--mem=64M"),
                      QStringLiteral("--time=2"),
                      QStringLiteral("--input=none"),
                      QStringLiteral("--mpi=none"),
                      QStringLiteral("--quiet")};
    words << QStringLiteral("sh") << QStringLiteral("-c") << QString::fromLatin1(script) << QStringLiteral("probe")
          << m_tokenFile << QString::fromLatin1(m_token) << m_question.program;
    for (const QString& input : m_question.inputs)
        words << QString::number(QFileInfo(input).size()) << QFileInfo(input).absoluteFilePath();
    return words;
}

void ClusterProbe::processEnded()
{
    m_output = m_process->readAll();
    for (const QString& node : qAsConst(m_question.allocation.nodes))
        if (const QString complaint = complaintOf(node); !complaint.isEmpty()) {
            Q_EMIT failed(complaint);
            return;
        }
    Q_EMIT passed();
}

QString ClusterProbe::answerFile(const QString& node) const
{
    return m_tokenFile + QLatin1Char('-') + node;
}

/// Empty when the node sees everything.
QString ClusterProbe::complaintOf(const QString& node) const
{
    const QByteArray mark = "probe " + node.toUtf8() + ' ';
    for (const QByteArray& line : m_output.split('\n'))
        if (line.startsWith(mark)) {
            const QString answer = QString::fromUtf8(line.mid(mark.size()));
            if (answer != QLatin1String("fine"))
                return describe(node, answer);
            return contentOf(answerFile(node)) == m_token ? QString() : describe(node, QStringLiteral("write"));
        }
    const QString reason = refusal(m_output);
    return tr("the node %1 did not answer%2").arg(node, reason.isEmpty() ? QString() : QStringLiteral(": ") + reason);
}

QString ClusterProbe::describe(const QString& node, const QString& complaint) const
{
    if (complaint == QLatin1String("program"))
        return tr("the node %1 has no converter %2").arg(node, m_question.program);
    const QString inputMark = QStringLiteral("input-");
    if (complaint.startsWith(inputMark)) {
        const QString file = m_question.inputs.value(complaint.mid(inputMark.size()).toInt());
        return tr("the folder of %1 is not shared with the cluster: the node %2 does not see this file there")
            .arg(file, node);
    }
    return tr("the folder %1 is not shared with the cluster: what is written there on one side does not arrive on the "
              "other (node %2)")
        .arg(m_question.outputFolder, node);
}

} // namespace importer::cluster
