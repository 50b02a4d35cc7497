// Documents as PDM systems, viewers and generators write them, with figures that another program took from their XML.

#include "host/OSGSystem/Cast.h"
#include "host/OSGSystem/Names.h"
#include "host/OSGSystem/Transform.h"
#include "host/znOpenSGExt/ExtReference.h"
#include "scene/MatrixMath.h"
#include "scene/Tags.h"
#include "standalone/startup/StandaloneSession.h"
#include "tests/roads/CorpusImport.h"

#include <QEventLoop>
#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTimer>

#include <gtest/gtest.h>

#include <cmath>
#include <map>
#include <ostream>

namespace
{

QString text(const char* utf8)
{
    return QString::fromUtf8(utf8);
}

QString folder()
{
    return QFile::decodeName(qgetenv("ZN_CORPUS")) + text("/plmxml-real/");
}

QJsonObject expectedFigures()
{
    QFile file(folder() + text("EXPECTED.json"));
    return file.open(QIODevice::ReadOnly) ? QJsonDocument::fromJson(file.readAll()).object() : QJsonObject();
}

/// The structure alone: every part file stays a reference.
class StructureImport
{
public:
    explicit StructureImport(const QString& file)
    {
        EXPECT_FALSE(m_session.settings().set(text("import.PLMXML.referencedFiles"), text("off")));
        EXPECT_FALSE(m_session.settings().set(text("scene.fold"), text("off")));
        zn::Importer importer(m_session);
        QEventLoop loop;
        QObject::connect(&importer, &zn::Importer::finished, &loop, [&](const zn::ImportResult& end) {
            m_result = end;
            loop.quit();
        });
        importer.import({file, false, {}, {}, true});
        loop.exec();
    }
    ~StructureImport() { m_result.node = osg::NodePtr(); }

    const zn::ImportResult& result() const { return m_result; }

    /// Of all places by the names on the path to them, a slash between two.
    std::multimap<QString, osg::Vec3f> places() const
    {
        std::multimap<QString, osg::Vec3f> places;
        const osg::NodePtr graph = m_result.node->getChild(0);
        for (unsigned i = 0; i < graph->getNChildren(); ++i)
            note(graph->getChild(i), {}, osg::Matrix(), places);
        return places;
    }

private:
    /// Below the node of a place stands that of its part, and below it further places.
    static void note(const osg::NodePtr& node, const QString& above, const osg::Matrix& outer,
                     std::multimap<QString, osg::Vec3f>& places)
    {
        const auto transform = osg::fcCast<osg::Transform>(node->getCore());
        if (!transform || osg::fcCast<osg::ExtReference>(node->getCore()))
            return;
        const osg::Matrix world = outer * transform->getMatrix();
        const QString path = above + QLatin1Char('/') + text(osg::getName(node));
        places.emplace(path, osg::Vec3f{world[12], world[13], world[14]});
        const osg::NodePtr part = node->getNChildren() > 0 ? node->getChild(0) : osg::NodePtr();
        for (unsigned i = 0; part && i < part->getNChildren(); ++i)
            note(part->getChild(i), path, world, places);
    }

