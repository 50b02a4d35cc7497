#pragma once

#include "tests/house/SourceTree.h"

namespace house
{

/// The include lines that point the wrong way.
///
/// `protocol/` and `import/filetypes/` are leaves for everyone. The contract (`host/`) knows only itself and these.
/// Library and scene stand on the contract; files, geometry and pictures on the scene; the open host's modules on all
/// of these but the library, and only its start knows all modules. The converter sees the scene and the files, never a
/// host. What lists readers stands above them. The importer sees all but the converter's insides, the tools what they
/// need; of the importer the converter sees what reads product structures, which knows no host either. `cad/xml` needs
/// TinyXML and the standard library alone. Library and contract include no header that one operating system alone has,
/// but in one file. Nobody but tests and benches includes from `tests/` or `bench/`.
std::vector<Finding> brokenLayers(const std::vector<SourceFile>& files);

} // namespace house
