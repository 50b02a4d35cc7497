#pragma once

#include <QByteArray>
#include <QList>
#include <QString>

namespace znimport
{

/// Files whose names are no text, because their bytes are not UTF-8: they are opened through links with names that are.
class InputLinks
{
public:
    /// Of the program's `arguments` as the system gave them. Links go below `folder`, which must exist.
    InputLinks(QList<QByteArray> arguments, QString folder);

    /// A path by which `file`, an argument as Qt read it, can be opened: itself, or a link in a folder of links to all
    /// that lies beside the file, so that it finds what it refers to. `file` where there is none.
    QString openable(const QString& file);

private:
    QString linkTo(const QByteArray& file);

    QList<QByteArray> m_arguments;
    QString m_folder;
    int m_count = 0;
};

} // namespace znimport
