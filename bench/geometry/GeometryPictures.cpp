// Pictures to look at: a scene as it was converted, meshed anew coarsely and finely, and with the ambient occlusion of
// its vertices in place of that of the picture.
//
//     zn_geometry_pictures SCENE.osb FOLDER      the scene comes from ptxconvert --set keep-brep=1

#include "files/scenefile/SceneFile.h"
#include "geometry/TessellationPresets.h"
#include "host/znOpenSGUtils/znNodeUtils.h"
#include "host/znTessellation/znRetessellation.h"
#include "render/Snapshot.h"
#include "standalone/startup/StandaloneSession.h"

#include <QCoreApplication>
#include <QDir>

#include <cstdio>

namespace
{

void draw(const osg::NodePtr& root, const QString& path, int ambientSamples)
{
    render::SnapshotOptions options;
    options.width = 900;
    options.height = 700;
    options.ambientSamples = ambientSamples;
    options.featureLines = ambientSamples > 0;
    const render::SnapshotError error = render::writeSnapshot(root, path, options);
    std::printf("%s %s\n", qPrintable(path), qPrintable(error.message));
}

void meshAnew(const osg::NodePtr& root, const geometry::TessellationPreset& preset)
{
    znRetessellation retessellation;
    retessellation.addNodes({root});
    retessellation.setupTessellation(preset.chordDeviation, preset.normalTolerance, preset.maxChordLength, false, 0);
    retessellation.applyTessellation();
    retessellation.rebuildSurfaces();
    retessellation.finalize();
}

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication application(argc, argv);
    if (argc != 3)
        return 2;
    zn::StandaloneSession session;
    const QDir folder(QString::fromLocal8Bit(argv[2]));
    const osg::RefPtr<osg::NodePtr> root(osg::scenefile::readSceneFile(QString::fromLocal8Bit(argv[1])).value());
    draw(root, folder.filePath(QStringLiteral("converted.png")), 18);
    for (const geometry::TessellationPreset& preset : geometry::tessellationPresets) {
        meshAnew(root, preset);
        draw(root, folder.filePath(QString::fromLatin1(preset.name.data()) + QStringLiteral(".png")), 18);
    }
    draw(root, folder.filePath(QStringLiteral("without-occlusion.png")), 0);
    znNodeUtils::addAmbientOcclusionData(root);
    draw(root, folder.filePath(QStringLiteral("with-occlusion.png")), 0);
    return 0;
}
