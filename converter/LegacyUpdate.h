#pragma once

#include <QString>

#include <functional>
#include <string>

class znProcessJob;

namespace conversion
{

/// Starts the tool that brings an old Stylar file up to date, in a process of its own that works for `job`.
///
/// When the tool has ended, however it ended, `ended` is called once with the path of the updated file, or with an
/// empty text when the tool left none.
void startLegacyUpdate(znProcessJob& job, const QString& inputFile, const QString& outputDir,
                       std::function<void(const std::string& updatedFile)> ended);

} // namespace conversion
