#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <optional>
#include <vector>

namespace importer::cluster
{

/// A part of a cluster that was given to this import.
struct Allocation {
    QString job;             ///< its number, as the scheduler writes it
    QStringList nodes;       ///< their names
    std::vector<int> cores;  ///< of each node, in the order of the nodes
    int megabytesANode = 0;  ///< memory; 0 when the scheduler does not share it out
    bool isBorrowed = false; ///< the import was started in it, and must not give it back
};

/// What a shell script prints that was started within an allocation, line by line: `job=`, `cores=` and `tres=` with
/// the scheduler's own texts, and `node=` for each node. Nothing if one that is needed is missing or is none.
std::optional<Allocation> parseAllocation(const QByteArray& text);

/// "16(x2),8" is 16, 16, 8. Nothing if the text is wrong, or tells of more than a million nodes.
std::optional<std::vector<int>> parseCores(const QString& text);

/// Megabytes of a text like "mem=7.5G" in a list "cpu=4,mem=8000M,node=2"; 0 if there is none.
int parseMemory(const QString& resources);

/// How many conversions of `megabytes` run at a time on the nodes that are not `lost`; each takes a core.
int placesIn(const Allocation& allocation, int megabytes, const QStringList& lost);

/// The launcher that makes each converter a step of the allocation, under a name by which it can be found.
///
/// Once a node was lost the scheduler does not get back the cores of steps that ran at that moment, so that steps which
/// ask for cores of their own would wait for ever. From then on each step is given one of the nodes that are left, and
/// shares it.
QString launcherFor(const Allocation& allocation, const QString& stepName, const QStringList& lost);

/// The node that failed, by what srun wrote; empty when none did. A program's own exit code is no failure of a node.
QString failedNode(const QByteArray& srunOutput);

/// The same command on one of `nodes`, shared with other steps. Commands of another launcher stay as they are.
QString onNodes(const QString& command, const QStringList& nodes);

/// The nodes of which salloc says that they failed.
QStringList failedNodes(const QByteArray& sallocErrors);

/// The last line of the scheduler that tells an error, without its mark; the last line of all if there is none.
QString refusal(const QByteArray& errors);

/// What an allocation that is not there yet waits for, by what salloc wrote; empty before it said so.
QString waitingFor(const QByteArray& errors);

} // namespace importer::cluster
