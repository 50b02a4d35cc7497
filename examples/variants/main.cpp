// Imports a file, lists its variant sets, and switches to each in turn. A file without sets is given
// one for each part of its top level, which hides that part. A second argument names a GLB file to write the scene to,
// with its sets; index.html beside this file switches them in a browser.
#include "files/glb/GlbWriter.h"
#include "host/OSGSystem/Names.h"
#include "host/OSGSystem/TreeFunctions.h"
#include "host/znVariants/znVariants.h"
#include "importer/Importer.h"
#include "standalone/loading/SceneExtras.h"
#include "standalone/startup/StandaloneSession.h"
#include "standalone/znVariants/VariantSets.h"

#include <QCoreApplication>
#include <QTextStream>

static osg::NodePtr topLevel(osg::NodePtr node)
{
    while (node->getNChildren() == 1)
        node = node->getChild(0);
    return node;
}

static void makeSets(const osg::NodePtr& root)
{
    const osg::NodePtr top = topLevel(root);
    for (unsigned shown = 0; shown < top->getNChildren(); ++shown) {
        const char* name = osg::getName(top->getChild(shown));
        znVariantSet* set = znVariants::createVariantSet(QStringLiteral("without %1").arg(name), false, nullptr);
        for (unsigned part = 0; set && part < top->getNChildren(); ++part)
            set->add(znVariants::createNodeVariant(top->getChild(part), false),
                     part == shown ? QStringLiteral("!Disable") : QStringLiteral("!Enable"));
    }
}

static int countActive(const osg::NodePtr& root)
{
    int nodes = 0;
    osg::traverse(root, [&nodes](const osg::NodePtr& node) {
        if (!node->isActive())
            return osg::Action::Skip;
        ++nodes;
        return osg::Action::Continue;
    });
    return nodes;
}

/// As the scene is at its first set, or as it came.
static int write(zn::StandaloneSession& session, const QString& file, QTextStream& out)
{
    const QStringList names = zn::variantSetNames(session);
    if (!names.isEmpty())
        zn::applyVariantSet(session, names.first());
    const zn::SceneWithExtras scene(session);
    const files::Result<files::glb::Written> written = files::glb::write(scene.root(), file);
    for (const files::Note& warning : written.warnings)
        out << warning.toString() << '\n';
    out << (written ? QStringLiteral("wrote %1 nodes").arg(written->nodes) : written.error().toString()) << '\n';
    return written ? 0 : 1;
}

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    zn::StandaloneSession session;
    zn::Importer importer(session);
    int exitCode = 0;
    QObject::connect(&importer, &zn::Importer::finished, [&](const zn::ImportResult& result) {
        QTextStream out(stdout);
        exitCode = result.node ? 0 : 1;
        if (!result.node)
            out << result.error << '\n';
        else if (zn::variantSetNames(session).isEmpty())
            makeSets(result.node);
        for (const QString& name : zn::variantSetNames(session)) {
            for (const QString& warning : zn::applyVariantSet(session, name).value_or(QStringList()))
                out << warning << '\n';
            out << name << ": " << countActive(session.sceneRoot()) << " nodes are shown\n";
        }
        if (const QString file = QCoreApplication::arguments().value(2); result.node && !file.isEmpty())
            exitCode = write(session, file, out);
        QCoreApplication::quit();
    });
    importer.import({QCoreApplication::arguments().value(1)});
    QCoreApplication::exec();
    return exitCode;
}
