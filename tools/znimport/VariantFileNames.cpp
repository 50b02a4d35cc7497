#include "tools/znimport/VariantFileNames.h"

#include <QSet>

namespace znimport
{

namespace
{

/// Leaves room for a number and an ending in 255 bytes of UTF-8.
constexpr int longestFileName = 60;

QString fileName(const QString& setName)
{
    QString name = setName.left(longestFileName);
    for (QChar& letter : name)
        if (!letter.isPrint() || QStringLiteral("/\\:*?\"<>|").contains(letter))
            letter = QLatin1Char('_');
    if (name.startsWith(QLatin1Char('.')))
        name[0] = QLatin1Char('_');
    return name;
}

} // namespace

QStringList variantFileNames(const QStringList& setNames)
{
    QStringList files;
    QSet<QString> taken;
    for (const QString& setName : setNames) {
        const QString plain = fileName(setName);
        QString name = plain;
        for (int number = 2; taken.contains(name.toCaseFolded()); ++number)
            name = QStringLiteral("%1 %2").arg(plain).arg(number);
        taken.insert(name.toCaseFolded());
        files << name;
    }
    return files;
}

} // namespace znimport
