#include "standalone/session/Settings.h"

#include "standalone/session/SettingRows.h"

#include <QFile>

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

QString rangeText(const SettingRow& row)
{
    switch (row.type) {
    case SettingType::Switch:
        return QStringLiteral("on or off");
    case SettingType::Text:
        return QStringLiteral("a text");
    case SettingType::Integer:
    case SettingType::Number:
        break;
    }
    const QString kind =
        row.type == SettingType::Integer ? QStringLiteral("a whole number") : QStringLiteral("a number");
    const QString unit = row.unit.isEmpty() ? QString() : QStringLiteral(" ") + row.unit;
    return QStringLiteral("%1 from %2 to %3%4").arg(kind).arg(row.least).arg(row.most).arg(unit);
}

bool isValue(const SettingRow& row, const QString& text)
{
    bool ok = false;
    double value = 0;
    switch (row.type) {
    case SettingType::Switch:
        return toSwitch(text).has_value();
    case SettingType::Text:
        return true;
    case SettingType::Integer:
        value = text.toInt(&ok);
        break;
    case SettingType::Number:
        value = text.toDouble(&ok);
        break;
    }
    return ok && std::isfinite(value) && value >= row.least && value <= row.most;
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
        return QStringLiteral("there is no setting '%1'; --help-settings lists them").arg(name);
    const QString value = row->type == SettingType::Text ? text : text.trimmed();
    if (!isValue(*row, value))
        return QStringLiteral("setting '%1' wants %2, not '%3'").arg(name, rangeText(*row), text);
    m_values[name] = value;
    return std::nullopt;
}

std::optional<QString> Settings::load(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return QStringLiteral("%1: %2").arg(path, file.errorString());
    const auto before = m_values;
    for (int number = 1; !file.atEnd(); ++number) {
        const QString line = QString::fromUtf8(file.readLine()).trimmed();
        if (line.isEmpty() || line.startsWith(QLatin1Char('#')))
            continue;
        const int equals = line.indexOf(QLatin1Char('='));
        const std::optional<QString> error = equals < 0
                                                 ? QStringLiteral("a line is 'name = value'")
                                                 : set(line.left(equals).trimmed(), line.mid(equals + 1).trimmed());
        if (error) {
            m_values = before;
            return QStringLiteral("%1:%2: %3").arg(path).arg(number).arg(*error);
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
        result += QStringLiteral("%1\n    %2\n    %3; default: %4\n")
                      .arg(row.name, row.help, rangeText(row),
                           row.defaultText.isEmpty() ? QStringLiteral("empty") : row.defaultText);
    return result;
}

} // namespace zn
