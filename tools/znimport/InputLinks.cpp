#include "tools/znimport/InputLinks.h"

#include <QDir>
#include <QFile>

#include <cstdlib>
#include <dirent.h>
#include <memory>
#include <unistd.h>

namespace znimport
{

namespace
{

/// Of these many files beside an input there are links.
constexpr int mostNeighbours = 10'000;

QString asText(const QByteArray& name)
{
    return QFile::decodeName(name).replace(QChar(QChar::ReplacementCharacter), QLatin1Char('_'));
}

/// Absolute and without links; empty when there is no such folder.
QByteArray realFolder(const QByteArray& folder)
{
    const std::unique_ptr<char, void (*)(void*)> path(::realpath(folder.constData(), nullptr), std::free);
    return path ? QByteArray(path.get()) : QByteArray();
}

/// False when the name is taken.
bool link(const QByteArray& folder, const QByteArray& name, const QString& links)
{
    const QByteArray target = folder + '/' + name;
    return ::symlink(target.constData(), QFile::encodeName(links + QLatin1Char('/') + asText(name)).constData()) == 0;
}

void linkNeighbours(const QByteArray& folder, const QString& links)
{
    const std::unique_ptr<DIR, int (*)(DIR*)> entries(::opendir(folder.constData()), ::closedir);
    int count = 0;
    while (const dirent* entry = entries ? ::readdir(entries.get()) : nullptr)
        if (entry->d_name[0] != '.' && ++count <= mostNeighbours)
            link(folder, entry->d_name, links);
}

} // namespace

InputLinks::InputLinks(QList<QByteArray> arguments, QString folder)
    : m_arguments(std::move(arguments)), m_folder(std::move(folder))
{
}

QString InputLinks::openable(const QString& file)
{
    if (!file.contains(QChar::ReplacementCharacter) || QFile::exists(file))
        return file;
    for (const QByteArray& argument : m_arguments)
        if (QFile::decodeName(argument) == file && ::access(argument.constData(), F_OK) == 0)
            if (const QString path = linkTo(argument); !path.isEmpty())
                return path;
    return file;
}

QString InputLinks::linkTo(const QByteArray& file)
{
    const int slash = file.lastIndexOf('/');
    const QByteArray folder = realFolder(slash < 0 ? QByteArray(".") : file.left(slash + 1));
    const QByteArray name = file.mid(slash + 1);
    const QString links = m_folder + QStringLiteral("/names-%1").arg(m_count++);
    if (folder.isEmpty() || !QDir().mkdir(links) || !link(folder, name, links))
        return {};
    linkNeighbours(folder, links);
    return links + QLatin1Char('/') + asText(name);
}

} // namespace znimport
