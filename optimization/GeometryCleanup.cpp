#include "optimization/GeometryCleanup.h"

#include "host/OSGSystem/Cast.h"
#include "host/OSGSystem/Geometry.h"
#include "host/znOpenSGUtils/znNodeUtils.h"
#include "host/znOpenSGUtils/znOptimize.h"
#include "host/znTessellation/znRetessellation.h"

#include <vector>

namespace optimization
{

/// A flush may change the number of children.
void flushGeometryScales(const osg::NodePtr& root)
{
    struct Place {
        osg::NodePtr node;
        unsigned next = 0;
    };
    std::vector<Place> path{{root}};
    while (!path.empty()) {
        Place& place = path.back();
        if (place.next == 0 && osg::fcCast<osg::Geometry>(place.node->getCore())) {
            znOptimize::flushSelectedTransformationScales(place.node);
            path.pop_back();
        } else if (place.next < place.node->getNChildren()) {
            path.push_back({place.node->getChild(place.next++)});
        } else {
            path.pop_back();
        }
    }
}

void mergeGeometries(const osg::NodePtr& root, const zndPtxSettings& settings)
{
    znOptimize::cleanupGroupNodes(root);
    znOptimize::triangulate(root, false);
    znNodeUtils::verifyIndexMap(root);
    znOptimize::mergeGeometry(root);
    znRetessellation retessellation;
    znRetessellation::copySettings();
    retessellation.addNodes({root});
    const double stitchingTolerance = settings.getStitchingTolerance();
    const bool useStitching = settings.getUseStitching();
    const double maxChordLength = settings.getMaxChordLength();
    const double normalTolerance = settings.getNormalTolerance();
    const double chordDeviation = settings.getChordDeviation();
    retessellation.setupTessellation(chordDeviation, normalTolerance, maxChordLength, useStitching, stitchingTolerance);
    retessellation.applyTessellation();
    retessellation.rebuildSurfaces();
    retessellation.finalize();
}

} // namespace optimization
