// Levels of detail of GLB files, on their way through the program.

#include "tests/files/glb/GlbFile.h"
#include "tests/gltf-validator/GltfValidator.h"
#include "tests/roads/znimport/ToolRun.h"

#include <QRegularExpression>

#include <cmath>

namespace
{

using nlohmann::json;

class LevelsRunTest : public ToolRun
{
protected:
    /// A bowl of 40 x 40 cells in an OBJ file, 100 mm wide.
    QString bowl() const
    {
        QByteArray text;
        for (int row = 0; row <= 40; ++row)
            for (int column = 0; column <= 40; ++column) {
                const double x = column * 2.5, y = row * 2.5;
                text += "v " + QByteArray::number(x) + ' ' + QByteArray::number(y) + ' ' +
                        QByteArray::number(std::sin(x / 32) * std::sin(y / 32) * -20) + '\n';
            }
        for (int row = 0; row < 40; ++row)
            for (int column = 0; column < 40; ++column) {
                const int a = row * 41 + column + 1;
                for (const int third : {a + 42, a + 41})
                    text += "f " + QByteArray::number(a) + ' ' + QByteArray::number(third == a + 42 ? a + 1 : a + 42) +
                            ' ' + QByteArray::number(third) + '\n';
            }
        return write("bowl.obj", text);
    }
    Ending run(const QStringList& options) const
    {
        return znimport(QStringList{bowl(), text("-o"), path("out.glb")} + options);
    }
    QStringList glbFiles() const { return QFileInfo(path("out.glb")).dir().entryList({text("*.glb")}, QDir::Files); }
    static void expectValid(const QString& file)
    {
        if (gltfvalidator::isInstalled()) {
            const gltfvalidator::Verdict verdict = gltfvalidator::validate(file);
            EXPECT_EQ(verdict, gltfvalidator::Verdict()) << verdict.errors.join(QLatin1Char('\n')).toStdString();
        }
    }
};

TEST_F(LevelsRunTest, LevelsAreWrittenToldAndReadAgain)
{
    const Ending ending = run({text("--lod"), text("0.5,0.1")});
    ASSERT_EQ(ending.exitCode, 0) << ending.errors.toStdString();
    for (const char* level : {"1", "2"})
        EXPECT_TRUE(QRegularExpression(text("out.glb: level %1 has [0-9]+ of 3200 triangles; no surface is off by more "
                                            "than [0-9.]+ mm")
                                           .arg(text(level)))
                        .match(ending.errors)
                        .hasMatch())
            << ending.errors.toStdString();
    expectValid(path("out.glb"));
    const QStringList again = {path("out.glb"), text("--set"), text("mesh.level=2"), text("-o"), path("coarse.glb")};
    ASSERT_EQ(znimport(again).exitCode, 0);
    const GlbFile coarse(path("coarse.glb"));
    const auto indices = coarse.primitive(0)["indices"].get<std::size_t>();
    EXPECT_LT(coarse.json["accessors"][indices]["count"].get<int>(), 3200 * 3 / 5);
}

TEST_F(LevelsRunTest, OptionsAndSettingsSayTheSame)
{
    ASSERT_EQ(run({text("--lod"), text("0.3"), text("--simplify"), text("0.05"), text("--web")}).exitCode, 0);
    const QByteArray option = GlbFile(path("out.glb")).bytes();
    expectValid(path("out.glb"));
    ASSERT_EQ(run({text("--set"), text("export.lod=0.3"), text("--set"), text("export.simplify=0.05"), text("--web")})
                  .exitCode,
              0);
    EXPECT_EQ(GlbFile(path("out.glb")).bytes(), option);
    EXPECT_FALSE(option.isEmpty());
}

TEST_F(LevelsRunTest, FilesOfLevelsAreOutputsOfTheReport)
{
    const Ending ending =
        run({text("--lod"), text("0.5,0.1"), text("--lod-files"), text("--report"), path("report.json")});
    ASSERT_EQ(ending.exitCode, 0) << ending.errors.toStdString();
    EXPECT_EQ(glbFiles(), QStringList({text("out.glb"), text("out.lod1.glb"), text("out.lod2.glb")}));
    QFile report(path("report.json"));
    ASSERT_TRUE(report.open(QIODevice::ReadOnly));
    const json told = json::parse(report.readAll().toStdString());
    std::vector<std::string> names;
    for (const json& output : told.at("outputs"))
        names.push_back(QFileInfo(QString::fromStdString(output.get<std::string>())).fileName().toStdString());
    EXPECT_EQ(names, (std::vector<std::string>{"out.glb", "out.lod1.glb", "out.lod2.glb"}));
    for (const QString& file : glbFiles())
        expectValid(QFileInfo(path("out.glb")).dir().filePath(file));
}

TEST_F(LevelsRunTest, BadTextsAreRefusedBeforeAnythingIsRead)
{
    const std::pair<QStringList, const char*> runs[] = {{{text("--lod"), text("0.1,0.5")}, "--lod (export.lod) wants"},
                                                        {{text("--lod"), text("many")}, "'many'"},
                                                        {{text("--set"), text("export.lod=2")}, "'2'"},
                                                        {{text("--simplify"), text("-1")}, "export.simplify"},
                                                        {{text("--simplify"), text("fine")}, "export.simplify"},
                                                        {{text("--lod-files")}, "wants --lod"}};
    for (const auto& [options, sentence] : runs) {
        const Ending ending = run(options);
        EXPECT_EQ(ending.exitCode, 2);
        EXPECT_TRUE(ending.errors.contains(text(sentence))) << ending.errors.toStdString();
        EXPECT_TRUE(glbFiles().isEmpty());
    }
    for (const QStringList& options :
         {QStringList{text("--lod"), text("0.5")}, {text("--lod-files")}, {text("--simplify"), text("1")}}) {
        const Ending ending = znimport(QStringList{bowl(), text("-o"), path("out.osb")} + options);
        EXPECT_EQ(ending.exitCode, 2);
        EXPECT_TRUE(ending.errors.contains(text("is for .glb files"))) << ending.errors.toStdString();
    }
}

} // namespace
