#pragma once

#include "importer/ImportResult.h"
#include "importer/PartCounts.h"

#include <QHash>
#include <QObject>
#include <QSet>

#include <vector>

class znOsbLoaderJob;
class znPtxConverterJob;
class znPLMXMLLoaderJob;
class znPtxLoaderJob;

namespace importer
{

/// Follows the part files of a loader job: how many are done, and which did not come in and why. It removes the
/// converted file of a part once the part is in the tree, which stands on the mapped file.
class PartImports : public QObject
{
    Q_OBJECT

public:
    ///@{
    /// Belongs to `job`, which has not run yet.
    explicit PartImports(znPtxLoaderJob& job);
    explicit PartImports(znPLMXMLLoaderJob& job);
    ///@}

    /// Follows the part files of a document that is a part file itself, too.
    void followNested(znPLMXMLLoaderJob& job);

    /// How far the parts are at present.
    const zn::PartCounts& counts() const { return m_counts; }
    /// The counts in words.
    QString text() const;
    /// In the order in which they ended.
    const std::vector<zn::MissingPart>& missing() const { return m_missing; }

Q_SIGNALS:
    /// Parts went on: counts() and missing() may tell something new.
    void changed();

private:
    template <class Job>
    void followConversions(Job& job);
    void follow(znPtxConverterJob* conversion);
    void conversionEnded(const znPtxConverterJob& conversion);
    void loadEnded(znOsbLoaderJob& load, const QString& partFile);
    void partEnded(const QString& partFile);
    void directPartEnded(const QString& partFile, znCADFileTypes::JobState state);

    zn::PartCounts m_counts;
    QSet<QString> m_running;
    QHash<QString, QString> m_reasons; ///< why parts whose import goes on would have failed, were this its end
    QHash<QString, QString> m_outputs;
    std::vector<zn::MissingPart> m_missing;
};

} // namespace importer
