#pragma once

#include "plmxml/znPLMXMLLoaderJob.h"
#include "tests/cad/visualization/StructureText.h"
#include "tests/loader/LoaderTest.h"

#include <QSignalSpy>

/// Runs of the job over small documents; notes its signals, a line each.
class PLMXMLLoaderJobTest : public LoaderTest
{
protected:
    void TearDown() override
    {
        tree = osg::NodePtr();
        job.reset();
        LoaderTest::TearDown();
    }

    /// Where the conversion of the part file `location` put its output, after a run over a document of that one.
    QString folderOfConverted(const std::string& location)
    {
        job = std::make_unique<znPLMXMLLoaderJob>(documentOf({location}).toStdString(), nullptr);
        QString output;
        QObject::connect(job.get(), &znPLMXMLLoaderJob::childPtxConverterJobCreated, job.get(),
                         [&](znPtxConverterJob* child) {
                             QObject::connect(child, &znAbstractJob::finished, child,
                                              [&output, child] { output = child->getOutputFile(); });
                         });
        EXPECT_EQ(run(), znCADFileTypes::JobSucceeded);
        return QFileInfo(output).absolutePath();
    }

    /// A document with one solid part for each location, placed once each; its path.
    QString documentOf(const std::vector<std::string>& locations)
    {
        std::string roots, instances, parts;
        for (std::size_t i = 0; i < locations.size(); ++i) {
            const std::string n = std::to_string(i);
            roots += (i ? " i" : "i") + n;
            instances += "<Instance id='i" + n + "' name='I" + n + "' partRef='p" + n + "'/>";
            parts += "<Part id='p" + n + "' name='P" + n + "' type='solid'><Representation id='r" + n +
                     "' format='X' location='" + locations[i] + "'/></Part>";
        }
        const std::string text = "<PLMXML><ProductDef id='pd'><InstanceGraph rootRefs='" + roots + "'>" + instances +
                                 "</InstanceGraph>" + parts + "</ProductDef></PLMXML>";
        return write(QStringLiteral("car.plmxml"), QByteArray::fromStdString(text));
    }

    void make(const QString& file)
    {
        job = std::make_unique<znPLMXMLLoaderJob>(file.toStdString(), nullptr);
        job->setOutputDir(outputFolder().toStdString());
        watch();
    }

    /// Runs the job to its end.
    znCADFileTypes::JobState run()
    {
        QSignalSpy finished(job.get(), &znAbstractJob::finished);
        job->run();
        EXPECT_TRUE(finished.count() > 0 || finished.wait(60000));
        tree = job->getLoadedNode();
        return job->getState();
    }
    znCADFileTypes::JobState import(const std::vector<std::string>& locations)
    {
        make(documentOf(locations));
        return run();
    }

    std::string treeText() const { return HB::Visualization::treeText(tree, m_folder.path().toStdString() + "/"); }
    int count(const char* start) const
    {
        return static_cast<int>(std::count_if(lines.begin(), lines.end(), [&](const std::string& line) {
            return line.compare(0, std::strlen(start), start) == 0;
        }));
    }

    std::unique_ptr<znPLMXMLLoaderJob> job;
    osg::RefPtr<osg::NodePtr> tree;
    std::vector<std::string> lines;

private:
    void note(const char* what, const QString& file)
    {
        lines.push_back(std::string(what) + " " + QFileInfo(file).fileName().toStdString());
    }
    void watch()
    {
        lines.clear();
        QObject* context = job.get();
        QObject::connect(job.get(), &znAbstractJob::started, context, [this] { lines.push_back("started"); });
        QObject::connect(job.get(), &znPLMXMLLoaderJob::foundChildFile, context,
                         [this](const QString& file) { note("found", file); });
        QObject::connect(job.get(), &znPLMXMLLoaderJob::loadingChildFileStarted, context,
                         [this](const QString& file) { note("loading", file); });
        QObject::connect(job.get(), &znPLMXMLLoaderJob::loadingChildFileFinished, context,
                         [this](const QString& file, znCADFileTypes::JobState state) {
                             note(state == znCADFileTypes::JobSucceeded ? "loaded" : "not loaded", file);
                         });
        QObject::connect(job.get(), &znPLMXMLLoaderJob::childPtxConverterJobCreated, context,
                         [this](znPtxConverterJob* child) { note("converter for", child->getInputFile()); });
        QObject::connect(
            job.get(), &znPLMXMLLoaderJob::childOsbLoaderJobCreated, context,
            [this](znOsbLoaderJob* child, const QString& file) { note(child ? "load of" : "null", file); });
        QObject::connect(job.get(), &znPLMXMLLoaderJob::childOsbLoaderJobFinished, context,
                         [this](znOsbLoaderJob* child) {
                             lines.push_back(child->getLoadedNode() ? "load ended" : "load ended without a node");
                         });
        QObject::connect(job.get(), &znPLMXMLLoaderJob::childPtxImportFinished, context,
                         [this](const QString& file) { note("end of", file); });
        QObject::connect(job.get(), &znPLMXMLLoaderJob::childrenConversionFinished, context, [this](double) {
            // A queue without jobs tells so as well, from the event loop, after the run.
            if (count("converter for") > 0)
                lines.push_back("conversions ended");
        });
        QObject::connect(job.get(), &znAbstractProcessingJob::processingFinished, context,
                         [this] { lines.push_back("processed"); });
        QObject::connect(job.get(), &znPLMXMLLoaderJob::nodeReady, context,
                         [this](const osg::NodePtr& node) { lines.push_back(node ? "node" : "null node"); });
        QObject::connect(job.get(), &znAbstractJob::finished, context, [this](znCADFileTypes::JobState state) {
            lines.push_back("finished " + std::to_string(int(state)));
        });
    }
};
