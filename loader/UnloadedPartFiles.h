#pragma once

#include "loader/UnloadedParts.h"

#include <QString>

/// What the jobs that bring in part files have in common.
namespace parts
{

/// Whether the part files of the CAD file `originalFile` are to be taken in one by one: it may refer to any, at least
/// two processes are allowed, and its format's referenced files are wanted.
bool wantsPartFiles(const QString& originalFile);

/// The part files that the tree at `root` still waits for: those of its empty references, `root` left out.
UnloadedParts unloadedPartsOf(const osg::NodePtr& root);

} // namespace parts
