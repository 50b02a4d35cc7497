#pragma once

#include <QString>

#include <functional>
#include <vector>

namespace znimport
{

/// One file of a folder that is imported as a whole.
struct BatchItem {
    QString input;  ///< path
    QString output; ///< of its GLB file
    QString name;   ///< relative to the folder
};

/// The files of a folder, and what lies beside them.
struct BatchPlan {
    std::vector<BatchItem> items; ///< by name
    int passedOver = 0;           ///< files of no format that is read
};

/// What is to be imported of `folder` and the folders below it, links to folders not followed, and where it goes in
/// `outputFolder`: under its name with the extension glb, and behind its own extension where two files of one folder
/// would meet. `isRead` tells of an extension, lower case, whether such files are imported.
BatchPlan planBatch(const QString& folder, const QString& outputFolder,
                    const std::function<bool(const QString&)>& isRead);

} // namespace znimport
