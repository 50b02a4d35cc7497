#pragma once

#include "files/SceneReader.h"
#include "ptx/core/Outcome.h"

#include <QString>

#include <functional>
#include <string>
#include <vector>

namespace ptx::conversion
{

/// As `files::SceneReaders::read`.
using TreeReader = std::function<files::ReadResult(const QString& path, const files::ReadOptions& options)>;

/// Reads a file of meshes on behalf of a host, within the limits and with the log of a conversion, and writes the tree
/// as it is to a scene file and what there is to tell to a `files::ReadReport` beside it. When the file has no tree
/// the report has the error.
///
/// `arguments` are as `hostRequestOf` takes them, with the words that `files::wordsOf` gives. The process locks itself
/// in first; `load` is called once after that, and may take code from the folder `readers`.
core::ExitCode readTree(const std::vector<std::string>& arguments,
                        const std::function<core::Outcome<TreeReader>()>& load, const std::string& readers);

} // namespace ptx::conversion
