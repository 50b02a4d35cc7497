#include "cad/xml/CADDocument.h"

#include "tests/cad/xml/ModelTest.h"

#include <map>
#include <sstream>

namespace HB::XML::CAD
{

namespace
{

using Names = std::vector<std::string>;

const Names elementNames = {"PLMXML",      "ProductDef",  "InstanceGraph", "Instance",       "ProductInstance",
                            "Part",        "Material",    "Transform",     "Representation", "ProductRevisionView",
                            "CompoundRep", "ProductView", "Occurrence",    "UserData",       "UserValue",
                            "UserList",    "Item"};

/// One way from the root to an element with each name.
const std::map<std::string, Names> wayTo = {
    {"ProductDef", {}},
    {"InstanceGraph", {"InstanceGraph"}},
    {"Instance", {"InstanceGraph", "Instance"}},
    {"ProductInstance", {"InstanceGraph", "ProductInstance"}},
    {"Part", {"Part"}},
    {"ProductRevisionView", {"ProductRevisionView"}},
    {"Representation", {"Representation"}},
    {"CompoundRep", {"Representation", "CompoundRep"}},
    {"Transform", {"InstanceGraph", "Transform"}},
    {"Material", {"Material"}},
    {"ProductView", {"ProductView"}},
    {"Occurrence", {"Occurrence"}},
    {"UserData", {"UserData"}},
    {"UserValue", {"UserData", "UserValue"}},
    {"UserList", {"UserData", "UserValue", "UserList"}},
    {"Item", {"UserData", "UserValue", "UserList", "Item"}},
};

/// The children that each element accepts, in the order of elementNames.
const std::map<std::string, Names> acceptedChildren = {
    {"ProductDef",
     {"InstanceGraph", "Part", "Material", "Representation", "ProductRevisionView", "ProductView", "Occurrence",
      "UserData"}},
    {"InstanceGraph", {"Instance", "ProductInstance", "Part", "Transform", "ProductRevisionView"}},
    {"Instance", {"Transform", "UserData"}},
    {"ProductInstance", {"Transform", "UserData"}},
    {"Part", {"Material", "Representation", "Occurrence", "UserData"}},
    {"ProductRevisionView", {"Material", "Representation", "Occurrence", "UserData"}},
    {"Representation", {"Material", "Transform", "CompoundRep", "UserData"}},
    {"CompoundRep", {"Material", "Transform", "CompoundRep", "UserData"}},
    {"Transform", {"UserData"}},
    {"Material", {"UserData"}},
    {"ProductView", {"Occurrence", "UserData"}},
    {"Occurrence", {"Material", "Transform", "Occurrence", "UserData"}},
    {"UserData", {"UserData", "UserValue"}},
    {"UserValue", {"UserData", "UserList"}},
    {"UserList", {"UserData", "Item"}},
    {"Item", {"UserData"}},
};

/// A file with one element at the end of a way, in which `child` stands, with the child's name as its id.
std::string fileWith(const Names& way, const std::string& child)
{
    std::ostringstream file;
    file << "<PLMXML><ProductDef>";
    for (const auto& name : way)
        file << '<' << name << '>';
    file << '<' << child << " id='" << child << "'/>";
    for (auto name = way.rbegin(); name != way.rend(); ++name)
        file << "</" << *name << '>';
    file << "</ProductDef></PLMXML>";
    return file.str();
}

const CADBase& endOf(const Names& way, const CADBase& start)
{
    const auto* element = &start;
    for (std::size_t i = 0; i < way.size(); ++i)
        element = TestAccess::children(*element).at(0);
    return *element;
}

} // namespace

class AcceptedSubsetTest : public ModelTest, public testing::WithParamInterface<std::string>
{
};

TEST_P(AcceptedSubsetTest, ElementTakesItsOwnChildrenAndSkipsAllOthers)
{
    const auto& way = wayTo.at(GetParam());
    Names accepted;
    for (const auto& child : elementNames) {
        CADDocument document;
        document.load(write("pair.plmxml", fileWith(way, child)));
        const auto made = TestAccess::children(endOf(way, *document.getProductDef(0)));
        ASSERT_LE(made.size(), 1U);
        if (!made.empty()) {
            EXPECT_EQ(made[0]->getId(), child);
            accepted.push_back(child);
        }
    }
    EXPECT_EQ(accepted, acceptedChildren.at(GetParam()));
}

TEST_P(AcceptedSubsetTest, ElementReadsIdAndName)
{
    const auto& way = wayTo.at(GetParam());
    auto file = fileWith(way, "Skipped");
    const auto tag = "<" + GetParam() + ">";
    file.replace(file.rfind(tag), tag.size(), "<" + GetParam() + " name='Name Ä' id='given'>");
    load(file);
    const auto& element = endOf(way, *m_document.getProductDef(0));
    EXPECT_EQ(element.getId(), "given");
    EXPECT_EQ(element.getName(), "Name Ä");
}

INSTANTIATE_TEST_SUITE_P(Elements, AcceptedSubsetTest,
                         testing::ValuesIn(Names(elementNames.begin() + 1, elementNames.end())),
                         [](const auto& param) { return param.param; });

using AcceptedSubset = ModelTest;

TEST_F(AcceptedSubset, NamespacePrefixesAreNotMatched)
{
    auto& productDef = loadProductDef("<plm:Part id='p'/><Part xmlns='x' plm:id='q' plm:name='n'/>");
    ASSERT_EQ(TestAccess::children(productDef).size(), 1U);
    EXPECT_EQ(TestAccess::children(productDef)[0]->getId(), "");
    EXPECT_EQ(TestAccess::children(productDef)[0]->getName(), "");
}

TEST_F(AcceptedSubset, SkippedElementTakesItsSubtreeWithIt)
{
    loadProductDef("<CompoundRep><Material id='m'/></CompoundRep><Unknown><Part id='p'/></Unknown>"
                   "<Transform>word</Transform>");
    EXPECT_EQ(m_document.findMaterial("m"), nullptr);
    EXPECT_EQ(m_document.findPart("p"), nullptr);
}

TEST_F(AcceptedSubset, CommentsInstructionsAndTextsAreSkipped)
{
    auto& productDef = loadProductDef("text<!-- <Part id='a'/> --><?pi <Part id='b'/?><![CDATA[<Part id='c'/>]]>"
                                      "<Part id='d'>text</Part>text");
    ASSERT_EQ(TestAccess::children(productDef).size(), 1U);
    EXPECT_EQ(TestAccess::children(productDef)[0]->getId(), "d");
}

TEST_F(AcceptedSubset, ReferencesMayLeadToLaterElements)
{
    loadProductDef("<InstanceGraph rootRefs='#i'><Instance id='i' partRef='#p'/></InstanceGraph><Part id='p'/>");
    const auto* instance = m_document.findInstance(m_document.getProductDef(0)->getInstanceGraph(0)->getRootRefs()[0]);
    ASSERT_NE(instance, nullptr);
    EXPECT_EQ(m_document.findPart(instance->getPartRef())->getId(), "p");
}

} // namespace HB::XML::CAD
