#pragma once

#include "host/HostExport.h"
#include "host/OSGSystem/Node.h"

#include <QString>

#include <string>
#include <utility>

/// What the host knows of the external converter: its command lines and the words for its failures. Paths are UTF-8.
class ZN_HOST_EXPORT znPtxHelper
{
public:
    /// The exit code that stands for a converter that could not be started.
    static constexpr int CouldNotStart = 127;

    /// The command line that converts `input`, quoted for `QProcess::splitCommand`, and the path of the file that it
    /// will write into `outputDir`. With `externalParts` the parts in other files stay references.
    ///
    /// The open host takes a name that no other job has, here or in another process, and makes the empty progress file
    /// (".tmp") beside the output as its mark. Whoever removes that gives the name back.
    static std::pair<std::string, std::string> createProcessCommand(const std::string& input, bool externalParts,
                                                                    const std::string& outputDir);

    /// The command line that brings an old Stylar file up to date; `convertedFile` becomes the path that it will write
    /// in `outputDir`. Both are empty when the host has no such tool.
    static std::string createStylarConvertCommand(const std::string& input, std::string& convertedFile,
                                                  const std::string& outputDir);

    /// What `exitCode` of the converter means, for the user, with the last error of `logFile` if there is one. The open
    /// host names the log as well, unless it goes with the session.
    static QString getProcessErrorDescription(int exitCode, const std::string& logFile);

    /// Whether `root` is the root of a tree that a converter made, and was not yet taken for an imported one.
    static bool isConvertedPtxTree(const osg::NodePtr& root);
    /// Takes away what marks `root` as the root of such a tree; what the converter says of the file stays.
    static void removePtxTag(const osg::NodePtr& root);
};
