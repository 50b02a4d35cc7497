#pragma once

#include "standalone/session/Settings.h"

namespace zn
{

/// The one table of all settings of the open host.
std::vector<SettingRow> settingRows();

/// The setting that tells whether the part files of an assembly of this format are wanted.
QString referencedFilesSetting(const QString& formatName);

/// The settings that name a converter of its own for a format, and what it is given.
QString converterProgramSetting(const QString& formatName);
QString converterArgumentsSetting(const QString& formatName);

} // namespace zn
