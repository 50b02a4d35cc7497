#include "host/znKernel/znImportOptions.h"

#include "standalone/session/Session.h"
#include "standalone/session/SettingRows.h"
#include "standalone/znUtils/CallTrace.h"

znImportOptions::znImportOptions(const std::string& formatName, bool interactive, bool useStored)
    : m_importReferencedFiles(
          zn::Session::require().settings().isOn(zn::referencedFilesSetting(QString::fromStdString(formatName)), true))
{
    const zn::TracedCall call("znImportOptions", formatName, interactive, useStored);
}

znImportOptions::~znImportOptions() = default;
