// A host that converts a CAD file, follows the progress and walks the tree that comes of it.
#include "host/OSGSystem/Names.h"
#include "host/OSGSystem/TreeFunctions.h"
#include "host/znJobProcessing/znJobQueue.h"
#include "loader/znPtxLoaderJob.h"
#include "standalone/startup/StandaloneSession.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QTextStream>

static void printTree(const osg::NodePtr& root)
{
    QTextStream out(stdout);
    osg::traverse(root, [&out](const osg::NodePtr& node) {
        const char* name = osg::getName(node);
        out << (name ? QString::fromUtf8(name) : QStringLiteral("(no name)")) << ", " << node->getNChildren()
            << " children\n";
        return osg::Action::Continue;
    });
}

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    zn::StandaloneSession session;
    const QString file = QFileInfo(QCoreApplication::arguments().value(1)).absoluteFilePath();

    znJobQueue queue;
    queue.setDeleteFinishedOrFailedJobs(true);
    auto* converter = new znPtxConverterJob(file, QString(), &queue);
    QObject::connect(converter, &znAbstractJob::progressChanged, [](unsigned percent, const QString& stage) {
        qInfo("%3u %% %s", percent, qUtf8Printable(stage));
    });
    QObject::connect(converter, &znPtxConverterJob::outputFileReady, [&](const QString& converted) {
        auto* loader = new znPtxLoaderJob(converted, file);
        QObject::connect(loader, &znAbstractJob::finished, [loader] { printTree(loader->getLoadedNode()); });
        queue.addJob(loader);
    });
    QObject::connect(converter, &znAbstractJob::finished, [converter](znCADFileTypes::JobState state) {
        if (state != znCADFileTypes::JobFailed)
            return;
        qWarning("%s", qUtf8Printable(converter->getErrorText()));
        QCoreApplication::exit(1);
    });
    QObject::connect(&queue, &znJobQueue::jobQueueEmpty, &application, &QCoreApplication::quit);
    queue.addJob(converter);
    queue.startProcessing();
    return QCoreApplication::exec();
}
