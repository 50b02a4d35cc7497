#pragma once

#include "host/OSGSystem/Node.h"
#include "import/znCADFileTypes.h"

#include <QMetaType>
#include <QString>
#include <QStringList>

#include <vector>

/// A part file that did not come in.
struct znMissingPart {
    QString file;
    QString reason;
    /// The places that it belongs to, each as the names from the top of the tree down; empty where they are not known.
    QStringList instances;
};

/// What became of one file.
struct znImportResult {
    QString file;
    znCADFileTypes::JobState state = znCADFileTypes::JobFailed; ///< succeeded, partial or failed
    osg::RefPtr<osg::NodePtr> node;                             ///< in the scene; null after a failure
    QString error;                                              ///< why it failed; empty otherwise
    QStringList messages;                                       ///< what the log said meanwhile
    std::vector<znMissingPart> missing;
    bool cancelled = false;
};

Q_DECLARE_METATYPE(znImportResult)
