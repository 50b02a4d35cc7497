#pragma once

#include <QString>
#include <QStringList>

namespace zn
{

/// What an import is asked for.
struct ImportRequest {
    QString file; ///< the path of what is to be imported
    /// Whether the result tells the steps of the optimisation; the tree is counted at each of them.
    bool recordsSteps = false;
    /// For parts of a PLMXML document with files of several formats: which to take, the best first. Names such as "jt"
    /// and "step", or extensions.
    QStringList preferredFormats = {};
    /// Where to write what the loader was given for a PLMXML document; nowhere when it is empty.
    QString keepNormalised = {};
    /// Whether the result tells the structure of every PLMXML document; otherwise only of those that are read in
    /// another form than they stand, or show nothing.
    bool wantsStructure = false;
};

} // namespace zn
