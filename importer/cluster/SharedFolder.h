#pragma once

#include <QString>

#include <optional>

namespace importer::cluster
{

/// A folder for converted files that all nodes of a cluster see. When this object goes, so does the folder with what is
/// in it, but for the logs of conversions that failed.
class SharedFolder
{
public:
    SharedFolder() = default;
    ~SharedFolder();
    SharedFolder(const SharedFolder&) = delete;
    SharedFolder& operator=(const SharedFolder&) = delete;

    /// Makes it in `parent`. Gives a sentence when it cannot be made.
    std::optional<QString> make(const QString& parent);

    /// Lets the logs go as well: those of conversions that were cancelled tell nothing.
    void dropLogs() { m_keepsLogs = false; }

    /// Empty before it was made.
    QString path() const { return m_path; }

private:
    QString m_path;
    bool m_keepsLogs = true;
};

} // namespace importer::cluster
