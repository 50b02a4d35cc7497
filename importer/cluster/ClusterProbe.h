#pragma once

#include "importer/cluster/SlurmText.h"

#include <QObject>

#include <memory>

class QProcess;

namespace importer::cluster
{

/// Looks from each node of an allocation whether the files are there that conversions need: one step reads the inputs
/// and a file that this process wrote into the folder for outputs, and writes a file there that this process reads.
class ClusterProbe : public QObject
{
    Q_OBJECT

public:
    /// What the nodes are to find.
    struct Question {
        Allocation allocation; ///< whose nodes are asked, all of them
        QString stepName;      ///< by which the step can be found
        QString outputFolder;  ///< is read and written, here and there
        QStringList inputs;    ///< must have the same sizes there
        QString program;       ///< the converter, a path or a name in the nodes' search path
    };

    /// Asks nothing yet.
    explicit ClusterProbe(Question question, QObject* parent = nullptr);
    /// Ends a step that still runs, and removes the files of the probe.
    ~ClusterProbe() override;

    /// Begins; one of the signals follows from the event loop.
    void start();

Q_SIGNALS:
    /// Every node finds everything.
    void passed();
    /// The first node that does not, and what it lacks; or why nobody could be asked.
    void failed(const QString& reason);

private:
    void processEnded();
    QStringList arguments() const;
    QString answerFile(const QString& node) const;
    QString complaintOf(const QString& node) const;
    QString describe(const QString& node, const QString& complaint) const;

    Question m_question;
    QByteArray m_token;
    QString m_tokenFile;
    std::unique_ptr<QProcess> m_process;
    QByteArray m_output;
};

} // namespace importer::cluster
