// Pictures on materials, on their way through the program.

#include "scene/MaterialLook.h"
#include "tests/files/glb/GlbFile.h"
#include "tests/roads/znimport/ToolRun.h"
#include "tests/support/SurfaceSamples.h"

#include <QThread>

#include <random>

namespace
{

using nlohmann::json;

class TexturesTest : public ToolRun
{
protected:
    /// A GLB file with triangles, each under a picture of its own of `size` bytes that no program could decode.
    QString writePictures(const char* name, int count, int size) const
    {
        QByteArray binary(12 * 3 + 8 * 3 + 8, '\0');
        const float positions[] = {0, 0, 0, 1, 0, 0, 0, 1, 0, 0, 0, 1, 0, 0, 1};
        const std::uint16_t indices[] = {0, 1, 2};
        std::memcpy(binary.data(), positions, sizeof positions);
        std::memcpy(binary.data() + 60, indices, sizeof indices);
        json document = json::parse(R"({"asset": {"version": "2.0"}, "scenes": [{"nodes": []}],
            "bufferViews": [{"buffer": 0, "byteOffset": 0, "byteLength": 36},
                            {"buffer": 0, "byteOffset": 36, "byteLength": 24},
                            {"buffer": 0, "byteOffset": 60, "byteLength": 6}],
            "accessors": [
                {"bufferView": 0, "componentType": 5126, "count": 3, "type": "VEC3", "min": [0, 0, 0],
                 "max": [1, 1, 0]},
                {"bufferView": 1, "componentType": 5126, "count": 3, "type": "VEC2"},
                {"bufferView": 2, "componentType": 5123, "count": 3, "type": "SCALAR"}]})");
        const qint64 start = binary.size();
        for (int i = 0; i < count; ++i) {
            document["bufferViews"].push_back(
                {{"buffer", 0}, {"byteOffset", start + qint64(size) * i}, {"byteLength", size}});
            document["images"].push_back({{"bufferView", 3 + i}, {"mimeType", "image/png"}});
            document["textures"].push_back({{"source", i}});
            document["materials"].push_back(
                {{"name", "m" + std::to_string(i)}, {"pbrMetallicRoughness", {{"baseColorTexture", {{"index", i}}}}}});
            document["meshes"].push_back(
                {{"primitives",
                  {{{"attributes", {{"POSITION", 0}, {"TEXCOORD_0", 1}}}, {"indices", 2}, {"material", i}}}}});
            document["nodes"].push_back({{"mesh", i}});
            document["scenes"][0]["nodes"].push_back(i);
        }
        document["buffers"] = {{{"byteLength", start + qint64(size) * count}}};
        std::string text = document.dump();
        text.resize((text.size() + 3) / 4 * 4, ' ');
        QFile file(path(name));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        const qint64 total = 28 + qint64(text.size()) + start + qint64(size) * count;
        const std::uint32_t head[] = {0x46546C67, 2, std::uint32_t(total), std::uint32_t(text.size()), 0x4E4F534A};
        const std::uint32_t chunk[] = {std::uint32_t(start + qint64(size) * count), 0x004E4942};
        file.write(reinterpret_cast<const char*>(head), sizeof head);
        file.write(text.data(), qint64(text.size()));
        file.write(reinterpret_cast<const char*>(chunk), sizeof chunk);
        file.write(binary);
        std::mt19937 random(7);
        QByteArray picture(size, '\0');
        for (int i = 0; i < count; ++i) {
            for (char& byte : picture)
                byte = static_cast<char>(random());
            file.write(picture.replace(0, 8, "\x89PNG\r\n\x1a\n", 8));
        }
        return file.fileName();
    }

    /// The most memory that the program has while it runs, in bytes.
    static qint64 peakOf(const QStringList& arguments)
    {
        QProcess process;
        process.start(text(ZNIMPORT), arguments);
        EXPECT_TRUE(process.waitForStarted());
        qint64 peak = 0;
        while (!process.waitForFinished(2)) {
            QFile status(QStringLiteral("/proc/%1/status").arg(process.processId()));
            if (!status.open(QIODevice::ReadOnly))
                continue;
            const QByteArray all = status.readAll();
            const int at = all.indexOf("VmHWM:");
            if (at >= 0)
                peak = std::max(peak, all.mid(at + 6, all.indexOf("kB", at) - at - 6).trimmed().toLongLong() * 1024);
        }
        EXPECT_EQ(process.exitCode(), 0);
        return peak;
    }
};

