// Loads an outline through a job of the library and prints the names that came in.
#include "host/OSGSystem/Names.h"
#include "host/OSGSystem/TreeFunctions.h"
#include "host/znJobProcessing/znJobQueue.h"
#include "host/znKernel/znScenegraph.h"
#include "host/znKernel/znTypeConverter.h"
#include "import/znFileLoaderJob.h"

#include <QCoreApplication>

#include <cstdio>

int main(int argc, char** argv)
{
    QCoreApplication application(argc, argv);
    znJobQueue queue;
    queue.setDeleteFinishedOrFailedJobs(true);
    auto* job = new znFileLoaderJob(QCoreApplication::arguments().value(1),
                                    znTypeConverter::convertNode(znScenegraph::getRoot()), &queue);
    QObject::connect(job, &znAbstractJob::finished,
                     [](znCADFileTypes::JobState state) { std::printf("state %d\n", int(state)); });
    QObject::connect(&queue, &znJobQueue::jobQueueEmpty, &application, &QCoreApplication::quit);
    queue.addJob(job);
    queue.startProcessing();
    const int code = QCoreApplication::exec();
    osg::traverse(znScenegraph::getRoot(), [](const osg::NodePtr& node) {
        if (const char* name = osg::getName(node))
            std::printf("%s\n", name);
        return osg::Action::Continue;
    });
    return code;
}
