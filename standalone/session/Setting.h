#pragma once

#include <QString>
#include <QStringList>

#include <concepts>
#include <optional>
#include <type_traits>
#include <vector>

namespace zn
{

/// What values a setting takes.
enum class SettingType {
    Switch,  ///< on or off
    Integer, ///< a whole number in the range of the row
    Number,  ///< a number in the range of the row
    Choice,  ///< one of the words of the row
    Text     ///< any text
};

/// What a setting is: all that help, settings files and command lines need to know of it.
struct SettingRow {
    QString name;                         ///< as it stands in files and on command lines
    SettingType type = SettingType::Text; ///< what values it takes
    QString unit;                         ///< empty for a number without one
    double least = 0;                     ///< the smallest value of a number, itself included
    double most = 0;                      ///< the largest value of a number, itself included
    QString defaultText;                  ///< the value that it has at first, as a text
    QString help;                         ///< what it is for, for a person
    QStringList choices = {};             ///< the values of a choice, in lower case
};

/// What the values of a setting of this row are, for a person.
QString rangeText(const SettingRow& row);

class AnySetting;

/// Settings in the order in which they were made. Owns none of them.
using SettingList = std::vector<AnySetting*>;

/// A setting of any type: its row, and the value that it has at present.
class AnySetting
{
public:
    AnySetting(const AnySetting&) = delete;
    AnySetting& operator=(const AnySetting&) = delete;

    /// What the setting is; it never changes.
    const SettingRow& row() const { return m_row; }

    /// The value as a text that `setText` takes: "on" or "off" for a switch, words in lower case.
    const QString& text() const { return m_text; }

    /// Sets the value from its text; words in any case of letters. Gives a sentence that names the setting, the text
    /// and what would be right when the text is none of its values; the old value stays then.
    std::optional<QString> setText(const QString& text);

protected:
    /// Has the default. Joins `list`, which must live as long as the setting.
    AnySetting(SettingList& list, SettingRow row);
    ~AnySetting() = default;

private:
    SettingRow m_row;
    QString m_text;
};

/// The values that a number may have, the bounds included.
struct SettingRange {
    double least;          ///< itself included
    double most;           ///< itself included
    const char* unit = ""; ///< empty for a number without one
};

/// A setting with values of one type: bool for a switch, int and double for numbers, QString for a text or a word, and
/// an enumeration for a choice whose words stand in the order of the enumerators from 0.
///
/// Each constructor takes the name, the default and the help of the row.
template <class T>
class Setting : public AnySetting
{
public:
    ///@{
    /// Has the default `otherwise`. A choice takes all its words, the first of them as default where none is named.
    Setting(SettingList& list, const char* name, bool otherwise, const QString& help) requires std::same_as<T, bool>
        : AnySetting(list, {QString::fromUtf8(name), SettingType::Switch, {}, 0, 0, textOf(otherwise), help})
    {
    }

    Setting(SettingList& list, const char* name, const QString& otherwise,
            const QString& help) requires std::same_as<T, QString>
        : AnySetting(list, {QString::fromUtf8(name), SettingType::Text, {}, 0, 0, otherwise, help})
    {
    }

    Setting(SettingList& list, const char* name, T otherwise, const SettingRange& range,
            const QString& help) requires std::same_as<T, int> || std::same_as<T, double>
        : AnySetting(list, {QString::fromUtf8(name), std::same_as<T, int> ? SettingType::Integer : SettingType::Number,
                            QString::fromUtf8(range.unit), range.least, range.most, textOf(otherwise), help})
    {
    }

    Setting(SettingList& list, const char* name, T otherwise, const QStringList& words,
            const QString& help) requires std::is_enum_v<T> : AnySetting(list, {QString::fromUtf8(name),
                                                                                SettingType::Choice,
                                                                                {},
                                                                                0,
                                                                                0,
                                                                                words.at(static_cast<int>(otherwise)),
                                                                                help,
                                                                                words})
    {
    }

    Setting(SettingList& list, const char* name, const QStringList& words,
            const QString& help) requires std::same_as<T, QString>
        : AnySetting(list, {QString::fromUtf8(name), SettingType::Choice, {}, 0, 0, words.first(), help, words})
    {
    }
    ///@}

    ///@{
    /// What holds at present.
    T value() const
    {
        if constexpr (std::same_as<T, bool>)
            return text() == textOf(true);
        else if constexpr (std::same_as<T, int>)
            return text().toInt();
        else if constexpr (std::same_as<T, double>)
            return text().toDouble();
        else if constexpr (std::is_enum_v<T>)
            return static_cast<T>(row().choices.indexOf(text()));
        else
            return text();
    }
    operator T() const { return value(); }
    ///@}

    /// Sets the value. Gives a sentence when it is none of the values that the row allows; the old one stays then.
    std::optional<QString> set(const T& value)
    {
        if constexpr (std::is_enum_v<T>)
            return setText(row().choices.value(static_cast<int>(value)));
        else
            return setText(textOf(value));
    }

private:
    static QString textOf(const T& value)
    {
        if constexpr (std::same_as<T, bool>)
            return value ? QStringLiteral("on") : QStringLiteral("off");
        else if constexpr (std::same_as<T, QString>)
            return value;
        else
            return QString::number(value);
    }
};

} // namespace zn
