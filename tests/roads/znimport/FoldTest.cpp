// What a run tells and writes of a tree is the same before and after the fold, but for the nodes that only wrap others.

#include "tests/files/glb/GlbFile.h"
#include "tests/roads/znimport/ToolRun.h"

#include <gmock/gmock.h>

#include <utility>

namespace
{

using nlohmann::json;

/// Two rods with a place each, by instances without names, and a group that the document wraps twice.
const char* const document = R"(<PLMXML><ProductDef id='pd'>
<InstanceGraph rootRefs='top'>
<Instance id='top' partRef='#all'/>
<Instance id='g' partRef='#group'/>
<Instance id='a' partRef='#rod'><Transform>1 0 0 0 0 1 0 0 0 0 1 0 0.5 0 0 1</Transform></Instance>
<Instance id='b' name='second' partRef='#rod'/>
<Instance id='c' name='hidden' partRef='#rod'/>
</InstanceGraph>
<Part id='all' name='All' instanceRefs='g'/>
<Part id='group' name='Group' instanceRefs='a b c'/>
<Part id='rod' name='Rod' type='solid'><UserData><UserValue title='Material' value='steel'/></UserData>
<Representation id='r' format='OBJ' location='rod.obj'/></Part>
<ProductView state='active'><Occurrence instanceRefs='#top #g #c' visible='false'/></ProductView>
</ProductDef></PLMXML>)";

class FoldTest : public ToolRun
{
protected:
    struct Told {
        QString tree;
        QByteArray parts;
        std::vector<std::string> ids; ///< of the GLB file's nodes, but for those that have none
        json report;
    };

    QByteArray contentOf(const char* name) const
    {
        QFile file(path(name));
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        return file.readAll();
    }

    static void collectIds(const json& file, const json& node, const std::string& above, std::vector<std::string>& ids)
    {
        for (const json& child : node.value("children", json::array())) {
            const json& each = file["nodes"][child.get<std::size_t>()];
            const std::string step = each.value("/extras/step"_json_pointer, each.value("name", std::string("-")));
            const std::string id = step.empty() ? above : above + "/" + step;
            if (!step.empty())
                ids.push_back(id);
            collectIds(file, each, id, ids);
        }
    }

    Told run(const char* fold, const QStringList& options = {}) const { return run(m_document, fold, options); }

    Told run(const QString& input, const char* fold, const QStringList& options) const
    {
        const QStringList outputs{text("--tree"),  text("--bom"),    path("parts.csv"),  text("-o"),
                                  path("out.glb"), text("--report"), path("report.json")};
        const Ending end = znimport(QStringList{input, text("--set"), text("scene.fold=") + text(fold), text("--set"),
                                                text("export.fold=off")} +
                                    outputs + options);
        EXPECT_TRUE(end.exitCode == 0 || end.exitCode == 3) << end.errors.toStdString();
        const json file = GlbFile(path("out.glb")).json;
        Told told{end.output, contentOf("parts.csv"), {}, json::parse(contentOf("report.json").toStdString())};
        collectIds(file, file["nodes"][0], {}, told.ids);
        return told;
    }

    QString m_rod = write("rod.obj", "o rod\nv 0 0 0\nv 2 0 0\nv 0 3 0\nv 0 0 4\nf 1 2 3\nf 1 3 4\nf 1 2 4\nf 2 3 4\n");
    QString m_document = write("all.plmxml", document);
};

TEST_F(FoldTest, WrappersGoAndAllElseStays)
{
    const Told folded = run("on");
    const Told whole = run("off");
    EXPECT_EQ(folded.tree.count(text("Group [Transform3D]")), 1) << folded.tree.toStdString();
    EXPECT_EQ(whole.tree.count(text("Group [Transform3D]")), 2);
    EXPECT_EQ(folded.tree.count(text("(inactive)")), whole.tree.count(text("(inactive)")));
    const int gone = whole.tree.count(text("\n")) - folded.tree.count(text("\n"));
    EXPECT_EQ(folded.report["files"][0]["folded"], gone);
    EXPECT_EQ(whole.report["files"][0]["folded"], 0);
    EXPECT_GT(gone, 2);
    EXPECT_EQ(folded.parts, whole.parts);
    EXPECT_TRUE(folded.parts.contains(",all/All/Group/Rod/Rod,")) << folded.parts.toStdString();
    EXPECT_EQ(folded.ids, whole.ids);
    EXPECT_THAT(folded.ids, testing::IsSupersetOf({"/all/All/Group/Rod", "/all/All/Group/second/Rod"}));
}

