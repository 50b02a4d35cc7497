#pragma once

#include "ptx/core/Outcome.h"
#include "ptx/readers/Module.h"
#include "tools/ptxconvert/documents/DocumentModule.h"
#include "tools/ptxconvert/meshes/MeshModule.h"

#include <string>

namespace ptxconvert
{

/// When the functions of a library are looked up, all that it uses included.
enum class Binding {
    AtFirstCall, ///< each by itself: most are never called
    AtOnce       ///< for a process whose copies call them
};

/// The reader in the library `name` ("ptxstep"), which is loaded at the first call and stays. It lies in a folder that
/// is found from where the program itself is. A library that is missing, cut short, cannot be loaded or is of another
/// build is a failure that names the file.
ptx::core::Outcome<const ptx::readers::Module*> loadReader(const std::string& name,
                                                           Binding binding = Binding::AtFirstCall);

/// The folder in which these libraries lie.
std::string readersFolder();

/// Whether `module` was built with this program; else a sentence.
ptx::core::Trouble checkBuild(const ptx::readers::Module& module);
ptx::core::Trouble checkBuild(const MeshModule& module);
ptx::core::Trouble checkBuild(const DocumentModule& module);

///@{
/// The readers for hosts, which are libraries as well: most conversions have no use for what these are linked with.
ptx::core::Outcome<const MeshModule*> loadMeshReader(Binding binding = Binding::AtFirstCall);
ptx::core::Outcome<const DocumentModule*> loadDocumentReader(Binding binding = Binding::AtFirstCall);
///@}

} // namespace ptxconvert
