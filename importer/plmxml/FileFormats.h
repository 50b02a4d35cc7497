#pragma once

#include <QString>
#include <QStringList>

namespace importer::plmxml
{

/// How well files come in, by their names. Of several that hold the same shape the one with the lowest rank is taken.
class FileFormats
{
public:
    /// Those of `preferred` come first, in its order: names such as "jt" or "step", or extensions.
    explicit FileFormats(const QStringList& preferred = {});

    /// What is not a shape at all.
    static constexpr int NoShape = 1000;
    /// From here on nothing that is known reads the file.
    static constexpr int NoReader = 500;
    /// From here on the file needs another converter than ours.
    static constexpr int OtherConverter = 200;

    /// The rank of the file `name`, whose format a document calls `format`.
    int rankOf(const QString& name, const QString& format) const;

private:
    QStringList m_preferred;
};

/// The one name of formats and extensions that mean the same, such as "step" for "stp"; other texts in lower case.
QString formatNameOf(const QString& word);

} // namespace importer::plmxml
