#pragma once

#include <QString>

namespace zn
{

/// What an import is asked for.
struct ImportRequest {
    QString file; ///< the path of what is to be imported
    /// Whether the result tells the steps of the optimisation; the tree is counted at each of them.
    bool recordsSteps = false;
};

} // namespace zn
