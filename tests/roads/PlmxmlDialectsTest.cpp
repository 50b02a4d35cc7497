// Documents of random structures in each dialect: every shape stands where a second program finds it in the XML.

#include "host/OSGSystem/Geometry.h"
#include "host/OSGSystem/Transform.h"
#include "host/OSGSystem/TreeFunctions.h"
#include "scene/MatrixMath.h"
#include "scene/Mesh.h"
#include "tests/roads/PlmxmlEvaluation.h"
#include "tests/roads/PlmxmlImport.h"

#include <cmath>
#include <limits>

using namespace dialects;

namespace
{

constexpr unsigned DocumentsOfADialect = 100;

class PlmxmlDialectsTest : public PlmxmlImport
{
protected:
    PlmxmlDialectsTest()
    {
        for (int i = 0; i < PartFiles; ++i)
            write(QStringLiteral("part%1.obj").arg(i), "v 0 0 0\nv 100 0 0\nv 0 200 0\nv 0 0 " +
                                                           QByteArray::number(300 + 10 * i) +
                                                           "\nf 1 3 2\nf 1 2 4\nf 1 4 3\nf 2 3 4\n");
    }

    static osg::Matrix worldOf(osg::NodePtr node)
    {
        osg::Matrix matrix;
        for (; node; node = node->getParent())
            if (const auto transform = osg::fcCast<osg::Transform>(node->getCore()))
                matrix = transform->getMatrix() * matrix;
        return matrix;
    }

    static WorldBox boxOf(const osg::Mesh& mesh, const osg::Matrix& world)
    {
        constexpr double far = std::numeric_limits<double>::max();
        WorldBox box = {far, far, far, -far, -far, -far};
        for (const osg::Vec3f& position : mesh.positions) {
            const osg::Vec3f at = osg::transformPoint(world, position);
            const double numbers[] = {at.x, at.y, at.z};
            for (std::size_t i = 0; i < 3; ++i) {
                box[i] = std::min(box[i], numbers[i]);
                box[i + 3] = std::max(box[i + 3], numbers[i]);
            }
        }
        return box;
    }

    static std::vector<WorldBox> boxesBelow(const osg::NodePtr& root)
    {
        std::vector<WorldBox> boxes;
        osg::traverse(root, [&boxes](const osg::NodePtr& node) {
            if (const auto geometry = osg::fcCast<osg::Geometry>(node->getCore()))
                boxes.push_back(boxOf(osg::GeometryAccess::mesh(*geometry), worldOf(node)));
            return osg::Action::Continue;
        });
        return boxes;
    }

    static bool areNear(const WorldBox& a, const WorldBox& b)
    {
        for (std::size_t i = 0; i < 6; ++i)
            if (!(std::abs(a[i] - b[i]) < 0.1))
                return false;
        return true;
    }

    /// Whether each box has one of its own among the others; order does not count.
    static bool areTheSame(const std::vector<WorldBox>& some, std::vector<WorldBox> others)
    {
        for (const WorldBox& box : some) {
            const auto found =
                std::find_if(others.begin(), others.end(), [&box](const WorldBox& each) { return areNear(each, box); });
            if (found == others.end())
                return false;
            others.erase(found);
        }
        return others.empty();
    }

    void expectTheSameBoxes(Dialect dialect)
    {
        std::size_t shapes = 0;
        for (unsigned seed = 1; seed <= DocumentsOfADialect && !HasFailure(); ++seed) {
            const std::string document = makeDocument(dialect, seed);
            const std::vector<WorldBox> expected = boxesOf(dialect, document);
            zn::ImportResult result = import(write(QStringLiteral("made.plmxml"), QByteArray::fromStdString(document)));
            EXPECT_EQ(result.state, znCADFileTypes::JobSucceeded) << result.error.toStdString();
            ASSERT_TRUE(result.node);
            EXPECT_TRUE(areTheSame(expected, boxesBelow(result.node)))
                << "seed " << seed << ", " << expected.size() << " shapes\n"
                << document;
            shapes += expected.size();
            const osg::NodePtr tree = result.node;
            tree->getParent()->subChild(tree);
        }
        EXPECT_GT(shapes, 2 * DocumentsOfADialect);
    }
};

TEST_F(PlmxmlDialectsTest, PdmSystems)
{
    expectTheSameBoxes(Dialect::Pdm);
}

TEST_F(PlmxmlDialectsTest, Sessions)
{
    expectTheSameBoxes(Dialect::Session);
}

TEST_F(PlmxmlDialectsTest, CadSystems)
{
    expectTheSameBoxes(Dialect::CadSystem);
}

TEST_F(PlmxmlDialectsTest, AutomotiveViewers)
{
    expectTheSameBoxes(Dialect::Automotive);
}

TEST_F(PlmxmlDialectsTest, SmallGenerators)
{
    expectTheSameBoxes(Dialect::Flat);
}

} // namespace
