#pragma once

#include "importer/cluster/SlurmText.h"

#include <QObject>

#include <memory>

class QProcess;

/// Looks from each node of an allocation whether the files are there that conversions need: one step reads the inputs
/// and a file that this process wrote into the folder for outputs, and writes a file there that this process reads.
class ClusterProbe : public QObject
{
    Q_OBJECT

public:
    struct Question {
        znAllocation allocation;
        QString stepName;
        QString outputFolder;
        QStringList inputs;
        QString program; ///< the converter
    };

    explicit ClusterProbe(Question question, QObject* parent = nullptr);
    ~ClusterProbe() override;

    /// Begins; one of the signals follows from the event loop.
    void start();

Q_SIGNALS:
    void passed();
    void failed(const QString& reason);

private:
    void processEnded();
    bool writeToken();
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
