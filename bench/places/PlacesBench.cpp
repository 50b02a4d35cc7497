// What a place of a part costs on each road from file to scene: zn_places_bench [PLACES [ROAD]...], with the roads
// plmxml, step, jt and glb.
//
// A row is a process of its own. "import" is its processor time for a place, "converters" that of the converters that
// it started, "bare" that of reading the same scene back from a scene file, and "ratio" import over bare. "peak" is
// what its resident memory has grown by at most, "kept" what the scene takes of the heap after the fold, "unfolded"
// before it.

#include "bench/places/PlacesFiles.h"
#include "bench/support/ChildRun.h"
#include "files/glb/GlbWriter.h"
#include "files/scenefile/SceneFile.h"
#include "importer/Importer.h"
#include "importer/SceneText.h"
#include "standalone/startup/StandaloneSession.h"

#include <QCoreApplication>
#include <QEventLoop>
#include <QFileInfo>

#include <cstdio>
#include <cstdlib>
#include <exception>
#include <fstream>
#include <string>
#include <vector>

#include <mimalloc.h>
#include <sys/resource.h>

namespace
{

double processorSecondsOf(int who)
{
    rusage usage{};
    getrusage(who, &usage);
    const auto seconds = [](const timeval& time) {
        return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) * 1e-6;
    };
    return seconds(usage.ru_utime) + seconds(usage.ru_stime);
}

/// In bytes, from the field `name` of what the kernel tells of this process.
double memory(const std::string& name)
{
    std::ifstream status("/proc/self/status");
    for (std::string line; std::getline(status, line);)
        if (line.starts_with(name))
            return std::strtod(line.c_str() + name.size() + 1, nullptr) * 1024;
    return 0;
}

/// Bytes of all blocks that are in use.
double heapBytes()
{
    double bytes = 0;
    mi_heap_visit_blocks(
        mi_heap_get_default(), false,
        [](const mi_heap_t*, const mi_heap_area_t* area, void*, std::size_t, void* sum) {
            *static_cast<double*>(sum) += static_cast<double>(area->used * area->block_size);
            return true;
        },
        &bytes);
    return bytes;
}

zn::ImportResult import(zn::StandaloneSession& session, const std::string& file, const char* fold)
{
    session.settings().set(QStringLiteral("converter.program"), QString::fromUtf8(ZN_PTXCONVERT));
    session.settings().set(QStringLiteral("read.memory"), QStringLiteral("20000"));
    session.settings().set(QStringLiteral("scene.fold"), QString::fromUtf8(fold));
    zn::Importer importer(session);
    QEventLoop loop;
    zn::ImportResult result;
    QObject::connect(&importer, &zn::Importer::finished, &loop, [&](const zn::ImportResult& end) {
        result = end;
        loop.quit();
    });
    importer.import({QString::fromStdString(file)});
    loop.exec();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete); // what the import itself held
    return result;
}

/// Of the scene that comes of `file`, for a place.
double heapOf(const std::string& file, const char* fold, int places)
{
    const ChildRun run = runInChild([&] {
        zn::StandaloneSession session;
        const double before = heapBytes();
        const zn::ImportResult result = import(session, file, fold);
        return result.node ? (heapBytes() - before) / places : -1;
    });
    return run.succeeded ? run.seconds : -1;
}

double secondsOfReading(const std::string& scene)
{
    const ChildRun run = runInChild([&scene] {
        const zn::StandaloneSession session;
        const double begin = processorSeconds();
        const osg::RefPtr<osg::NodePtr> root(osg::scenefile::readSceneFile(QString::fromStdString(scene)).value());
        return processorSeconds() - begin;
    });
    return run.succeeded ? run.seconds : -1;
}

/// Imports, prints what it took, and leaves the scene in `scene` and, as GLB, in `glb`.
double printImport(const char* road, const std::string& file, const PlacesFiles& files)
{
    zn::StandaloneSession session;
    const double resident = memory("VmRSS:");
    const double begin = processorSecondsOf(RUSAGE_SELF);
    const zn::ImportResult result = import(session, file, "on");
    const double seconds = processorSecondsOf(RUSAGE_SELF) - begin;
    const double peak = memory("VmHWM:") - resident;
    if (!result.node)
        throw std::exception();
    const std::string scene = files.path("written.osb");
    if (!osg::scenefile::writeSceneFile(result.node, QString::fromStdString(scene)))
        throw std::exception();
    const QString glb = QString::fromStdString(files.path("written.glb"));
    const auto written = files::glb::write(session.sceneRoot(), glb);
    const double places = files.places();
    std::printf("%-7s %9.0f %6.2f %9.1f %10.1f %8.0f %8.0f %8.0f", road, places,
                static_cast<double>(zn::countScene(result.node).nodes) / places, seconds / places * 1e6,
                processorSecondsOf(RUSAGE_CHILDREN) / places * 1e6, peak / places,
                static_cast<double>(QFileInfo(QString::fromStdString(scene)).size()) / places,
                written ? static_cast<double>(QFileInfo(glb).size()) / places : 0);
    if (!written)
        std::printf(" (%s)", written.error().toString().toUtf8().constData());
    std::fflush(stdout);
    return seconds;
}

void printRow(const std::string& road, const PlacesFiles& files)
{
    if (road == "glb" && !std::filesystem::exists(files.path("places.glb")))
        std::filesystem::copy_file(files.path("written.glb"), files.path("places.glb"));
    const std::string file = road == "plmxml" ? files.plmxml()
                             : road == "step" ? files.step()
                             : road == "jt"   ? files.jt()
                                              : files.path("places.glb");
    const ChildRun run = runInChild([&] { return printImport(road.c_str(), file, files); });
    if (!run.succeeded) {
        std::printf("%-7s failed\n", road.c_str());
        return;
    }
    const double bare = secondsOfReading(files.path("written.osb"));
    std::printf(" %8.0f %8.0f %7.1f %6.1f\n", heapOf(file, "off", files.places()), heapOf(file, "on", files.places()),
                bare / files.places() * 1e6, run.seconds / bare);
    std::fflush(stdout);
}

} // namespace

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    constexpr int usual = 100'000;
    const PlacesFiles files(argc > 1 ? std::atoi(argv[1]) : usual);
    std::vector<std::string> roads(argv + std::min(argc, 2), argv + argc);
    if (roads.empty())
        roads = {"plmxml", "step", "jt", "glb"};
    std::printf("                       us a place                      bytes a place                      us\n"
                "road       places  nodes    import converters     peak      osb      glb unfolded     kept    bare  "
                "ratio\n");
    std::fflush(stdout);
    for (const std::string& road : roads)
        printRow(road, files);
    return 0;
}
