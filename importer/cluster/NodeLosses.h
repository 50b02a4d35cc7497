#pragma once

#include "standalone/znJobProcessing/LostProcess.h"

#include <QObject>
#include <QStringList>

namespace importer::cluster
{

/// Tells conversions that failed from those whose node failed, while it lives. A conversion whose node failed runs once
/// more, on another node; one that loses a node again fails, and its log says so. Nodes that failed are not used again.
class NodeLosses : public QObject
{
    Q_OBJECT

public:
    /// `nodes` are those that conversions run on.
    explicit NodeLosses(const QStringList& nodes);
    ~NodeLosses() override;

    /// The nodes that failed.
    const QStringList& lost() const { return m_lost; }
    /// The nodes that did not.
    const QStringList& left() const { return m_left; }

    /// The scheduler says that this node failed.
    void addNode(const QString& node);

Q_SIGNALS:
    /// A node failed that was not known to have.
    void nodeFailed(const QString& node);
    /// A conversion lost its node: which one, and what becomes of it, in a sentence.
    void conversionLost(const QString& text);

private:
    znJobs::LossVerdict judge(znProcessJob& job, const QString& command, const QByteArray& output);

    znJobs::LossJudge m_judgeBefore; ///< asked where no node failed
    QStringList m_left;
    QStringList m_lost;
};

} // namespace importer::cluster
