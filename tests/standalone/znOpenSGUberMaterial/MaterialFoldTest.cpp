#include "standalone/znOpenSGUberMaterial/MaterialFold.h"

#include "host/OSGSystem/Cast.h"
#include "host/OSGSystem/Geometry.h"
#include "host/OSGSystem/Names.h"
#include "host/OSGSystem/SimpleMaterial.h"
#include "host/OSGSystem/TreeFunctions.h"
#include "scene/EditAudit.h"
#include "tests/standalone/session/SessionTest.h"

#include <ctime>

namespace
{

class MaterialFoldTest : public SessionTest
{
protected:
    osg::NodePtr add(const char* name, float red)
    {
        const osg::SimpleMaterialPtr material = osg::SimpleMaterial::create();
        osg::setName(material, name);
        material->setDiffuse({red, 0.5f, 0.75f});
        const osg::GeometryPtr core = osg::Geometry::create();
        core->setMaterial(material);
        const osg::NodePtr node = osg::makeNodeFor(core);
        root->addChild(node);
        return node;
    }
    static osg::MaterialPtr of(const osg::NodePtr& node)
    {
        return osg::fcCast<osg::Geometry>(node->getCore())->getMaterial();
    }

    osg::NodePtr root = addGroup(m_session.sceneRoot(), "Root");
};

TEST_F(MaterialFoldTest, OfEqualOnesTheFirstStays)
{
    const osg::NodePtr a = add("", 0.25f), other = add("", 0.5f), b = add("", 0.25f), named = add("x", 0.25f);
    const osg::MaterialPtr first = of(a), otherOne = of(other), namedOne = of(named);
    zn::materials::foldMaterials(root, {});
    EXPECT_TRUE(of(a) == first && of(b) == first && of(other) == otherOne && of(named) == namedOne);
    const osg::EditAudit audit;
    zn::materials::foldMaterials(root, {});
    EXPECT_TRUE(audit.brackets().empty()) << "a second fold changes nothing";
}

TEST_F(MaterialFoldTest, OneThatIsWantedStaysInstead)
{
    const osg::NodePtr a = add("", 0.25f), b = add("", 0.25f);
    const osg::MaterialPtr second = of(b);
    zn::materials::foldMaterials(root, {second->getContainerId()});
    EXPECT_TRUE(of(a) == second && of(b) == second);
}

TEST_F(MaterialFoldTest, ZerosOfEitherSignAreEqual)
{
    const osg::NodePtr a = add("", 0.0f), b = add("", -0.0f);
    zn::materials::foldMaterials(root, {});
    EXPECT_TRUE(of(a) == of(b));
}

TEST_F(MaterialFoldTest, ManyDifferentOnesWithoutANameAreNoMatter)
{
    for (int i = 0; i < 40000; ++i)
        add("", float(i));
    const std::clock_t begin = std::clock();
    zn::materials::foldMaterials(root, {});
    EXPECT_LT(double(std::clock() - begin) / CLOCKS_PER_SEC, 2) << "each with each would be 800 million comparisons";
}

} // namespace
