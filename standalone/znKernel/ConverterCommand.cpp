#include "standalone/znKernel/ConverterCommand.h"

#include "protocol/Options.h"
#include "standalone/znUtils/InstalledProgram.h"

#include <QCryptographicHash>
#include <QFileInfo>
#include <QProcess>
#include <QRegularExpression>

#include <optional>

namespace zn::kernel
{

namespace
{

/// What the braces around `field` stand for; nothing if they mean nothing.
std::optional<QString> valueOf(const QString& field, const TemplateValues& values)
{
    if (field == QLatin1String("input"))
        return values.input;
    if (field == QLatin1String("output"))
        return values.output;
    const QString externalMark = QStringLiteral("external:");
    const QString inlinedMark = QStringLiteral("inlined:");
    if (field.startsWith(externalMark))
        return values.externalParts ? field.mid(externalMark.size()) : QString();
    if (field.startsWith(inlinedMark))
        return values.externalParts ? QString() : field.mid(inlinedMark.size());
    const QString choiceMark = QStringLiteral("oneof:");
    if (field.startsWith(choiceMark))
        return chosenWord(field.mid(choiceMark.size()).split(QLatin1Char(',')), values.output);
    const auto further = values.fields.constFind(field);
    return further == values.fields.constEnd() ? std::nullopt : std::optional<QString>(*further);
}

/// Goes through the word once, so that braces in the name of a file stay what they are.
QString filledWord(const QString& word, const TemplateValues& values)
{
    static const QRegularExpression braces(QStringLiteral("\\{([^{}]*)\\}"));
    QString filled;
    int end = 0;
    for (auto found = braces.globalMatch(word); found.hasNext();) {
        const QRegularExpressionMatch match = found.next();
        filled += word.mid(end, match.capturedStart() - end);
        filled += valueOf(match.captured(1), values).value_or(match.captured(0));
        end = match.capturedEnd();
    }
    return filled + word.mid(end);
}

} // namespace

QString joinCommand(const QStringList& words)
{
    QStringList quoted;
    for (QString word : words)
        quoted.append(QLatin1Char('"') + word.replace(QLatin1Char('"'), QStringLiteral("\"\"\"")) + QLatin1Char('"'));
    return quoted.join(QLatin1Char(' '));
}

QString chosenWord(const QStringList& words, const QString& key)
{
    return words.at(static_cast<int>(qHash(key) % static_cast<unsigned>(words.size())));
}

QStringList filledTemplate(const QString& argumentTemplate, const TemplateValues& values)
{
    QStringList words;
    for (const QString& word : QProcess::splitCommand(argumentTemplate))
        if (const QString filled = filledWord(word, values); !filled.isEmpty())
            words.append(filled);
    return words;
}

namespace
{

// File systems take names of 255 bytes, and marks, endings and the time of a kept log come to what is left.
constexpr int mostBytesOfName = 150;

QString shortened(QString name)
{
    while (name.toUtf8().size() > mostBytesOfName)
        name.chop(name.size() > 1 && name.at(name.size() - 1).isLowSurrogate() ? 2 : 1);
    return name;
}

} // namespace

QString convertedName(const QString& input)
{
    const QFileInfo info(input);
    const QByteArray path = info.absoluteFilePath().toUtf8();
    const QByteArray hash = QCryptographicHash::hash(path, QCryptographicHash::Sha1).toHex().left(10);
    return shortened(info.completeBaseName()) + QLatin1Char('-') + QString::fromLatin1(hash);
}

QString converterOption(const char* setting, int value)
{
    return QStringLiteral("%1=%2").arg(QLatin1String(setting)).arg(value);
}

QStringList sandboxWords(ConvertSettings::Sandbox sandbox)
{
    using Sandbox = ConvertSettings::Sandbox;
    if (sandbox == Sandbox::On)
        return {};
    return {QLatin1String(protocol::option::Sandbox),
            sandbox == Sandbox::Off ? QStringLiteral("off") : QStringLiteral("require")};
}

QString converterProgram(const QString& setting)
{
    return setting.isEmpty() ? zn::installedProgram(QStringLiteral("ptxconvert")) : setting;
}

} // namespace zn::kernel
