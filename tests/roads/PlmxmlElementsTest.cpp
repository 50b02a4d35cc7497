// Documents that refer to single elements of other ones.

#include "importer/ElementDocuments.h"
#include "importer/NestedDocuments.h"
#include "importer/SceneText.h"
#include "tests/roads/PlmxmlImport.h"

using namespace znCADFileTypes;
using testing::ElementsAre;
using testing::IsEmpty;

namespace
{

class PlmxmlElementsTest : public PlmxmlImport
{
protected:
    PlmxmlElementsTest() { writeTriangle(QStringLiteral("plate.obj")); }

    /// Instances "I0", "I1" ... of what these references lead to, and further content of the product definition.
    QString documentTo(const std::vector<std::string>& references, const char* name = "car.plmxml",
                       const std::string& more = {})
    {
        std::string roots, instances;
        for (std::size_t i = 0; i < references.size(); ++i) {
            const std::string n = std::to_string(i);
            roots += " i" + n;
            instances += "<Instance id='i" + n + "' name='I" + n + "' partRef='" + references[i] +
                         "'><Transform type='translate'>" + std::to_string(i + 1) + " 0 0</Transform></Instance>";
        }
        const std::string text = "<PLMXML><ProductDef><InstanceGraph rootRefs='" + roots + "'>" + instances +
                                 "</InstanceGraph>" + more + "</ProductDef></PLMXML>";
        return write(QString::fromUtf8(name), QByteArray::fromStdString(text));
    }

    /// A car with an axle of two wheels, and a body.
    void writeOther()
    {
        const std::string shape = "<Representation format='OBJ' location='plate.obj'/>";
        write(QStringLiteral("other.plmxml"),
              QByteArray::fromStdString(
                  "<PLMXML><ProductDef><InstanceGraph rootRefs='top'><Instance id='top' partRef='#car'/>"
                  "<Instance id='a' name='Axle 1' partRef='#axle'/><Instance id='b' name='Body 1' partRef='#body'/>"
                  "<Instance id='l' name='Left' partRef='#wheel'/><Instance id='r' name='Right' partRef='#wheel'/>"
                  "</InstanceGraph><Part id='car' name='Car' instanceRefs='a b'/>"
                  "<Part id='axle' name='Axle' instanceRefs='l r'/><Part id='body' name='Body' type='solid'>" +
                  shape + "</Part><Part id='wheel' name='Wheel' type='solid'>" + shape +
                  "</Part></ProductDef></PLMXML>"));
    }

