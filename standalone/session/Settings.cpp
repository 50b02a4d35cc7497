#include "standalone/session/Settings.h"

#include "standalone/session/SettingRows.h"

#include <QFile>
#include <QFileInfo>

#include <cmath>

namespace zn
{

namespace
{

std::optional<bool> toSwitch(const QString& text)
{
    const QString word = text.toLower();
    if (word == QLatin1String("on") || word == QLatin1String("true") || word == QLatin1String("yes") ||
        word == QLatin1String("1"))
        return true;
    if (word == QLatin1String("off") || word == QLatin1String("false") || word == QLatin1String("no") ||
        word == QLatin1String("0"))
        return false;
    return std::nullopt;
}

QString numbersText(const SettingRow& row)
{
    const QString range = row.type == SettingType::Integer ? Settings::tr("a whole number from %1 to %2")
                                                           : Settings::tr("a number from %1 to %2");
    const QString unit = row.unit.isEmpty() ? QString() : QLatin1Char(' ') + row.unit;
    return range.arg(row.least).arg(row.most) + unit;
}

/// What the values of a setting are.
QString rangeText(const SettingRow& row)
{
    switch (row.type) {
    case SettingType::Switch:
        return Settings::tr("on or off");
    case SettingType::Choice:
        return row.choices.join(Settings::tr(" or "));
    case SettingType::Text:
        return Settings::tr("a text");
    case SettingType::Integer:
    case SettingType::Number:
        break;
    }
    return numbersText(row);
}

bool isNumber(const SettingRow& row, const QString& text)
{
    bool ok = false;
    const double value = row.type == SettingType::Integer ? text.toInt(&ok) : text.toDouble(&ok);
    return ok && std::isfinite(value) && value >= row.least && value <= row.most;
}

bool isValue(const SettingRow& row, const QString& text)
{
    switch (row.type) {
    case SettingType::Switch:
        return toSwitch(text).has_value();
    case SettingType::Choice:
        return row.choices.contains(text);
    case SettingType::Text:
        return true;
    case SettingType::Integer:
    case SettingType::Number:
        break;
    }
    return isNumber(row, text);
}

} // namespace

Settings::Settings() : m_rows(settingRows())
{
    for (const SettingRow& row : m_rows)
        m_values[row.name] = row.defaultText;
}

const SettingRow* Settings::find(const QString& name) const
{
    for (const SettingRow& row : m_rows)
        if (row.name == name)
            return &row;
    return nullptr;
}

std::optional<QString> Settings::set(const QString& name, const QString& text)
{
    const SettingRow* row = find(name);
    if (!row)
        return tr("there is no setting '%1'; --help-settings lists them").arg(name);
    const QString value = row->type == SettingType::Text ? text : text.trimmed().toLower();
    if (!isValue(*row, value))
        return tr("setting '%1' wants %2, not '%3'").arg(name, rangeText(*row), text);
    m_values[name] = value;
    return std::nullopt;
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
    const auto before = m_values;
    for (int number = 1; !file.atEnd(); ++number) {
        // A NUL would end the text: it is shown as what it is, no letter.
        const QString line = QString::fromUtf8(file.readLine().replace('\0', "\xEF\xBF\xBD")).trimmed();
        if (line.isEmpty() || line.startsWith(QLatin1Char('#')))
            continue;
        const int equals = line.indexOf(QLatin1Char('='));
        const std::optional<QString> error = equals < 0
                                                 ? tr("a line is 'name = value'")
                                                 : set(line.left(equals).trimmed(), line.mid(equals + 1).trimmed());
        if (error) {
            m_values = before;
            return QStringLiteral("%1:%2: %3").arg(path, QString::number(number), *error);
        }
    }
    return std::nullopt;
}

bool Settings::isOn(const QString& name) const
{
    return toSwitch(m_values.at(name)).value();
}

bool Settings::isOn(const QString& name, bool otherwise) const
{
    return find(name) ? isOn(name) : otherwise;
}

int Settings::integer(const QString& name) const
{
    return m_values.at(name).toInt();
}

double Settings::number(const QString& name) const
{
    return m_values.at(name).toDouble();
}

QString Settings::text(const QString& name) const
{
    return m_values.at(name);
}

QString Settings::helpText() const
{
    QString result;
    for (const SettingRow& row : m_rows)
        result +=
            tr("%1\n    %2\n    %3; default: %4\n")
                .arg(row.name, row.help, rangeText(row), row.defaultText.isEmpty() ? tr("empty") : row.defaultText);
    return result;
}

} // namespace zn
