#pragma once

#include <QCoreApplication>
#include <QString>
#include <QStringList>

#include <map>
#include <optional>
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

/// One setting of the open host.
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

/// The settings of one session: a table of rows, each with a value of its own. Help, settings files and command lines
/// follow from the table.
class Settings
{
    Q_DECLARE_TR_FUNCTIONS(zn::Settings)

public:
    /// A settings file may be this long, in bytes.
    static constexpr qint64 MaxFileSize = 1 << 20;

    /// All values are the defaults.
    Settings();

    /// The table; it never changes.
    const std::vector<SettingRow>& rows() const { return m_rows; }

    /// Sets a value from its text; words and choices in any case of letters. Gives a sentence that names the setting, the text and what would be right when the
    /// name is unknown or the text is none of its values; the old value stays then.
    std::optional<QString> set(const QString& name, const QString& text);

    /// Sets what the lines `name = value` of a UTF-8 file say; "#" begins a comment line. Gives a sentence that names
    /// file and line at the first one that is wrong, and changes nothing then.
    std::optional<QString> load(const QString& path);

    /// The value of a switch. The name must be in the table.
    bool isOn(const QString& name) const;
    /// `otherwise` when there is no such setting.
    bool isOn(const QString& name, bool otherwise) const;
    ///@{
    /// The value of a setting of that type. The name must be in the table.
    int integer(const QString& name) const;
    double number(const QString& name) const;
    QString text(const QString& name) const;
    ///@}

    /// All rows for a person: name, type, unit, range, default and help.
    QString helpText() const;

private:
    const SettingRow* find(const QString& name) const;

    std::vector<SettingRow> m_rows;
    std::map<QString, QString> m_values;
};

} // namespace zn
