#pragma once

#include <QCoreApplication>
#include <QString>
#include <QStringList>

#include <map>
#include <optional>
#include <vector>

namespace zn
{

enum class SettingType { Switch, Integer, Number, Choice, Text };

/// One setting of the open host.
struct SettingRow {
    QString name;
    SettingType type = SettingType::Text;
    QString unit; ///< empty for a number without one
    double least = 0;
    double most = 0;
    QString defaultText;
    QString help;
    QStringList choices = {}; ///< the values of a choice, in lower case
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

    const std::vector<SettingRow>& rows() const { return m_rows; }

    /// Sets a value from its text; words and choices in any case of letters. Gives a sentence that names the setting, the text and what would be right when the
    /// name is unknown or the text is none of its values; the old value stays then.
    std::optional<QString> set(const QString& name, const QString& text);

    /// Sets what the lines `name = value` of a UTF-8 file say; "#" begins a comment line. Gives a sentence that names
    /// file and line at the first one that is wrong, and changes nothing then.
    std::optional<QString> load(const QString& path);

    // The value of a setting of that type. The name must be in the table.
    bool isOn(const QString& name) const;
    /// `otherwise` when there is no such setting.
    bool isOn(const QString& name, bool otherwise) const;
    int integer(const QString& name) const;
    double number(const QString& name) const;
    QString text(const QString& name) const;

    /// All rows for a person: name, type, unit, range, default and help.
    QString helpText() const;

private:
    const SettingRow* find(const QString& name) const;

    std::vector<SettingRow> m_rows;
    std::map<QString, QString> m_values;
};

} // namespace zn
