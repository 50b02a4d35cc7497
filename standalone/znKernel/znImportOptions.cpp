#include "host/znKernel/znImportOptions.h"

#include "standalone/session/SettingRows.h"
#include "standalone/session/znStandaloneSession.h"

znImportOptions::znImportOptions(const std::string& formatName, bool, bool)
    : m_importReferencedFiles(znStandaloneSession::require().settings().isOn(
          zn::referencedFilesSetting(QString::fromStdString(formatName)), true))
{
}

znImportOptions::~znImportOptions() = default;
