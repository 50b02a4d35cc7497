#pragma once

#include "standalone/session/Setting.h"
#include "standalone/session/SettingGroups.h"

#include <QCoreApplication>
#include <QString>

#include <optional>

namespace zn
{

/// The settings of one session, read by their members: `settings.optimize.keepNurbs`. Help, settings files and command
/// lines go by the list of all of them, in the order of their declaration.
class Settings
{
    Q_DECLARE_TR_FUNCTIONS(zn::Settings)

    SettingList m_all; // ahead of the groups, which join it

public:
    /// A settings file may be this long, in bytes.
    static constexpr qint64 MaxFileSize = 1 << 20;

    /// All values are the defaults.
    Settings() = default;
    Settings(const Settings&) = delete;
    Settings& operator=(const Settings&) = delete;

    ///@{
    /// The settings whose names begin with this word.
    ProcessSettings processes{m_all};
    FileSettings files{m_all};
    ReadSettings read{m_all};
    ConvertSettings convert{m_all};
    MeshSettings mesh{m_all};
    ConverterSettings converter{m_all};
    LauncherSettings launcher{m_all};
    ClusterSettings cluster{m_all};
    OptimizeSettings optimize{m_all};
    ///@}
    ExportSettings exports{m_all};   ///< those whose names begin with "export"
    PictureSettings pictures{m_all}; ///< those whose names begin with "picture"
    ///@{
    /// The settings whose names begin with this word.
    TessellationSettings tessellation{m_all};
    SceneSettings scene{m_all};
    ///@}
    ImportSettings imports{m_all}; ///< those whose names begin with "import", but for `formats`
    AssetSettings assets{m_all};   ///< the settings whose names begin with this word
    FormatSettings formats{m_all}; ///< those of single formats, such as "import.Step.referencedFiles"

    /// All settings; the list never changes.
    const SettingList& all() const { return m_all; }

    /// Sets a value from its text; words and choices in any case of letters. Gives a sentence that names the setting,
    /// the text and what would be right when the name is unknown or the text is none of its values; the old value
    /// stays then.
    std::optional<QString> set(const QString& name, const QString& text);

    /// Sets what the lines `name = value` of a UTF-8 file say; "#" begins a comment line. Gives a sentence that names
    /// file and line at the first one that is wrong, and changes nothing then.
    std::optional<QString> load(const QString& path);

    /// All settings for a person: name, help, values and default.
    QString helpText() const;

private:
    AnySetting* find(const QString& name) const;
    std::optional<QString> setLine(const QString& line);
};

} // namespace zn
