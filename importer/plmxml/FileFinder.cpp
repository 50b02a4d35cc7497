#include "importer/plmxml/FileFinder.h"

#include <QFileInfo>
#include <QRegularExpression>

#include <cctype>

namespace importer::plmxml
{

namespace
{

/// A path of another system: on a drive or on a host of the network.
bool isForeign(const QString& path)
{
    static const QRegularExpression drive(QStringLiteral("^[A-Za-z]:/"));
    return path.startsWith(QLatin1String("//")) || drive.match(path).hasMatch();
}

/// A percent sign without two hexadecimal digits behind it stands for itself.
QByteArray withoutEscapes(const QByteArray& text)
{
    QByteArray plain;
    for (int i = 0; i < text.size(); ++i) {
        bool isByte = false;
        const int byte = text[i] == '%' ? text.mid(i + 1, 2).toInt(&isByte, 16) : 0;
        isByte = isByte && i + 2 < text.size() && std::isxdigit(static_cast<unsigned char>(text[i + 1]));
        plain.append(isByte ? static_cast<char>(byte) : text[i]);
        i += isByte ? 2 : 0;
    }
    return plain;
}

QString withoutScheme(QString text)
{
    if (!text.startsWith(QLatin1String("file:"), Qt::CaseInsensitive))
        return text;
    text.remove(0, 5);
    if (text.startsWith(QLatin1String("///")))
        text.remove(0, 2);
    else if (text.startsWith(QLatin1String("//localhost/")))
        text.remove(0, 11);
    static const QRegularExpression slashDrive(QStringLiteral("^/[A-Za-z]:/"));
    return slashDrive.match(text).hasMatch() ? text.mid(1) : text;
}

} // namespace

QString cleanLocation(const QString& location)
{
    QString path = QString::fromUtf8(withoutEscapes(location.trimmed().toUtf8()));
    path.replace(QLatin1Char('\\'), QLatin1Char('/'));
    path = withoutScheme(path);
    if (path.isEmpty() || path.contains(QChar(0)))
        return {};
    // Qt makes one slash of the two that a host's name stands behind.
    const bool isHost = path.startsWith(QLatin1String("//"));
    path = QDir::cleanPath(path);
    return isHost && !path.startsWith(QLatin1String("//")) ? QLatin1Char('/') + path : path;
}

QString withoutClosedMark(const QString& path)
{
    const QLatin1String mark(ClosedMark);
    return path.endsWith(mark) ? path.chopped(mark.size()) : path;
}

FileFinder::FileFinder(const QString& document, const QStringList& searchPaths, files::DocumentRules rules)
    : m_folder(QFileInfo(document).absoluteDir()), m_ownFolder(QFileInfo(document).completeBaseName()),
      m_rules(std::move(rules))
{
    for (const QString& path : searchPaths)
        if (const QString clean = cleanLocation(path); !clean.isEmpty() && !isForeign(clean))
            m_searchPaths.append(QDir::cleanPath(m_folder.absoluteFilePath(clean)));
}

FoundFile FileFinder::find(const QString& location)
{
    const QString name = QFileInfo(location).fileName();
    if (name.isEmpty())
        return {};
    if (isForeign(location)) {
        const FoundFile found = findName(name);
        return found.by == FoundBy::Nowhere ? nowhere(m_folder.absoluteFilePath(name)) : found;
    }
    const QString path = QDir::cleanPath(m_folder.absoluteFilePath(location));
    if (isTaken(path))
        return {path, FoundBy::Location, false};
    if (const QString other = inAnyCase(m_folder.absolutePath(), location); isTaken(other))
        return {other, FoundBy::LetterCase, false};
    for (const QString& folder : m_searchPaths)
        if (const QString other = inAnyCase(folder, location); isTaken(other))
            return {other, FoundBy::SearchPath, false};
    const FoundFile found = findName(name);
    return found.by == FoundBy::Nowhere ? nowhere(path) : found;
}

/// Nothing may open a pipe or a device because a document names it. Nobody opens a folder.
FoundFile FileFinder::nowhere(const QString& path) const
{
    if (!allows(path))
        return {path + QLatin1String(ClosedMark), FoundBy::Nowhere, false, true};
    FoundFile none{path, FoundBy::Nowhere, QFileInfo::exists(path)};
    while (QFileInfo::exists(none.path) && !QFileInfo(none.path).isDir())
        none.path += QStringLiteral("/refused");
    return none;
}

FoundFile FileFinder::findName(const QString& name)
{
    if (const QString path = inAnyCase(m_folder.absolutePath(), name); isTaken(path))
        return {path, FoundBy::BesideIt, false};
    if (const QString path = inAnyCase(m_folder.absoluteFilePath(m_ownFolder), name); isTaken(path))
        return {path, FoundBy::InItsFolder, false};
    for (const QString& folder : m_searchPaths)
        if (const QString path = inAnyCase(folder, name); isTaken(path))
            return {path, FoundBy::SearchPath, false};
    return {};
}

bool FileFinder::isTaken(const QString& path) const
{
    return !path.isEmpty() && allows(path) && QFileInfo(path).isFile();
}

/// The path of what `path`, relative to `folder`, stands for when letter case does not count; empty if there is none.
QString FileFinder::inAnyCase(const QString& folder, const QString& path)
{
    if (QDir::isAbsolutePath(path))
        return {};
    QString at = folder;
    for (const QString& step : path.split(QLatin1Char('/'), Qt::SkipEmptyParts)) {
        if (step == QLatin1String("..")) {
            at = QFileInfo(at).path();
            continue;
        }
        // Folders whose names may not be listed are passed like others.
        if (const QString exact = at + QLatin1Char('/') + step; QFileInfo::exists(exact)) {
            at = exact;
            continue;
        }
        const QHash<QString, QString>& entries = entriesOf(at);
        const auto found = entries.find(step.toLower());
        if (found == entries.end())
            return {};
        at += QLatin1Char('/') + found.value();
    }
    return at;
}

const QHash<QString, QString>& FileFinder::entriesOf(const QString& folder)
{
    const auto known = m_entries.find(folder);
    if (known != m_entries.end())
        return known.value();
    QHash<QString, QString> entries;
    const QDir::Filters all = QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot;
    for (const QString& name : QDir(folder).entryList(all, QDir::Name))
        if (const QString key = name.toLower(); !entries.contains(key))
            entries.insert(key, name);
    return m_entries.insert(folder, entries).value();
}

} // namespace importer::plmxml
