#include "cad/xml/CADGrammar.h"

#include "cad/xml/CADMaterial.h"
#include "cad/xml/CADRepresentation.h"
#include "cad/xml/CADTransform.h"
#include "tests/cad/xml/ModelFixture.h"

#include <fstream>
#include <map>
#include <set>
#include <sstream>

namespace HB::XML::CAD
{

namespace
{

using Names = std::vector<std::string>;

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

Names elementNames()
{
    Names names;
    for (const CADElementRule& rule : grammar())
        names.emplace_back(rule.name);
    return names;
}

/// Every attribute that any element has.
std::set<std::string> attributeNames()
{
    std::set<std::string> names;
    for (const CADElementRule& rule : grammar())
        for (const CADAttributeRule& attribute : rule.attributes)
            names.emplace(attribute.name);
    return names;
}

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

/// A file with one element, with this attribute, at the end of a way.
std::string fileWithAttribute(const std::string& name, const std::string& attribute)
{
    std::string file = fileWith(wayTo.at(name), "Skipped");
    const std::string tag = "<" + name + ">";
    return file.replace(file.rfind(tag), tag.size(), "<" + name + " id='e' " + attribute + ">");
}

/// A value that no element has by default.
std::string valueFor(const std::string& element, const std::string& attribute)
{
    static const std::map<std::string, std::string> types = {
        {"Part", "solid"},       {"ProductRevisionView", "wire"}, {"Representation", "flat"},
        {"CompoundRep", "weld"}, {"Transform", "scale"},          {"UserValue", "reals"}};
    static const std::set<std::string> colours = {"ambient", "diffuse", "specular", "emissive"};
    if (attribute == "type" && types.count(element))
        return types.at(element);
    if (attribute == "shininess" || attribute == "alpha")
        return "0.375";
    return attribute == "state" ? "active" : colours.count(attribute) ? "0.25 0.375 0.5" : "aimed-at";
}

template <class Value>
void put(std::ostream& text, const std::vector<Value>& values)
{
    for (const Value& value : values)
        text << value << ' ';
    text << '|';
}

/// All that the attributes of an element have made of it.
std::string stateOf(const CADBase& element)
{
    using Access = ModelTestAccess;
    std::ostringstream text;
    text << element.getName() << '|';
    if (const auto* graph = dynamic_cast<const CADInstanceGraph*>(&element)) {
        put(text, graph->getRootRefs());
    } else if (const auto* instance = dynamic_cast<const CADInstance*>(&element)) {
        text << instance->getPartRef() << '|' << instance->getMaterialRef() << '|' << instance->getTransformRef()
             << '|';
        put(text, Access::representationRefs(*instance));
    } else if (const auto* part = dynamic_cast<const CADPart*>(&element)) {
        text << static_cast<int>(part->getType()) << '|' << Access::materialRef(*part) << '|';
        put(text, part->getInstanceRefs());
        put(text, part->getRepresentationRefs());
        put(text, Access::partRefs(*part));
    } else if (const auto* representation = dynamic_cast<const CADRepresentation*>(&element)) {
        text << static_cast<int>(representation->getType()) << '|' << representation->getFormat() << '|'
             << representation->getLocation() << '|' << representation->getTransformRef();
    } else if (const auto* transform = dynamic_cast<const CADTransform*>(&element)) {
        text << static_cast<int>(transform->getType());
    } else if (const auto* material = dynamic_cast<const CADMaterial*>(&element)) {
        for (const auto& colour :
             {material->getAmbient(), material->getDiffuse(), material->getSpecular(), material->getEmissive()})
            put(text, colour);
        text << material->getShininess() << '|' << material->getAlpha();
    } else if (const auto* view = dynamic_cast<const CADProductView*>(&element)) {
        text << view->isActive() << '|';
        put(text, Access::rootRefs(*view));
    } else if (const auto* occurrence = dynamic_cast<const CADOccurrence*>(&element)) {
        text << occurrence->getMaterialRef() << '|' << occurrence->getTransformRef() << '|';
        put(text, occurrence->getInstanceRefs());
        put(text, Access::occurrenceRefs(*occurrence));
    } else if (const auto* value = dynamic_cast<const CADUserValue*>(&element)) {
        text << static_cast<int>(value->getType()) << '|' << value->getValue() << '|' << Access::format(*value);
    }
    return text.str();
}

/// The rows of the table of elements in the page for users: what stands between backticks, cell by cell.
std::vector<std::vector<std::string>> pageRows()
{
    std::ifstream page(ZN_PLMXML_PAGE);
    std::vector<std::vector<std::string>> rows;
    for (std::string line; std::getline(page, line);) {
        if (line.rfind("| Element | Below |", 0) == 0) {
            std::getline(page, line);
            while (std::getline(page, line) && line.rfind("| `", 0) == 0) {
                std::vector<std::string> cells;
                std::istringstream text(line.substr(1));
                for (std::string cell; std::getline(text, cell, '|');)
                    cells.push_back(cell);
                rows.push_back(cells);
            }
        }
    }
    return rows;
}

std::set<std::string> quoted(const std::string& cell)
{
    std::set<std::string> words;
    for (std::size_t begin = cell.find('`'); begin != std::string::npos;) {
        const std::size_t end = cell.find('`', begin + 1);
        words.insert(cell.substr(begin + 1, end - begin - 1));
        begin = cell.find('`', end + 1);
    }
    return words;
}

/// The parents that the cell of a row names.
std::set<std::string> parentsIn(const std::string& cell)
{
    std::set<std::string> parents = quoted(cell);
    if (cell.find("every element but") != std::string::npos) {
        const Names all = elementNames();
        std::set<std::string> others(all.begin(), all.end());
        for (const std::string& excepted : parents)
            others.erase(excepted);
        return others;
    }
    if (cell.find("parts") != std::string::npos)
        parents.insert({"Part", "ProductRevisionView"});
    if (cell.find("instances") != std::string::npos)
        parents.insert({"Instance", "ProductInstance"});
    return parents;
}

std::set<std::string> parentsOf(const std::string& child)
{
    std::set<std::string> parents;
    for (const CADElementRule& rule : grammar())
        if (takesChild(rule.name, child))
            parents.emplace(rule.name);
    return child == "ProductDef" ? std::set<std::string>{"PLMXML"} : parents;
}

std::set<std::string> usedAttributesOf(const std::string& element)
{
    std::set<std::string> names;
    for (const CADAttributeRule& attribute : findElementRule(element)->attributes)
        if (attribute.value != CADValue::Unused)
            names.emplace(attribute.name);
    return names;
}

const CADBase& endOf(const Names& way, const CADBase& start)
{
    const auto* element = &start;
    for (std::size_t i = 0; i < way.size(); ++i)
        element = ModelTestAccess::children(*element).at(0);
    return *element;
}

} // namespace

class CADGrammarTest : public ModelTest, public testing::WithParamInterface<std::string>
{
};

TEST_P(CADGrammarTest, ElementTakesItsOwnChildrenAndSkipsAllOthers)
{
    const auto& way = wayTo.at(GetParam());
    std::set<std::string> accepted;
    Names children = elementNames();
    children.emplace_back("PLMXML");
    for (const auto& child : children) {
        CADDocument document;
        document.load(write("pair.plmxml", fileWith(way, child)));
        const auto made = ModelTestAccess::children(endOf(way, *document.getProductDef(0)));
        ASSERT_LE(made.size(), 1U);
        if (!made.empty()) {
            EXPECT_EQ(made[0]->getId(), child);
            accepted.insert(child);
        }
    }
    const CADElementRule& rule = *findElementRule(GetParam());
    EXPECT_EQ(accepted, std::set<std::string>(rule.children.begin(), rule.children.end()));
}

TEST_P(CADGrammarTest, ElementReadsItsOwnAttributesAndSkipsAllOthers)
{
    const std::string& name = GetParam();
    const auto stateWith = [&](const std::string& attribute) {
        CADDocument document;
        document.load(write("attribute.plmxml", fileWithAttribute(name, attribute)));
        return stateOf(endOf(wayTo.at(name), *document.getProductDef(0)));
    };
    const std::string before = stateWith("");
    std::set<std::string> read, expected;
    for (const std::string& attribute : attributeNames())
        if (stateWith(attribute + "='" + valueFor(name, attribute) + "'") != before)
            read.insert(attribute);
    for (const CADAttributeRule& attribute : findElementRule(name)->attributes)
        expected.emplace(attribute.name);
    EXPECT_EQ(read, expected);
}

TEST_P(CADGrammarTest, ElementReadsIdAndName)
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

INSTANTIATE_TEST_SUITE_P(Elements, CADGrammarTest, testing::ValuesIn(elementNames()),
                         [](const auto& param) { return param.param; });

using CADGrammar = ModelTest;

TEST_F(CADGrammar, NamespacePrefixesAreNotMatched)
{
    auto& productDef = loadProductDef("<plm:Part id='p'/><Part xmlns='x' plm:id='q' plm:name='n'/>");
    ASSERT_EQ(ModelTestAccess::children(productDef).size(), 1U);
    EXPECT_EQ(ModelTestAccess::children(productDef)[0]->getId(), "");
    EXPECT_EQ(ModelTestAccess::children(productDef)[0]->getName(), "");
}

TEST_F(CADGrammar, SkippedElementTakesItsSubtreeWithIt)
{
    loadProductDef("<CompoundRep><Material id='m'/></CompoundRep><Unknown><Part id='p'/></Unknown>"
                   "<Transform>word</Transform>");
    EXPECT_EQ(m_document.findMaterial("m"), nullptr);
    EXPECT_EQ(m_document.findPart("p"), nullptr);
}

TEST_F(CADGrammar, CommentsInstructionsAndTextsAreSkipped)
{
    auto& productDef = loadProductDef("text<!-- <Part id='a'/> --><?pi <Part id='b'/?><![CDATA[<Part id='c'/>]]>"
                                      "<Part id='d'>text</Part>text");
    ASSERT_EQ(ModelTestAccess::children(productDef).size(), 1U);
    EXPECT_EQ(ModelTestAccess::children(productDef)[0]->getId(), "d");
}

TEST_F(CADGrammar, ReferencesMayLeadToLaterElements)
{
    loadProductDef("<InstanceGraph rootRefs='#i'><Instance id='i' partRef='#p'/></InstanceGraph><Part id='p'/>");
    const auto* instance = m_document.findInstance(m_document.getProductDef(0)->getInstanceGraph(0)->getRootRefs()[0]);
    ASSERT_NE(instance, nullptr);
    EXPECT_EQ(m_document.findPart(instance->getPartRef())->getId(), "p");
}

TEST(CADGrammarPage, TellsWhatTheModelTakes)
{
    std::set<std::string> told;
    for (const auto& cells : pageRows()) {
        ASSERT_GE(cells.size(), 3U);
        for (const std::string& element : quoted(cells[0])) {
            SCOPED_TRACE(element);
            ASSERT_NE(findElementRule(element), nullptr);
            EXPECT_TRUE(told.insert(element).second);
            EXPECT_EQ(parentsIn(cells[1]), parentsOf(element));
            EXPECT_EQ(quoted(cells[2]), usedAttributesOf(element));
        }
    }
    const Names all = elementNames();
    EXPECT_EQ(told, std::set<std::string>(all.begin(), all.end()));
}

} // namespace HB::XML::CAD
