#include "standalone/session/Setting.h"

#include "standalone/session/Settings.h"

#include <cmath>
#include <utility>

namespace zn
{

namespace
{

/// "on" or "off"; nothing for a text that means neither.
std::optional<QString> switchText(const QString& word)
{
    for (const char* on : {"on", "true", "yes", "1"})
        if (word == QLatin1String(on))
            return QStringLiteral("on");
    for (const char* off : {"off", "false", "no", "0"})
        if (word == QLatin1String(off))
            return QStringLiteral("off");
    return std::nullopt;
}

QString numbersText(const SettingRow& row)
{
    const QString range = row.type == SettingType::Integer ? Settings::tr("a whole number from %1 to %2")
                                                           : Settings::tr("a number from %1 to %2");
    const QString unit = row.unit.isEmpty() ? QString() : QLatin1Char(' ') + row.unit;
    return range.arg(row.least).arg(row.most) + unit;
}

bool isNumber(const SettingRow& row, const QString& text)
{
    bool ok = false;
    const double value = row.type == SettingType::Integer ? text.toInt(&ok) : text.toDouble(&ok);
    return ok && std::isfinite(value) && value >= row.least && value <= row.most;
}

/// The text of a value, written as settings keep it; nothing for a text that is no value.
std::optional<QString> valueText(const SettingRow& row, const QString& text)
{
    const QString word = text.trimmed().toLower();
    switch (row.type) {
    case SettingType::Text:
        return text;
    case SettingType::Switch:
        return switchText(word);
    case SettingType::Choice:
        return row.choices.contains(word) ? std::optional(word) : std::nullopt;
    case SettingType::Integer:
    case SettingType::Number:
        break;
    }
    return isNumber(row, word) ? std::optional(word) : std::nullopt;
}

} // namespace

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

AnySetting::AnySetting(SettingList& list, SettingRow row) : m_row(std::move(row)), m_text(m_row.defaultText)
{
    list.push_back(this);
}

std::optional<QString> AnySetting::setText(const QString& text)
{
    const std::optional<QString> value = valueText(m_row, text);
    if (!value)
        return Settings::tr("setting '%1' wants %2, not '%3'").arg(m_row.name, rangeText(m_row), text);
    m_text = *value;
    return std::nullopt;
}

} // namespace zn
