#pragma once

#include "host/OSGSystem/Geometry.h"
#include "host/OSGSystem/Transform.h"
#include "importer/SceneText.h"
#include "scene/MatrixMath.h"
#include "scene/Mesh.h"
#include "tests/roads/PlmxmlDialects.h"
#include "tests/roads/PlmxmlImport.h"

#include <cmath>

/// Compares what comes of one structure as a tree of occurrences and as a graph, node by node.
class PlmxmlForms : public PlmxmlImport
{
protected:
    PlmxmlForms()
    {
        for (int i = 0; i < dialects::PartFiles; ++i)
            write(QStringLiteral("part%1.obj").arg(i), "v 0 0 0\nv 100 0 0\nv 0 200 0\nv 0 0 " +
                                                           QByteArray::number(300 + 10 * i) +
                                                           "\nf 1 3 2\nf 1 2 4\nf 1 4 3\nf 2 3 4\n");
    }

    /// One node of a tree, where it stands.
    struct Standing {
        int depth;
        std::string name;
        std::string core;
        osg::Matrix world;
        osg::Buffer<osg::Vec3f> positions; ///< of a geometry
    };

    std::vector<Standing> import(dialects::Dialect dialect, unsigned seed, int places)
    {
        const std::string document = dialects::makeDocument(dialect, seed, places);
        const zn::ImportResult result =
            PlmxmlImport::import(write(QStringLiteral("made.plmxml"), QByteArray::fromStdString(document)));
        EXPECT_EQ(result.state, znCADFileTypes::JobSucceeded) << result.error.toStdString();
        std::vector<Standing> nodes;
        if (!result.node)
            return nodes;
        m_treeFrom = result.document ? result.document->treeFrom : QString();
        m_places = result.document ? result.document->occurrences : 0;
        list(result.node, 0, {}, nodes);
        const osg::NodePtr tree = result.node;
        tree->getParent()->subChild(tree);
        return nodes;
    }

    static void list(const osg::NodePtr& node, int depth, osg::Matrix world, std::vector<Standing>& nodes)
    {
        if (const auto transform = osg::fcCast<osg::Transform>(node->getCore()))
            world = world * transform->getMatrix();
        Standing standing{depth, nameOf(node), node->getCore()->getType().getName(), world, {}};
        if (const auto geometry = osg::fcCast<osg::Geometry>(node->getCore()))
            standing.positions = osg::GeometryAccess::mesh(*geometry).positions;
        nodes.push_back(std::move(standing));
        for (unsigned i = 0; i < node->getNChildren(); ++i)
            list(node->getChild(i), depth + 1, world, nodes);
    }

    static bool areNear(const osg::Matrix& a, const osg::Matrix& b)
    {
        for (unsigned i = 0; i < 16; ++i)
            if (!(std::abs(a[i] - b[i]) < (i >= 12 ? 0.1 : 1e-4)))
                return false;
        return true;
    }

    static bool areTheSame(const osg::Buffer<osg::Vec3f>& some, const osg::Buffer<osg::Vec3f>& others)
    {
        const auto isSame = [](const osg::Vec3f& a, const osg::Vec3f& b) {
            return a.x == b.x && a.y == b.y && a.z == b.z;
        };
        return std::equal(some.begin(), some.end(), others.begin(), others.end(), isSame);
    }

    /// Gives how many shapes there are.
    std::size_t expectTheSame(unsigned seed, int places)
    {
        const std::vector<Standing> tree = import(dialects::Dialect::Pdm, seed, places);
        EXPECT_EQ(m_treeFrom, QStringLiteral("occurrence tree"));
        m_placesOfTree = m_places;
        const std::vector<Standing> graph = import(dialects::Dialect::Graph, seed, places);
        std::size_t shapes = 0;
        for (std::size_t i = 0; i < std::min(tree.size(), graph.size()) && !HasFailure(); ++i) {
            EXPECT_EQ(tree[i].depth, graph[i].depth) << "seed " << seed << ", node " << i;
            EXPECT_EQ(tree[i].name, graph[i].name) << "seed " << seed << ", node " << i;
            EXPECT_EQ(tree[i].core, graph[i].core) << "seed " << seed << ", node " << i;
            EXPECT_TRUE(areNear(tree[i].world, graph[i].world)) << "seed " << seed << ", " << tree[i].name;
            EXPECT_TRUE(areTheSame(tree[i].positions, graph[i].positions)) << "seed " << seed << ", " << tree[i].name;
            shapes += tree[i].positions.empty() ? 0 : 1;
        }
        EXPECT_EQ(tree.size(), graph.size()) << "seed " << seed;
        return shapes;
    }

    QString m_treeFrom;
    double m_places = 0;       ///< of the last import
    double m_placesOfTree = 0; ///< of the last structure, as a tree of occurrences
};
