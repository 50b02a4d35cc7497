#pragma once

#include "host/OSGSystem/Node.h"
#include "host/znJobProcessing/znAbstractProcessingJob.h"
#include "import/ImportExport.h"

#include <QString>

#include <functional>

class zndPtxSettings;

/// The last job of an import: cleans a loaded tree, hangs it into the scene, turns its bookmarks into variants and does
/// what needs the tree in the scene (material assets, centring, environment, references).
///
/// The state ends as 0, or as 1 when the tree is none that a converter or a product structure gave; it is not touched
/// then. An exception of a step passes through `process`: nothing is undone, and no end is announced by the job itself.
/// The job holds a reference on tree and parent as long as it lives.
class ZN_IMPORT_EXPORT znPtxTreeOptimizationJob : public znAbstractProcessingJob
{
    Q_OBJECT

public:
    /// A tree that the host recognises as converted is accepted under any name, and goes by the name in its file info.
    /// @param fileName the imported file
    /// @param parent where the tree is wanted; null, locked nodes, asset roots and drawables give way to the scene root
    znPtxTreeOptimizationJob(const QString& fileName, const osg::NodePtr& root, const osg::NodePtr& parent);
    ~znPtxTreeOptimizationJob() override;

    /// Whether materials of the scene take the places of equal ones in the tree; false at first. Counts when the job
    /// runs.
    void setMergeMaterials(bool mergeMaterials) { m_mergeMaterials = mergeMaterials; }
    /// What setMergeMaterials() was told last.
    bool getMergeMaterials() const { return m_mergeMaterials; }

    /// `listener` is told the name of each step before it begins, and null behind the last one.
    void setStepListener(std::function<void(const char* step)> listener) { m_stepListener = std::move(listener); }

protected:
    /// Runs the steps, one after the other.
    void process() override;

private:
    /// Tells the listener that the next step begins.
    void beginStep(const char* name) const;

    void reduceMaterials(const osg::NodePtr& root, const zndPtxSettings& settings) const;
    void prepareSurfaces(const osg::NodePtr& root, bool useGsk) const;
    void cleanConvertedTree(const osg::NodePtr& root, const zndPtxSettings& settings, bool useGsk) const;
    void removeOrigins(const osg::NodePtr& root) const;
    void insertIntoScene(const osg::NodePtr& root) const;
    void takeUpMaterialsAndBookmarks(osg::NodePtr root) const;
    void unshareNodes(const osg::NodePtr& root, const zndPtxSettings& settings) const;
    void applySceneSettings(const osg::NodePtr& root) const;

    osg::NodePtr decideParent() const;

    QString m_fileName;
    osg::RefPtr<osg::NodePtr> m_root;
    osg::RefPtr<osg::NodePtr> m_parent;
    bool m_canProcess = false;
    bool m_addAmbientOcclusion = true;
    bool m_updateMaterials = true;
    bool m_convertBookmarks = true;
    bool m_flushGeometryScales = true;
    bool m_mergeMaterials = false;
    std::function<void(const char* step)> m_stepListener;
};
