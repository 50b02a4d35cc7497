#pragma once

#include "host/HostExport.h"

#include <string>

/// The import options of one format, as they are set when the object is made.
class ZN_HOST_EXPORT znImportOptions
{
public:
    /// `formatName` is a name text of `znCADFileTypes::fileTypeName`; a name without options of its own has those that
    /// hold for every format. The two flags are part of the contract: the library always passes false and true.
    znImportOptions(const std::string& formatName, bool interactive, bool useStored);
    ~znImportOptions();

    /// Whether the part files of an assembly are wanted.
    bool getImportReferencedFiles() const { return m_importReferencedFiles; }

private:
    bool m_importReferencedFiles;
};