TEST_F(FoldTest, QueriesByIdAndAttributeMeetTheSame)
{
    for (const char* query : {"id=all/All/Group/second", "attribute:Material=steel", "name=Rod", "name=Group"})
        for (const char* option : {"--keep", "--hide"}) {
            const QStringList options{text(option), text(query)};
            const Told folded = run("on", options);
            const Told whole = run("off", options);
            EXPECT_EQ(folded.ids, whole.ids) << query;
            EXPECT_EQ(folded.parts, whole.parts) << query;
            for (const char* count : {"geometries", "placedGeometries", "placedTriangles"})
                EXPECT_EQ(folded.report["scene"][count], whole.report["scene"][count]) << query;
            if (text(option) == text("--hide")) {
                EXPECT_LT(folded.ids.size(), run("on").ids.size()) << query << " meets nothing";
            }
        }
}

TEST_F(FoldTest, ReferencesStay)
{
    const QStringList options{text("--set"), text("import.PLMXML.referencedFiles=off")};
    const Told folded = run("on", options);
    const Told whole = run("off", options);
    EXPECT_EQ(folded.report["scene"]["references"], whole.report["scene"]["references"]);
    EXPECT_EQ(folded.ids, whole.ids);
    EXPECT_EQ(folded.tree.count(text("rod.obj', state 0")), 3) << folded.tree.toStdString();
}

TEST_F(FoldTest, SavedViewsShowTheSame)
{
    const auto look = [this](const char* fold) {
        const QString folder = path(fold);
        const Ending end = znimport({text(EXAMPLE_MODELS "/plate.stp"), text("--set"), text("scene.fold=") + text(fold),
                                     text("--variants"), text("--snapshot-variants"), folder, text("--size"),
                                     text("240x160"), text("-o"), folder + text(".glb")});
        EXPECT_EQ(end.exitCode, 0) << end.errors.toStdString();
        std::vector<std::pair<QString, QByteArray>> shown = {{text("variants"), end.output.toUtf8()}};
        for (const QString& name : QDir(folder).entryList(QDir::Files)) {
            QFile picture(folder + text("/") + name);
            EXPECT_TRUE(picture.open(QIODevice::ReadOnly));
            shown.emplace_back(name, picture.readAll());
        }
        const json file = GlbFile(folder + text(".glb")).json;
        shown.emplace_back(text("sets"), QByteArray::fromStdString(file["asset"]["extras"].dump()));
        return shown;
    };
    const auto folded = look("on");
    EXPECT_EQ(folded.size(), 4u);
    EXPECT_EQ(folded, look("off"));
}

class FoldCorpusTest : public FoldTest, public testing::WithParamInterface<const char*>
{
};

TEST_P(FoldCorpusTest, TreesOfRealFilesDifferByTheFoldAlone)
{
    const QString file = qEnvironmentVariable("ZN_CORPUS") + text("/") + text(GetParam());
    if (!QFile::exists(file))
        GTEST_SKIP() << "ZN_CORPUS names no folder with " << GetParam() << " in it";
    const Told folded = run(file, "on", {});
    const Told whole = run(file, "off", {});
    EXPECT_EQ(folded.tree.count(text("\n")) + folded.report["files"][0]["folded"].get<int>(),
              whole.tree.count(text("\n")));
    EXPECT_EQ(folded.ids, whole.ids);
    EXPECT_EQ(folded.parts, whole.parts);
    EXPECT_EQ(folded.report["files"][0].value("attributes", json()),
              whole.report["files"][0].value("attributes", json()));
    for (const char* count :
         {"geometries", "materials", "triangles", "references", "placedGeometries", "placedTriangles"})
        EXPECT_EQ(folded.report["scene"][count], whole.report["scene"][count]) << count;
}

INSTANTIATE_TEST_SUITE_P(, FoldCorpusTest,
                         testing::Values("jt/CoffeeMaker.jt", "jt/fishing_reel.jt", "jt/butterflyvalve_v9.5.jt",
                                         "step/as1-oc-214.stp", "step/io1-cm-214.stp", "step/MyParts.step",
                                         "step/extref-s1-c5-214/s1-c5-214.stp",
                                         "step-views/nist_ctc_02_asme1_ap242-2015.stp", "plmxml-real/pdm_2007_car.xml",
                                         "plmxml-real/auto_door.plmxml", "plmxml-real/cad_conveyor.plmxml",
                                         "plmxml-real/rack_stl_vrml.plmxml", "plmxml/variants_occurrences.plmxml",
                                         "wrl/ESP32-WROVER-E.wrl", "obj/hundred_cubes.obj", "gltf/DamagedHelmet.glb",
                                         "gltf/OrientationTest.glb"));

} // namespace
