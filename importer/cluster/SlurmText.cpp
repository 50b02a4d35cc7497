#include "importer/cluster/SlurmText.h"

#include "standalone/znKernel/ConverterCommand.h"

#include <QProcess>
#include <QRegularExpression>

#include <algorithm>
#include <limits>

namespace importer::cluster
{

namespace
{

constexpr std::size_t mostNodes = 1000000;

QStringList linesOf(const QByteArray& text)
{
    return QString::fromUtf8(text).split(QLatin1Char('\n'), Qt::SkipEmptyParts);
}

/// The rest of each line that begins with `mark`.
QStringList valuesOf(const QStringList& lines, const QString& mark)
{
    QStringList values;
    for (const QString& line : lines)
        if (line.startsWith(mark))
            values.append(line.mid(mark.size()).trimmed());
    return values;
}

double megabytesOf(QChar unit)
{
    switch (unit.toLatin1()) {
    case 'K':
        return 1.0 / 1024;
    case 'G':
        return 1024;
    case 'T':
        return 1024.0 * 1024;
    default:
        return 1;
    }
}

QStringList without(const QStringList& nodes, const QStringList& lost)
{
    QStringList left;
    for (const QString& node : nodes)
        if (!lost.contains(node))
            left.append(node);
    return left;
}

bool saysWhere(const QString& word)
{
    return word == QLatin1String("--exact") || word == QLatin1String("--overlap") ||
           word.startsWith(QLatin1String("--nodelist="));
}

} // namespace

std::optional<std::vector<int>> parseCores(const QString& text)
{
    static const QRegularExpression group(QStringLiteral("^(\\d{1,6})(?:\\(x(\\d{1,7})\\))?$"));
    std::vector<int> cores;
    for (const QString& word : text.split(QLatin1Char(','))) {
        const QRegularExpressionMatch match = group.match(word);
        const std::size_t times = match.captured(2).isEmpty() ? 1 : match.captured(2).toULong();
        if (!match.hasMatch() || cores.size() + times > mostNodes)
            return std::nullopt;
        cores.insert(cores.end(), times, match.captured(1).toInt());
    }
    return cores;
}

int parseMemory(const QString& resources)
{
    static const QRegularExpression memory(QStringLiteral("(?:^|,)mem=(\\d+(?:\\.\\d+)?)([KMGT]?)(?:,|$)"));
    const QRegularExpressionMatch match = memory.match(resources);
    if (!match.hasMatch())
        return 0;
    const QString unit = match.captured(2);
    const double megabytes = match.captured(1).toDouble() * megabytesOf(unit.isEmpty() ? QLatin1Char('M') : unit[0]);
    return static_cast<int>(std::min(megabytes, 1e9));
}

std::optional<Allocation> parseAllocation(const QByteArray& text)
{
    const QStringList lines = linesOf(text);
    const QStringList jobs = valuesOf(lines, QStringLiteral("job="));
    const QStringList cores = valuesOf(lines, QStringLiteral("cores="));
    Allocation allocation;
    allocation.nodes = valuesOf(lines, QStringLiteral("node="));
    if (jobs.size() != 1 || jobs[0].isEmpty() || cores.size() != 1 || allocation.nodes.isEmpty())
        return std::nullopt;
    const auto counts = parseCores(cores[0]);
    if (!counts || counts->size() != static_cast<std::size_t>(allocation.nodes.size()))
        return std::nullopt;
    allocation.job = jobs[0];
    allocation.cores = *counts;
    const QStringList resources = valuesOf(lines, QStringLiteral("tres="));
    allocation.megabytesANode = resources.isEmpty() ? 0 : parseMemory(resources[0]) / allocation.nodes.size();
    return allocation;
}

int placesIn(const Allocation& allocation, int megabytes, const QStringList& lost)
{
    const int byMemory = allocation.megabytesANode > 0 ? std::max(allocation.megabytesANode / megabytes, 1) : 0;
    long long places = 0;
    for (int i = 0; i < allocation.nodes.size(); ++i) {
        if (lost.contains(allocation.nodes[i]))
            continue;
        const int cores = allocation.cores[static_cast<std::size_t>(i)];
        places += byMemory > 0 ? std::min(cores, byMemory) : cores;
    }
    return static_cast<int>(std::min<long long>(places, std::numeric_limits<int>::max()));
}

QString launcherFor(const Allocation& allocation, const QString& stepName, const QStringList& lost)
{
    const QString nodes = without(allocation.nodes, lost).join(QLatin1Char(','));
    const QString where =
        lost.isEmpty() ? QStringLiteral("--exact") : QStringLiteral("--overlap --nodelist={oneof:%1}").arg(nodes);
    return QStringLiteral("srun --jobid=%1 --job-name=%2 %3 --nodes=1 --ntasks=1 --cpus-per-task={cores} "
                          "--mem={memory}M --time={minutes} --input=none --mpi=none --quiet")
        .arg(allocation.job, stepName, where);
}

QString onNodes(const QString& command, const QStringList& nodes)
{
    QStringList words = QProcess::splitCommand(command);
    if (nodes.isEmpty() || words.isEmpty() || words[0] != QLatin1String("srun"))
        return command;
    for (int i = 1; i < words.size() && words[i].startsWith(QLatin1String("--"));)
        saysWhere(words[i]) ? words.removeAt(i) : void(++i);
    words.insert(1, QStringLiteral("--overlap"));
    words.insert(2, QStringLiteral("--nodelist=") + zn::kernel::chosenWord(nodes, command));
    return zn::kernel::joinCommand(words);
}

QStringList failedNodes(const QByteArray& sallocErrors)
{
    static const QRegularExpression failure(QStringLiteral("^salloc: error: Node failure on (\\S+)"),
                                            QRegularExpression::MultilineOption);
    QStringList nodes;
    for (auto found = failure.globalMatch(QString::fromUtf8(sallocErrors)); found.hasNext();)
        nodes.append(found.next().captured(1));
    return nodes;
}

/// Either the scheduler noticed that the node is gone, or the node did not answer when the step was to start on it.
QString failedNode(const QByteArray& srunOutput)
{
    static const QRegularExpression failure(
        QStringLiteral("^srun: error: (?:Node failure on (\\S+)|Task launch for \\S+ failed on node (\\S+):)"),
        QRegularExpression::MultilineOption);
    const QRegularExpressionMatch match = failure.match(QString::fromUtf8(srunOutput));
    return match.captured(1) + match.captured(2);
}

QString refusal(const QByteArray& errors)
{
    static const QRegularExpression mark(QStringLiteral("^\\w+: (?:error: |fatal: )?"));
    const QStringList lines = linesOf(errors);
    const auto tellsError = [](const QString& line) {
        return line.contains(QLatin1String(": error: ")) || line.contains(QLatin1String(": fatal: "));
    };
    const auto found = std::find_if(lines.rbegin(), lines.rend(), tellsError);
    QString line = found != lines.rend() ? *found : lines.isEmpty() ? QString() : lines.last();
    return line.remove(mark).trimmed();
}

QString waitingFor(const QByteArray& errors)
{
    static const QRegularExpression queued(QStringLiteral("^salloc: (job \\S+ queued .*)$"),
                                           QRegularExpression::MultilineOption);
    static const QRegularExpression impossible(QStringLiteral("^salloc: (Requested .* not available now)"),
                                               QRegularExpression::MultilineOption);
    const QString text = QString::fromUtf8(errors);
    const QStringList parts{queued.match(text).captured(1), impossible.match(text).captured(1)};
    return QStringList(parts).filter(QRegularExpression(QStringLiteral("."))).join(QStringLiteral("; "));
}

} // namespace importer::cluster
