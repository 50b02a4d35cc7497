#pragma once

#include <QString>

#include <functional>
#include <string>

namespace conversion
{

/// Starts the tool that brings an old Stylar file up to date, in a process of its own.
///
/// When the tool has ended, however it ended, `ended` is called once with the path of the updated file, or with an
/// empty text when the tool left none.
void startLegacyUpdate(const QString& inputFile, const QString& outputDir,
                       std::function<void(const std::string& updatedFile)> ended);

} // namespace conversion
