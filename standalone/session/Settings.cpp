#include "standalone/session/Settings.h"

#include <QFile>
#include <QFileInfo>

#include <vector>

namespace zn
{

namespace
{

std::vector<QString> textsOf(const SettingList& settings)
{
    std::vector<QString> texts;
    for (const AnySetting* setting : settings)
        texts.push_back(setting->text());
    return texts;
}

void setTexts(const SettingList& settings, const std::vector<QString>& texts)
{
    for (std::size_t i = 0; i < settings.size(); ++i)
        settings[i]->setText(texts[i]);
}

} // namespace

AnySetting* Settings::find(const QString& name) const
{
    for (AnySetting* setting : m_all)
        if (setting->row().name == name)
            return setting;
    return nullptr;
}

std::optional<QString> Settings::set(const QString& name, const QString& text)
{
    AnySetting* const setting = find(name);
    return setting ? setting->setText(text) : tr("there is no setting '%1'; --help-settings lists them").arg(name);
}

std::optional<QString> Settings::setLine(const QString& line)
{
    const int equals = line.indexOf(QLatin1Char('='));
    if (equals < 0)
        return tr("a line is 'name = value'");
    return set(line.left(equals).trimmed(), line.mid(equals + 1).trimmed());
}

std::optional<QString> Settings::load(const QString& path)
{
    QFile file(path);
    if (QFileInfo::exists(path) && !QFileInfo(path).isFile())
        return tr("%1 is no file").arg(path);
    if (!file.open(QIODevice::ReadOnly))
        return QStringLiteral("%1: %2").arg(path, file.errorString());
    if (file.size() > MaxFileSize)
        return tr("%1 is longer than %2 bytes").arg(path, QString::number(MaxFileSize));
    const std::vector<QString> before = textsOf(m_all);
    for (int number = 1; !file.atEnd(); ++number) {
        // A NUL would end the text: it is shown as what it is, no letter.
        const QString line = QString::fromUtf8(file.readLine().replace('\0', "\xEF\xBF\xBD")).trimmed();
        if (line.isEmpty() || line.startsWith(QLatin1Char('#')))
            continue;
        if (const std::optional<QString> error = setLine(line)) {
            setTexts(m_all, before);
            return QStringLiteral("%1:%2: %3").arg(path, QString::number(number), *error);
        }
    }
    return std::nullopt;
}

QString Settings::helpText() const
{
    QString result;
    for (const AnySetting* setting : m_all) {
        const SettingRow& row = setting->row();
        result +=
            tr("%1\n    %2\n    %3; default: %4\n")
                .arg(row.name, row.help, rangeText(row), row.defaultText.isEmpty() ? tr("empty") : row.defaultText);
    }
    return result;
}

} // namespace zn
