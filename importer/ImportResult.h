#pragma once

#include "host/OSGSystem/Node.h"
#include "import/znCADFileTypes.h"
#include "importer/SceneText.h"

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

/// A step of the optimisation, and what the tree held before and after it.
struct znTreeStep {
    QString name;
    double seconds = 0; ///< without the counting
    znSceneCounts before;
    znSceneCounts after;
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
    bool recordsSteps = false;     ///< wanted by whoever began the import
    std::vector<znTreeStep> steps; ///< of the optimisation, those begun, in order; empty unless they are wanted
};

Q_DECLARE_METATYPE(znImportResult)
