// Small files for web pages, beside what other programs make of the plain ones.

#include "tests/clients/Clients.h"

#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdio>

namespace
{

using nlohmann::json;

constexpr const char* inputs[] = {"step/SCDR.stp",
                                  "step/Ventilator.stp",
                                  "step/linkrods.step",
                                  "step/nist_ctc_02_asme1_ap203.stp",
                                  "step/nist_ctc_05_asme1_ap242-e1.stp",
                                  "step/Hall_Effect_XY_Endstop.step",
                                  "jt/CoffeeMaker.jt",
                                  "jt/fishing_reel.jt",
                                  "jt/butterflyvalve_v9.5.jt",
                                  "jt/conrod.jt",
                                  "plmxml-real/pdm_2007_car.xml",
                                  "wrl/ESP32-WROVER-E.wrl"};

class WebClientTest : public testing::Test
{
protected:
    QString path(const char* name) const { return m_folder.filePath(QLatin1String(name)); }

    /// What is seen of `input` written with `more` options.
    json imported(const QString& input, const char* name, const QStringList& more = {}) const
    {
        QProcess znimport;
        znimport.start(QStringLiteral(ZNIMPORT), QStringList{input, QStringLiteral("-o"), path(name)} + more);
        EXPECT_TRUE(znimport.waitForFinished(600'000));
        return clients::gathered(path(name));
    }

    /// What is seen of the plain file after another program rewrote it.
    json rewritten(const char* by) const
    {
        EXPECT_TRUE(clients::optimize(QLatin1String(by), path("plain.glb"), path("again.glb")));
        const json seen = clients::gathered(path("again.glb"));
        QFile::remove(path("again.glb"));
        return seen;
    }

private:
    QTemporaryDir m_folder;
};

void expectSameContent(const json& web, const json& plain)
{
    EXPECT_EQ(web["triangles"], plain["triangles"]);
    EXPECT_EQ(web["names"], plain["names"]);
    double size = 0;
    for (std::size_t axis = 0; axis < 3; ++axis)
        size = std::max(size, plain["box"][axis + 3].get<double>() - plain["box"][axis].get<double>());
    const double error = std::max(0.00005, size / 16384);
    for (std::size_t i = 0; i < 6; ++i)
        EXPECT_NEAR(web["box"][i].get<double>(), plain["box"][i].get<double>(), error) << i;
}

TEST_F(WebClientTest, FilesAreSmallAndQuickToDrawAndLoseNothing)
{
    const QString corpus = qEnvironmentVariable("ZN_CORPUS");
    for (const char* client : {"gltf-transform", "gltfpack"})
        if (corpus.isEmpty() || !clients::isInstalled(QLatin1String(client)))
            GTEST_SKIP() << "ZN_CORPUS or " << client << " is not there";
    double logarithms = 0;
    std::size_t files = 0;
    for (const char* name : inputs) {
        const QString input = corpus + QLatin1Char('/') + QLatin1String(name);
        if (!QFile::exists(input))
            continue;
        SCOPED_TRACE(name);
        const json plain = imported(input, "plain.glb");
        const json web = imported(input, "web.glb", {QStringLiteral("--web")});
        ASSERT_TRUE(plain.is_object() && web.is_object());
        expectSameContent(web, plain);
        const json packed = rewritten("gltfpack-small");
        const json optimized = rewritten("gltf-transform");
        ASSERT_TRUE(packed.is_object() && optimized.is_object());
        EXPECT_LE(web["bare"].get<double>(), 1.05 * packed["bare"].get<double>());
        // What is seen through is sorted by viewers, and what variants show is shown by them.
        const int calls = web["draws"].get<int>() - web["apart"].get<int>();
        EXPECT_LE(calls, 2 * optimized["draws"].get<int>());
        const double share = web["bytes"].get<double>() / plain["bytes"].get<double>();
        logarithms += std::log(share);
        ++files;
        std::printf("| %s | %d | %d | %.2f | %d | %d | %d | %d |\n", name, plain["bytes"].get<int>(),
                    web["bytes"].get<int>(), share, packed["bytes"].get<int>(), plain["draws"].get<int>(),
                    web["draws"].get<int>(), optimized["draws"].get<int>());
    }
    if (files == 0)
        GTEST_SKIP() << "none of the files is there";
    const double mean = std::exp(logarithms / static_cast<double>(files));
    std::printf("geometric mean %.3f\n", mean);
    EXPECT_LE(mean, 0.25);
}

/// Three squares of one mesh, "a", "b" and "c", side by side; or of meshes of different sizes.
QByteArray squares(bool areEqual)
{
    QByteArray positions;
    QByteArray accessors;
    QByteArray views;
    QByteArray meshes;
    QByteArray nodes;
    for (int i = 0; i < 3; ++i) {
        const float size = areEqual ? 1.0f : 1.0f + 0.5f * float(i);
        for (const auto& [x, z] : {std::pair(0.0f, 0.0f), {0.0f, size}, {size, size}, {0, 0}, {size, size}, {size, 0}})
            for (const float number : {x, 0.0f, z})
                positions.append(reinterpret_cast<const char*>(&number), sizeof(number));
        const QByteArray comma = i > 0 ? "," : "";
        const QByteArray number = QByteArray::number(i);
        const QByteArray side = QByteArray::number(double(size));
        accessors += comma + R"({"componentType": 5126, "count": 6, "type": "VEC3", "min": [0, 0, 0], "max": [)" +
                     side + ", 0, " + side + R"(], "bufferView": )" + number + "}";
        views += comma + R"({"buffer": 0, "byteLength": 72, "byteOffset": )" + QByteArray::number(72 * i) + "}";
        meshes += comma + R"({"primitives": [{"attributes": {"POSITION": )" + number + "}}]}";
        nodes += comma + R"({"name": ")" + char('a' + i) + R"(", "mesh": )" + (areEqual ? QByteArray("0") : number) +
                 R"(, "translation": [)" + QByteArray::number(5 * i) + ", 0, 0]}";
    }
    return R"({"asset": {"version": "2.0"}, "scenes": [{"nodes": [0, 1, 2]}], "scene": 0, "nodes": [)" + nodes +
           R"(], "meshes": [)" + meshes + R"(], "accessors": [)" + accessors + R"(], "bufferViews": [)" + views +
           R"(], "buffers": [{"byteLength": 216, "uri": "data:application/octet-stream;base64,)" +
           positions.toBase64() + R"("}]})";
}