TEST_F(TexturesTest, PicturesAreHeldAsTheyAreEncoded)
{
#ifdef __SANITIZE_ADDRESS__
    GTEST_SKIP() << "sanitizers take memory of their own";
#endif
    constexpr int count = 300, size = 200'000;
    const QString few = writePictures("few.glb", 1, 100), many = writePictures("many.glb", count, size);
    const qint64 base = peakOf({few, text("-o"), path("few out.glb")});
    const qint64 peak = peakOf({many, text("-o"), path("many out.glb")});
    EXPECT_LT(double(peak - base) / (qint64(count) * size), 1.2);
    const GlbFile written(path("many out.glb"));
    EXPECT_EQ(written.json["images"].size(), std::size_t(count));
    EXPECT_GT(QFileInfo(path("many out.glb")).size(), qint64(count) * size);
}

TEST_F(TexturesTest, TheOptionsSayWherePicturesGoAndHowLargeTheyAre)
{
    const QByteArray image = surfacesamples::redPng();
    const QString file =
        write("a.gltf", R"({"asset": {"version": "2.0"}, "scenes": [{"nodes": [0]}], "nodes": [{"mesh": 0}],
            "buffers": [{"byteLength": 72, "uri": "data:application/octet-stream;base64,)" +
                            QByteArray(72, '\x3c').toBase64() +
                            R"("}], "bufferViews": [{"buffer": 0, "byteLength": 36}, {"buffer": 0, "byteLength": 24}],
            "accessors": [{"bufferView": 0, "componentType": 5126, "count": 3, "type": "VEC3"},
                          {"bufferView": 1, "componentType": 5126, "count": 3, "type": "VEC2"}],
            "images": [{"uri": "data:image/png;base64,)" +
                            image.toBase64() + R"(", "name": "rust"}], "textures": [{"source": 0}],
            "materials": [{"emissiveTexture": {"index": 0}}],
            "meshes": [{"primitives": [{"attributes": {"POSITION": 0, "TEXCOORD_0": 1}, "material": 0}]}]})");
    const auto written = [&](const QStringList& more) {
        const Ending end = znimport(QStringList{file, text("-o"), path("out.glb")} + more);
        EXPECT_EQ(end.exitCode, 0) << end.errors.toStdString();
        return GlbFile(path("out.glb")).json;
    };
    EXPECT_TRUE(written({})["images"][0].contains("bufferView"));
    EXPECT_FALSE(written({text("--textures"), text("none")}).contains("images"));
    EXPECT_EQ(written({text("--textures=external")})["images"][0]["uri"], "out_rust.png");
    QFile beside(path("out_rust.png"));
    ASSERT_TRUE(beside.open(QIODevice::ReadOnly));
    EXPECT_EQ(beside.readAll(), image);
    const json small = written({text("--max-texture=1")});
    EXPECT_NE(small["bufferViews"][small["images"][0]["bufferView"].get<std::size_t>()]["byteLength"], image.size());
}

TEST_F(TexturesTest, WrongValuesOfTheOptionsAreToldBeforeAnyWork)
{
    const auto refused = [&](const QStringList& more, const char* sentence) {
        const Ending end = znimport(QStringList{text("none.obj")} + more);
        EXPECT_EQ(end.exitCode, 2);
        EXPECT_TRUE(end.errors.contains(text(sentence))) << end.errors.toStdString();
    };
    refused({text("-o"), text("a.glb"), text("--textures"), text("inside")},
            "wants embed or external or none, not 'inside'");
    refused({text("-o"), text("a.glb"), text("--max-texture"), text("-1")},
            "wants a whole number from 0 to 65536 pixels, not '-1'");
    refused({text("-o"), text("a.osb"), text("--textures"), text("none")},
            "--textures is for .glb files, and --output names none");
    refused({text("--max-texture"), text("5")}, "--max-texture is for .glb files, and --output names none");
}

} // namespace
