// How the time to read a glTF document grows with its nodes: many places of one small mesh.
//
// "growth" is the time for twice the nodes over the time for the nodes, in the same run.

#include "bench/support/Ratio.h"
#include "standalone/startup/BuiltInReaders.h"

#include <QFile>
#include <QTemporaryDir>

#include <cstdlib>

namespace
{

/// `count` placed nodes below one, which refer to one triangle.
QByteArray document(int count)
{
    const QByteArray corners = QByteArray::fromHex("00000000000000000000000000000000803f00000000000000003f0000803f")
                                   .leftJustified(36, '\0', true)
                                   .toBase64();
    QByteArray nodes = R"({"name": "all", "children": [1)";
    for (int i = 2; i <= count; ++i)
        nodes += "," + QByteArray::number(i);
    nodes += "]}";
    for (int i = 0; i < count; ++i)
        nodes += R"(,{"name": "place )" + QByteArray::number(i) + R"(", "mesh": 0, "translation": [)" +
                 QByteArray::number(i) + R"(, 0, 0], "extras": {"id": )" + QByteArray::number(i) + "}}";
    return R"({"asset": {"version": "2.0"}, "buffers": [{"byteLength": 36,
               "uri": "data:application/octet-stream;base64,)" +
           corners + R"("}], "bufferViews": [{"buffer": 0, "byteLength": 36}],
               "accessors": [{"bufferView": 0, "componentType": 5126, "count": 3, "type": "VEC3"}],
               "meshes": [{"primitives": [{"attributes": {"POSITION": 0}}]}],
               "scenes": [{"nodes": [0]}], "nodes": [)" +
           nodes + "]}";
}

class Document
{
public:
    explicit Document(int count)
    {
        QFile file(m_path);
        const QByteArray text = document(count);
        if (!file.open(QIODevice::WriteOnly) || file.write(text) != text.size())
            std::abort();
    }

    double readingSeconds() const
    {
        osg::RefPtr<osg::NodePtr> root;
        const double seconds = secondsOf([&] { root = zn::startup::builtInReaders().read(m_path).value(); });
        if (!root.get())
            std::abort();
        return seconds;
    }

private:
    QTemporaryDir m_folder;
    QString m_path = m_folder.filePath(QStringLiteral("places.gltf"));
};

void readPlaces(benchmark::State& state)
{
    const auto count = static_cast<int>(state.range(0));
    const Document once(count);
    const Document twice(2 * count);
    reportRatio(
        state, [&] { return once.readingSeconds(); }, [&] { return twice.readingSeconds(); });
    state.counters["growth"] = state.counters["ratio"];
}

BENCHMARK(readPlaces)->Arg(12'500)->Arg(50'000)->UseManualTime()->Unit(benchmark::kMillisecond);

} // namespace

BENCHMARK_MAIN();