    zn::StandaloneSession m_session;
    zn::ImportResult m_result;
};

class PlmxmlCorpusTest : public testing::TestWithParam<const char*>
{
protected:
    void SetUp() override
    {
        if (!QFile::exists(folder() + text("EXPECTED.json")))
            GTEST_SKIP() << "ZN_CORPUS names no folder with plmxml-real in it";
    }
};

TEST_P(PlmxmlCorpusTest, TheStructureHasTheFiguresOfTheXml)
{
    const QJsonObject expected = expectedFigures()[text(GetParam())].toObject();
    ASSERT_FALSE(expected.isEmpty());
    const StructureImport import(QFileInfo(folder() + text(GetParam())).canonicalFilePath());
    ASSERT_TRUE(import.result().document) << import.result().error.toStdString();
    const zn::DocumentStructure& facts = *import.result().document;
    EXPECT_EQ(import.result().state, znCADFileTypes::JobSucceeded);
    EXPECT_EQ(facts.treeFrom, expected[text("tree_from")].toString());
    EXPECT_EQ(double(facts.roots), expected[text("roots")].toDouble());
    EXPECT_EQ(facts.occurrences, expected[text("occurrences_in_tree")].toDouble());
    EXPECT_EQ(facts.leaves, expected[text("leaf_occurrences")].toDouble());
    EXPECT_EQ(facts.hiddenLeaves, expected[text("hidden_occurrences")].toDouble());
    EXPECT_EQ(double(facts.depth), expected[text("max_depth")].toDouble());
    EXPECT_EQ(double(facts.instances), expected[text("instances")].toDouble());
    EXPECT_EQ(double(facts.parts), expected[text("distinct_parts")].toDouble());
    EXPECT_EQ(double(facts.userValues), expected[text("attributes")].toDouble());
    EXPECT_EQ(double(facts.materials), expected[text("materials")].toDouble());
    EXPECT_EQ(double(facts.duplicateIds), expected[text("duplicate_ids")].toDouble());
    EXPECT_EQ(double(facts.danglingCount), expected[text("dangling_references")].toDouble());
    EXPECT_EQ(facts.shapePlaces, expected[text("places_with_a_shape")].toDouble());
    EXPECT_EQ(facts.hasNoUnits, expected[text("unit")].toString() != text("metres"));
}

TEST_P(PlmxmlCorpusTest, EachFileIsShownAtItsPlaces)
{
    const StructureImport import(QFileInfo(folder() + text(GetParam())).canonicalFilePath());
    ASSERT_TRUE(import.result().document);
    std::map<QString, double> places;
    for (const zn::StructureFile& file : import.result().document->files)
        places[file.path] = file.places;
    std::map<QString, double> expected;
    for (const QJsonValue& file : expectedFigures()[text(GetParam())].toObject()[text("geometry_files")].toArray())
        expected[file[text("path")].toString()] = file[text("shown_at_places")].toDouble();
    EXPECT_EQ(places.size(), expected.size());
    for (const auto& [path, count] : expected)
        EXPECT_EQ(places[path], count) << path.toStdString();
}

TEST_P(PlmxmlCorpusTest, PlacesStandWhereTheXmlPutsThem)
{
    const StructureImport import(QFileInfo(folder() + text(GetParam())).canonicalFilePath());
    ASSERT_TRUE(import.result().node);
    const std::multimap<QString, osg::Vec3f> places = import.places();
    const QJsonArray expected = expectedFigures()[text(GetParam())].toObject()[text("world_translation_mm")].toArray();
    EXPECT_FALSE(expected.isEmpty());
    for (const QJsonValue& each : expected) {
        QString path;
        for (const QJsonValue& name : each[text("path")].toArray())
            path += QLatin1Char('/') + name.toString();
        const QJsonArray xyz = each[text("xyz")].toArray();
        const auto [begin, end] = places.equal_range(path);
        const bool isThere = std::any_of(begin, end, [&xyz](const auto& place) {
            const osg::Vec3f& at = place.second;
            return std::abs(at.x - xyz[0].toDouble()) < 0.01 && std::abs(at.y - xyz[1].toDouble()) < 0.01 &&
                   std::abs(at.z - xyz[2].toDouble()) < 0.01;
        });
        EXPECT_TRUE(isThere) << path.toStdString() << ", which is there " << std::distance(begin, end) << " times";
    }
}

INSTANTIATE_TEST_SUITE_P(Documents, PlmxmlCorpusTest,
                         testing::Values("pdm_2007_car.xml", "session_2005_externals.plmxml", "cad_conveyor.plmxml",
                                         "auto_door.plmxml", "line_layout_mm.plmxml", "rack_stl_vrml.plmxml",
                                         "../plmxml/pdm_bom_export_2025.plmxml", "../plmxml/parts_instances_2017.xml",
                                         "../plmxml/variants_occurrences.plmxml"));

/// A document whose part files are there, and how many of its places have a shape.
struct Whole {
    const char* file;
    double places;
    friend void PrintTo(const Whole& whole, std::ostream* out) { *out << whole.file; }
};

class WholePlmxmlCorpusTest : public testing::TestWithParam<Whole>
{
};

TEST_P(WholePlmxmlCorpusTest, ComesInWhole)
{
    const QString file = folder() + text(GetParam().file);
    if (!QFile::exists(file))
        GTEST_SKIP() << "ZN_CORPUS names no folder with plmxml-real in it";
    const corpustest::Import import = corpustest::import(file, "2");
    EXPECT_EQ(import.result.state, znCADFileTypes::JobSucceeded) << import.result.error.toStdString();
    EXPECT_TRUE(import.result.missing.empty());
    ASSERT_TRUE(import.result.document);
    EXPECT_EQ(import.result.document->shapePlaces, GetParam().places);
    std::size_t loaded = 0;
    for (std::size_t at = import.tree.find(".jt', state 2"); at != std::string::npos;
         at = import.tree.find(".jt', state 2", at + 1))
        ++loaded;
    EXPECT_EQ(double(loaded), GetParam().places);
}

INSTANTIATE_TEST_SUITE_P(Documents, WholePlmxmlCorpusTest,
                         testing::Values(Whole{"pdm_2007_car.xml", 20}, Whole{"session_2005_externals.plmxml", 18}));

} // namespace