    static std::size_t shapesOf(const zn::ImportResult& result) { return zn::countScene(result.node).placedGeometries; }
    std::string pathOf(const char* name) const { return path(QString::fromUtf8(name)).toStdString(); }
};

TEST_F(PlmxmlElementsTest, OnlyTheStructureBelowAnElementComesIn)
{
    writeOther();
    const zn::ImportResult result = import(documentTo({"other.plmxml#axle"}));
    EXPECT_EQ(result.state, JobSucceeded);
    EXPECT_THAT(result.missing, IsEmpty());
    ASSERT_TRUE(result.node);
    EXPECT_EQ(shapesOf(result), 2u);
    const osg::NodePtr reference = partOf(result, 0)->getChild(0);
    EXPECT_EQ(nameOf(reference), "other");
    EXPECT_EQ(referenceOf(reference)->getSourceFile()->getPath(), pathOf("other.plmxml#axle"));
    const osg::NodePtr axle = reference->getChild(0)->getChild(0);
    EXPECT_EQ(nameOf(axle), "Axle");
    EXPECT_THAT(childNames(axle->getChild(0)), ElementsAre("Left", "Right"));
}

TEST_F(PlmxmlElementsTest, SeveralElementsOfOneDocumentAreSeveralStructures)
{
    writeOther();
    EXPECT_EQ(shapesOf(import(documentTo({"other.plmxml#axle", "other.plmxml#body", "other.plmxml#axle"}))), 5u);
}

TEST_F(PlmxmlElementsTest, ADocumentMayReferToItsOwnElementsByItsName)
{
    const zn::ImportResult result = import(documentTo({"car.plmxml#p"}, "car.plmxml",
                                                      "<Part id='p' type='solid'><Representation format='OBJ' "
                                                      "location='plate.obj'/></Part>"));
    EXPECT_EQ(result.state, JobSucceeded);
    EXPECT_EQ(shapesOf(result), 1u);
}

TEST_F(PlmxmlElementsTest, AnElementThatIsNotThereIsMissing)
{
    writeOther();
    const zn::ImportResult result = import(documentTo({"other.plmxml#gone", "none.plmxml#x", "other.plmxml#body"}));
    EXPECT_EQ(result.state, JobPartial);
    EXPECT_EQ(
        missingTexts(result),
        (QStringList{QStringLiteral("none.plmxml: there is no such file; line 1 names it \"none.plmxml#x\" [I1/I1]"),
                     QStringLiteral("other.plmxml#gone: the document has no element \"gone\" that a structure "
                                    "begins with [I0/I0]")}));
    EXPECT_EQ(shapesOf(result), 1u);
}

TEST_F(PlmxmlElementsTest, DocumentsMayReferToEachOtherWithoutARing)
{
    documentTo({"other.plmxml#q"}, "car.plmxml",
               "<Part id='p' type='solid'><Representation format='OBJ' "
               "location='plate.obj'/></Part>");
    documentTo({}, "other.plmxml", "<Part id='q' instanceRefs='j'/><Instance id='j' partRef='car.plmxml#p'/>");
    const zn::ImportResult result = import(path(QStringLiteral("car.plmxml")));
    EXPECT_EQ(result.state, JobSucceeded);
    EXPECT_EQ(shapesOf(result), 1u);
}

TEST_F(PlmxmlElementsTest, ARingOfElementsIsRefusedWhereItCloses)
{
    documentTo({"other.plmxml#q"}, "car.plmxml",
               "<Part id='p' name='P' instanceRefs='k'/><Instance id='k' name='K' partRef='other.plmxml#q'/>");
    documentTo({}, "other.plmxml",
               "<Part id='q' name='Q' instanceRefs='j'/><Instance id='j' name='J' "
               "partRef='car.plmxml#p'/>");
    const zn::ImportResult result = import(path(QStringLiteral("car.plmxml")));
    EXPECT_EQ(result.state, JobPartial);
    ASSERT_EQ(result.missing.size(), 1u);
    EXPECT_EQ(result.missing[0].file.toStdString(), pathOf("other.plmxml#q"));
    EXPECT_EQ(result.missing[0].reason, QStringLiteral("the document leads back to itself"));
    for (const QString& line : result.messages)
        EXPECT_FALSE(line.contains(QStringLiteral("elements-"))) << line.toStdString();
}

TEST_F(PlmxmlElementsTest, AChainOfElementsEndsAtTheLimit)
{
    std::string parts;
    for (int i = 0; i < 40; ++i) {
        const std::string n = std::to_string(i);
        parts += "<Part id='p" + n + "' instanceRefs='k" + n + "'/><Instance id='k" + n + "' partRef='car.plmxml#p" +
                 std::to_string(i + 1) + "'/>";
    }
    const zn::ImportResult result = import(documentTo({"car.plmxml#p0"}, "car.plmxml", parts));
    EXPECT_EQ(result.state, JobPartial);
    ASSERT_EQ(result.missing.size(), 1u);
    EXPECT_EQ(result.missing[0].reason, QStringLiteral("more than 16 documents are nested"));
}

TEST_F(PlmxmlElementsTest, ElementsOfDocumentsThatMayNotBeReadHaveNoFile)
{
    importer::ElementDocuments elements;
    const importer::ElementDocuments::Element inside{path(QStringLiteral("car.plmxml")), QStringLiteral("x")};
    const importer::ElementDocuments::Element outside{QStringLiteral("/elsewhere/car.plmxml"), QStringLiteral("x")};
    files::DocumentRules rules{
        {files::references::Rule::Below, m_folder.path().toStdString(), {}}, inside.document, {}};
    elements.add({inside, outside, inside}, rules);
    const QString folder = elements.folder();
    EXPECT_TRUE(elements.find(inside.standIn(folder)));
    EXPECT_TRUE(QFile::exists(inside.standIn(folder)));
    EXPECT_FALSE(elements.find(outside.standIn(folder)));
    EXPECT_FALSE(QFile::exists(outside.standIn(folder)));
    EXPECT_EQ(QFileInfo(inside.standIn(folder)).fileName(), QStringLiteral("car.plmxml"));
    EXPECT_NE(QFileInfo(inside.standIn(folder)).path(), QFileInfo(outside.standIn(folder)).path());
}

TEST_F(PlmxmlElementsTest, MoreElementsThanAnImportMayHaveAreMissing)
{
    writeOther();
    std::vector<std::string> references;
    for (int i = 0; i <= importer::ElementDocuments::maxCount; ++i)
        references.push_back("other.plmxml#x" + std::to_string(i));
    const zn::ImportResult result = import(documentTo(references));
    ASSERT_EQ(result.missing.size(), references.size());
    EXPECT_EQ(missingTexts(result)
                  .filter(QStringLiteral("the import names more than 1000 elements of other documents"))
                  .size(),
              1);
}

} // namespace
