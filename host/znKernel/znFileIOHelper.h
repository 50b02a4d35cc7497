#pragma once

#include "host/HostExport.h"
#include "host/OSGSystem/Node.h"
#include "host/znKernelServices/zndPtxSettings.h"
#include "host/znKernelServices/zndSceneImportSettings.h"
#include "import/filetypes/znCADFileTypes.h"

#include <QString>

/// What the name of a file tells. Extensions are compared without their case; no file is opened.
class ZN_HOST_EXPORT znFileIOHelper
{
public:
    /// The format by the extension; `Undefined` for any other. "prt" counts as NX and "asm" as ProEngineer.
    static znCADFileTypes::FileType getFileTypeByFileName(const QString& path);
    /// Files of this extension may refer to part files.
    static bool isAssemblyFile(const QString& path);
    /// Files of this format can hold parts of their own beside references to part files.
    static bool canContainMixedAssemblies(const QString& path);
    ///@{
    /// The format by the extension is Stylar, or Mechanor.
    static bool isStylarFile(const QString& path);
    static bool isBrantelMechanorFile(const QString& path);
    ///@}
    /// The format goes through the external converter.
    static bool isPtxFile(const QString& path);
    /// The format by the extension is PLMXML.
    static bool isPLMXMLFile(const QString& path);
    /// The file that the file info of `node` names; empty without one.
    static QString getFileNameFromFileInfo(const osg::NodePtr& node);

    /// What the user wants done with the tree of this file.
    /// @param interactive whether the user may be asked first; the open host asks nobody
    static zndPtxSettings getImportSettingsByFileName(const QString& path, bool interactive);
    /// What the user wants of every import.
    static zndSceneImportSettings getGlobalSceneImportSettings();
};