TEST_F(WebClientTest, PartsAreFoundWhereABrowserPicksThem)
{
    if (!clients::isInstalled(QStringLiteral("three")))
        GTEST_SKIP() << "three is not installed";
    for (const bool areEqual : {true, false}) {
        QFile input(path("squares.gltf"));
        ASSERT_TRUE(input.open(QIODevice::WriteOnly));
        input.write(squares(areEqual));
        input.close();
        QProcess znimport;
        znimport.start(QStringLiteral(ZNIMPORT),
                       {input.fileName(), QStringLiteral("-o"), path("web.glb"), QStringLiteral("--web")});
        ASSERT_TRUE(znimport.waitForFinished(60'000));
        EXPECT_EQ(clients::picked(path("web.glb")), json::parse(R"(["a", "b", "c"])")) << areEqual;
    }
}

class PackedByOthersTest : public WebClientTest, public testing::WithParamInterface<const char*>
{
};

/// Positions have 14 bits there.
TEST_P(PackedByOthersTest, ComesInAgainAsItWas)
{
    const QString corpus = qEnvironmentVariable("ZN_CORPUS");
    if (corpus.isEmpty() || !clients::isInstalled(QLatin1String("draco")))
        GTEST_SKIP() << "ZN_CORPUS or " << GetParam() << " is not there";
    std::size_t files = 0;
    for (const char* name : {"step/SCDR.stp", "step/nist_ctc_02_asme1_ap203.stp", "jt/butterflyvalve_v9.5.jt",
                             "obj/spider.obj", "gltf/DamagedHelmet.glb"}) {
        const QString input = corpus + QLatin1Char('/') + QLatin1String(name);
        if (!QFile::exists(input))
            continue;
        SCOPED_TRACE(name);
        ++files;
        const json plain = imported(input, "plain.glb");
        ASSERT_TRUE(clients::optimize(QLatin1String(GetParam()), path("plain.glb"), path("packed.glb")));
        const json again = imported(path("packed.glb"), "again.glb");
        ASSERT_TRUE(plain.is_object() && again.is_object());
        // Draco leaves out those without an area, so that another reader tells how many are there.
        EXPECT_EQ(again["triangles"], clients::gathered(path("packed.glb"))["triangles"]);
        for (std::size_t i = 0; i < 6; ++i) {
            const double side = plain["box"][i % 3 + 3].get<double>() - plain["box"][i % 3].get<double>();
            EXPECT_NEAR(again["box"][i].get<double>(), plain["box"][i].get<double>(), side / 4096) << i;
        }
        QFile::remove(path("packed.glb"));
    }
    if (files == 0)
        GTEST_SKIP() << "none of the files is there";
}

INSTANTIATE_TEST_SUITE_P(, PackedByOthersTest, testing::Values("gltfpack-small", "meshopt", "draco"));

} // namespace
