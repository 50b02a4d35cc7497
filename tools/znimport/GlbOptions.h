#pragma once

#include "files/glb/GlbWriter.h"
#include "standalone/startup/StandaloneSession.h"
#include "tools/znimport/CommandLine.h"

namespace znimport
{

/// What the command line and the settings ask of GLB files.
files::glb::WriteOptions glbOptions(const CommandLine& line, zn::StandaloneSession& session);

/// What is wrong with what the settings, to which the command line has been applied, ask of levels of detail.
std::optional<QString> levelComplaint(zn::StandaloneSession& session);

/// What is wrong with what the command line asks of GLB files. `writesGlb`: one is to be written.
std::optional<QString> glbComplaint(const CommandLine& line, bool writesGlb);

} // namespace znimport
