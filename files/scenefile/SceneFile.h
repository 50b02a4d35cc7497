#pragma once

/// The converted scene file (extension `osb`): one tree of nodes with everything that hangs on it.
///
/// Works without a session and without Qt Gui. Neither function throws; what goes wrong is told as a value. The layout
/// is in docs/scene-file-format.md.

#include "files/scenefile/ReadSceneFile.h"
#include "files/scenefile/WriteSceneFile.h"
