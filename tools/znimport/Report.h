#pragma once

#include "importer/ImportResult.h"

#include <QElapsedTimer>
#include <QJsonArray>
#include <QJsonObject>
#include <QStringList>

#include <optional>

namespace znimport
{

/// What a run of the tool tells a program about itself: which files it imported, what the steps of each import changed
/// and took, what is missing. `docs/report.md` tells the members.
class Report
{
public:
    /// Counts up whenever a member changes its meaning or goes; new members alone do not change it.
    static constexpr int version = 1;

    /// The run begins.
    Report() { m_run.start(); }

    /// The import of a file begins.
    void begin() { m_import.start(); }
    /// It has ended with `result`; its tree is counted.
    void add(const zn::ImportResult& result);
    void addWarning(const QString& text) { m_warnings.append(text); }
    /// Why the run failed after the imports.
    void setError(const QString& text) { m_error = text; }
    void addOutput(const QString& file);

    /// Writes the report on a run that leaves this scene and ends with this code. The file takes its name when it is
    /// complete. Gives a sentence that names the file when it cannot be written; what stood there is left then.
    std::optional<QString> write(const QString& file, const osg::NodePtr& scene, int exitCode) const;

private:
    QElapsedTimer m_run;
    QElapsedTimer m_import;
    QJsonArray m_files;
    QJsonArray m_outputs;
    QStringList m_warnings;
    QString m_error;
};

} // namespace znimport
