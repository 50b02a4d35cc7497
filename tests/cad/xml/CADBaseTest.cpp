#include "cad/xml/CADBase.h"

#include "cad/xml/CADCompoundRef.h"
#include "cad/xml/CADInstanceGraph.h"
#include "cad/xml/CADMaterial.h"
#include "cad/xml/CADRepresentation.h"
#include "cad/xml/CADTransform.h"
#include "cad/xml/CADUserData.h"
#include "tests/cad/xml/ModelFixture.h"

#include <tinyxml.h>

#include <stdexcept>
#include <typeinfo>

namespace HB::XML::CAD
{

namespace
{

using Texts = std::vector<std::string>;

TiXmlElement parsed(const char* text)
{
    TiXmlDocument xml;
    xml.Parse(text);
    return *xml.RootElement();
}

/// Notes when it is destroyed.
struct Witness : CADBase {
    Witness(CADBase* parent, std::string name, Texts& destroyedElements)
        : CADBase(parent), label(std::move(name)), destroyed(destroyedElements)
    {
    }
    ~Witness() override { destroyed.push_back(label); }

    std::string label;
    Texts& destroyed;
};

/// Fails to construct once it is registered with its parent.
struct Unbuildable : CADBase {
    explicit Unbuildable(CADBase* parent) : CADBase(parent) { throw std::runtime_error("not built"); }
};

} // namespace

TEST(CADBase, RootHasNoParentAndKnowsItsDocument)
{
    CADDocument document;
    const CADProductDef root(&document);
    EXPECT_EQ(root.getParent(), nullptr);
    EXPECT_EQ(root.getDocument(), &document);
    EXPECT_EQ(root.getUserData(), nullptr);
    EXPECT_EQ(root.getName(), "");
    EXPECT_EQ(root.getId(), "");
}

TEST(CADBase, ChildIsRegisteredWithItsParentByItsConstructor)
{
    CADDocument document;
    CADProductDef root(&document);
    auto* first = new CADPart(&root);
    auto* second = new CADPart(&root);
    EXPECT_EQ(first->getParent(), &root);
    EXPECT_EQ(first->getDocument(), &document);
    EXPECT_EQ(ModelTestAccess::children(root), (std::vector<CADBase*>{first, second}));
}

TEST(CADBase, ChildOfNoParentBelongsToNobody)
{
    CADPart part(nullptr);
    EXPECT_EQ(part.getParent(), nullptr);
    EXPECT_EQ(part.getDocument(), nullptr);
    EXPECT_EQ(part.getRootProductDef(), nullptr);
}

TEST(CADBase, ChildrenAreDestroyedInTheirOrderEachWithItsOwn)
{
    Texts destroyed;
    {
        CADProductDef root(nullptr);
        auto* first = new Witness(&root, "first", destroyed);
        new Witness(&root, "second", destroyed);
        new Witness(first, "in first", destroyed);
        new Witness(&root, "third", destroyed);
    }
    EXPECT_EQ(destroyed, (Texts{"first", "in first", "second", "third"}));
}

TEST(CADBase, ChildWhoseConstructionFailsIsNotKept)
{
    CADProductDef root(nullptr);
    auto* kept = new CADPart(&root);
    EXPECT_THROW(new Unbuildable(&root), std::runtime_error);
    EXPECT_EQ(ModelTestAccess::children(root), std::vector<CADBase*>{kept});
}

TEST(CADBase, SetIdReplacesTheId)
{
    CADPart part(nullptr);
    part.setId("p9");
    EXPECT_EQ(part.getId(), "p9");
}

TEST(CADBase, RootProductDefIsFoundFromAnyDepth)
{
    CADDocument document;
    CADProductDef root(&document);
    auto* graph = new CADInstanceGraph(&root);
    auto* part = new CADPart(graph);
    EXPECT_EQ(part->getRootProductDef(), &root);
    EXPECT_EQ(root.getRootProductDef(), &root);
}

TEST(CADBase, RootOfAnotherClassIsNoProductDef)
{
    CADPart root(nullptr);
    auto* representation = new CADRepresentation(&root);
    EXPECT_EQ(representation->getRootProductDef(), nullptr);
}

TEST(CADBase, NameAndIdAreMatchedExactly)
{
    CADPart part(nullptr);
    part.CADBase::loadAttributes(parsed("<Part Name='A' ID='B' Id='C' x:id='D' names='E'/>"));
    EXPECT_EQ(part.getName(), "");
    EXPECT_EQ(part.getId(), "");
    part.CADBase::loadAttributes(parsed("<Part id='p1' other='x' name='Bolt &amp; Nut'/>"));
    EXPECT_EQ(part.getName(), "Bolt & Nut");
    EXPECT_EQ(part.getId(), "p1");
}

TEST(CADBase, EveryCreationOperationTakesItsOwnNamesOnly)
{
    const Texts names{"Instance",    "ProductInstance",
                      "Part",        "ProductRevisionView",
                      "Transform",   "Representation",
                      "CompoundRep", "UserData",
                      "UserValue",   "UserList",
                      "Item",        "InstanceGraph",
                      "Material",    "ProductView",
                      "Occurrence",  "ProductDef",
                      "PLMXML",      "part",
                      "PART",        "Parts",
                      "plm:Part",    "Instances",
                      "userData",    "UserListItem"};
    const auto takenBy = [&names](auto create) {
        Texts taken;
        for (const auto& name : names) {
            CADDocument document;
            CADProductDef parent(&document);
            const auto* made = (parent.*create)(TiXmlElement(name));
            EXPECT_EQ(ModelTestAccess::children(parent).size(), made ? 1U : 0U) << name;
            if (made)
                taken.push_back(name);
        }
        return taken;
    };
    EXPECT_EQ(takenBy(&CADBase::createInstance), (Texts{"Instance", "ProductInstance"}));
    EXPECT_EQ(takenBy(&CADBase::createPart), (Texts{"Part", "ProductRevisionView"}));
    EXPECT_EQ(takenBy(&CADBase::createTransform), Texts{"Transform"});
    EXPECT_EQ(takenBy(&CADBase::createRepresentation), Texts{"Representation"});
    EXPECT_EQ(takenBy(&CADBase::createCompoundRep), Texts{"CompoundRep"});
    EXPECT_EQ(takenBy(&CADBase::createUserData), Texts{"UserData"});
    EXPECT_EQ(takenBy(&CADBase::createUserValue), Texts{"UserValue"});
    EXPECT_EQ(takenBy(&CADBase::createUserList), Texts{"UserList"});
    EXPECT_EQ(takenBy(&CADBase::createUserListItem), Texts{"Item"});
    EXPECT_EQ(takenBy(&CADBase::createInstanceGraph), Texts{"InstanceGraph"});
    EXPECT_EQ(takenBy(&CADBase::createMaterial), Texts{"Material"});
    EXPECT_EQ(takenBy(&CADBase::createProductView), Texts{"ProductView"});
    EXPECT_EQ(takenBy(&CADBase::createOccurrence), Texts{"Occurrence"});
}

TEST(CADBase, CreatedChildrenRegisterInTheTableOfTheirKind)
{
    CADDocument document;
    CADProductDef parent(&document);
    const auto* instance = parent.createInstance(parsed("<Instance id='x'/>"));
    const auto* part = parent.createPart(parsed("<Part id='x'/>"));
    const auto* transform = parent.createTransform(parsed("<Transform id='x'/>"));
    const auto* representation = parent.createRepresentation(parsed("<Representation id='x'/>"));
    const auto* userList = parent.createUserList(parsed("<UserList id='x'/>"));
    const auto* material = parent.createMaterial(parsed("<Material id='x'/>"));
    const auto* occurrence = parent.createOccurrence(parsed("<Occurrence id='x'/>"));
    const auto* view = parent.createProductView(parsed("<ProductView id='x'/>"));
    EXPECT_EQ(document.findInstance("x"), instance);
    EXPECT_EQ(document.findPart("x"), part);
    EXPECT_EQ(document.findTransform("x"), transform);
    EXPECT_EQ(document.findRepresentation("x"), representation);
    EXPECT_EQ(ModelTestAccess::findUserList(document, "x"), userList);
    EXPECT_EQ(document.findMaterial("x"), material);
    EXPECT_EQ(document.findOccurrence("x"), occurrence);
    EXPECT_EQ(document.getActiveProductView(), view);
}

TEST(CADBase, CompoundRepRegistersAmongTheRepresentations)
{
    CADDocument document;
    CADProductDef parent(&document);
    const auto* compound = parent.createCompoundRep(parsed("<CompoundRep id='c'/>"));
    EXPECT_EQ(document.findRepresentation("#c"), compound);
}

TEST(CADBase, ChildrenWithoutDocumentAreMadeAndNotRegistered)
{
    CADPart parent(nullptr);
    const auto* representation =
        parent.createRepresentation(parsed("<Representation><Transform>1</Transform></Representation>"));
    ASSERT_NE(representation, nullptr);
    EXPECT_EQ(representation->getDocument(), nullptr);
    EXPECT_EQ(representation->getParent(), &parent);
}

TEST(CADBase, MissingIdsAreGeneratedFromParentIdSuffixAndAddress)
{
    CADDocument document;
    CADProductDef parent(&document);
    parent.setId("top");
    EXPECT_TRUE(isGeneratedId(*parent.createTransform(TiXmlElement("Transform")), "top", "_tr"));
    EXPECT_TRUE(isGeneratedId(*parent.createRepresentation(TiXmlElement("Representation")), "top", "_rep"));
    EXPECT_TRUE(isGeneratedId(*parent.createCompoundRep(TiXmlElement("CompoundRep")), "top", "_cor"));
    EXPECT_TRUE(isGeneratedId(*parent.createUserData(TiXmlElement("UserData")), "top", "_ud"));
    EXPECT_TRUE(isGeneratedId(*parent.createUserValue(TiXmlElement("UserValue")), "top", "_uv"));
    EXPECT_TRUE(isGeneratedId(*parent.createUserList(TiXmlElement("UserList")), "top", "_ul"));
    EXPECT_TRUE(isGeneratedId(*parent.createUserListItem(TiXmlElement("Item")), "top", "_uli"));
    EXPECT_TRUE(isGeneratedId(*parent.createMaterial(TiXmlElement("Material")), "top", "_mat"));
    EXPECT_TRUE(isGeneratedId(*parent.createProductView(TiXmlElement("ProductView")), "top", "_pv"));
    EXPECT_TRUE(isGeneratedId(*parent.createOccurrence(TiXmlElement("Occurrence")), "top", "_o"));
    EXPECT_TRUE(isGeneratedId(*parent.createInstance(TiXmlElement("Instance")), "top", "inst"));
}

TEST(CADBase, PartAndInstanceGraphKeepAnEmptyId)
{
    CADDocument document;
    CADProductDef parent(&document);
    parent.setId("top");
    EXPECT_EQ(parent.createPart(TiXmlElement("Part"))->getId(), "");
    EXPECT_EQ(parent.createInstanceGraph(TiXmlElement("InstanceGraph"))->getId(), "");
}

TEST(CADBase, GivenIdIsKept)
{
    CADDocument document;
    CADProductDef parent(&document);
    EXPECT_EQ(parent.createOccurrence(parsed("<Occurrence id='mine'/>"))->getId(), "mine");
    EXPECT_EQ(parent.createInstance(parsed("<Instance id='mine'/>"))->getId(), "mine");
}

TEST(CADBase, GeneratedIdsOfSiblingsDiffer)
{
    CADDocument document;
    CADProductDef parent(&document);
    const auto* first = parent.createMaterial(TiXmlElement("Material"));
    const auto* second = parent.createMaterial(TiXmlElement("Material"));
    EXPECT_EQ(document.findMaterial(first->getId()), first);
    EXPECT_EQ(document.findMaterial(second->getId()), second);
}

TEST(CADBase, UserDataIsMadeBeforeAllOtherChildren)
{
    CADDocument document;
    CADProductDef parent(&document);
    auto* part = parent.createPart(parsed("<Part><Representation/><UserData/><Material/><UserData/></Part>"));
    Texts classes;
    for (const auto* child : ModelTestAccess::children(*part)) {
        const auto isUserData = dynamic_cast<const CADUserData*>(child) != nullptr;
        const auto isMaterial = dynamic_cast<const CADMaterial*>(child) != nullptr;
        classes.push_back(isUserData ? "UserData" : isMaterial ? "Material" : "Representation");
    }
    EXPECT_EQ(classes, (Texts{"UserData", "UserData", "Representation", "Material"}));
}

TEST(CADBase, LastOfSeveralUserDataIsTheOneInUse)
{
    CADDocument document;
    CADProductDef parent(&document);
    auto* part = parent.createPart(parsed("<Part><UserData id='a'><UserValue title='one'/></UserData>"
                                          "<UserData id='b'><UserValue title='two'/></UserData></Part>"));
    ASSERT_EQ(ModelTestAccess::children(*part).size(), 2U);
    ASSERT_NE(part->getUserData(), nullptr);
    EXPECT_EQ(part->getUserData()->getId(), "b");
    ASSERT_EQ(part->getUserData()->getUserValues().size(), 1U);
    EXPECT_EQ(part->getUserData()->getUserValues()[0]->getName(), "two");
}

TEST(CADBase, ChildIsOwnedEvenWhenItsLoadFails)
{
    CADDocument document;
    CADProductDef parent(&document);
    EXPECT_THROW(parent.createTransform(parsed("<Transform id='t'>word</Transform>")), std::invalid_argument);
    EXPECT_EQ(ModelTestAccess::children(parent).size(), 1U);
    EXPECT_EQ(document.findTransform("t"), nullptr);
}

} // namespace HB::XML::CAD
