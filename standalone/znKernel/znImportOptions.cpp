#include "host/znKernel/znImportOptions.h"

#include "standalone/session/Session.h"
#include "standalone/znUtils/CallTrace.h"

namespace
{

/// Part files are wanted of a format that has no setting for them.
bool areReferencedFilesWanted(const std::string& formatName)
{
    for (int type = 0; type <= znCADFileTypes::Unsupported; ++type) {
        const auto fileType = static_cast<znCADFileTypes::FileType>(type);
        if (formatName != znCADFileTypes::fileTypeName(fileType))
            continue;
        const auto* setting = zn::Session::require().settings().formats.referencedFiles(fileType);
        return !setting || setting->value();
    }
    return true;
}

} // namespace

znImportOptions::znImportOptions(const std::string& formatName, bool interactive, bool useStored)
    : m_importReferencedFiles(areReferencedFilesWanted(formatName))
{
    const zn::TracedCall call("znImportOptions", formatName, interactive, useStored);
}

znImportOptions::~znImportOptions() = default;
