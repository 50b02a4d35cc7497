#include "files/OutputSet.h"

#include "files/Text.h"

#include <QFileInfo>

#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstring>

namespace files
{

namespace
{

/// Under a second name where the file system has those, so that the first one leads to something all the time.
bool giveName(const QString& file, const QString& other)
{
    const QByteArray from = QFile::encodeName(file), to = QFile::encodeName(other);
    return ::link(from.constData(), to.constData()) == 0 ||
           (errno != EEXIST && std::rename(from.constData(), to.constData()) == 0);
}

} // namespace

OutputFile& OutputSet::add(const QString& target)
{
    return *m_files.emplace_back(std::make_unique<OutputFile>(target));
}

Expected<OutputSet::Kept> OutputSet::keep(const QString& target)
{
    if (!QFileInfo(target).isFile())
        return Kept{target, {}};
    for (int attempt = 0; attempt < 100; ++attempt) {
        const QString path = OutputFile::unfinishedPath(target) + QStringLiteral(".%1.before").arg(attempt);
        if (!QFileInfo::exists(path) && giveName(target, path))
            return Kept{target, path};
    }
    return Error{
        {tr("the file that is there cannot be kept: %1").arg(QString::fromLocal8Bit(std::strerror(errno))), target, {}},
        ErrorCode::CannotCreate};
}

void OutputSet::takeBack(const std::vector<Kept>& kept)
{
    for (const Kept& file : kept) {
        if (file.path.isEmpty()) {
            QFile::remove(file.target);
            continue;
        }
        std::rename(QFile::encodeName(file.path).constData(), QFile::encodeName(file.target).constData());
        QFile::remove(file.path); // still there when both were names of one file
    }
}

Expected<void> OutputSet::commit()
{
    for (const auto& file : m_files)
        if (const Expected<void> complete = file->complete(); !complete)
            return complete.error();
    if (m_files.size() == 1)
        return m_files.front()->commit();
    std::vector<Kept> kept;
    for (const auto& file : m_files) {
        Expected<Kept> before = keep(file->target());
        const Expected<void> done = before ? file->commit() : Expected<void>(before.error());
        if (!done) {
            // The name of a file that could not take it is none of ours.
            if (before && !before.value().path.isEmpty())
                kept.push_back(before.value());
            takeBack(kept);
            return done.error();
        }
        kept.push_back(before.value());
    }
    for (const Kept& file : kept)
        if (!file.path.isEmpty())
            QFile::remove(file.path);
    return {};
}

} // namespace files
