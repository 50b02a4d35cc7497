#pragma once

#include "tools/znimport/OutputFiles.h"

namespace znimport
{

/// Writes a GLB file of each variant set into the folder that the command line names for that: what the set shows, with
/// no word of variants, for viewers that know none. The scene looks afterwards as it did before. `write` writes the
/// scene as it is into a file.
WrittenOutputs writeVariantFiles(const CommandLine& line, zn::StandaloneSession& session,
                                 const std::function<WrittenOutputs(const QString& file)>& write);

} // namespace znimport
