#pragma once

#include "cad/visualization/PLMXMLProductStructure.h"
#include "tests/cad/visualization/StructureText.h"
#include "tests/cad/visualization/TableStructure.h"
#include "tests/standalone/session/SessionTest.h"

#include <memory>
#include <string>

namespace HB::Visualization
{

/// What the PLMXML structure keeps and gives to nobody.
struct PLMXMLStructureTestAccess {
    static const XML::CAD::CADDocument& document(const PLMXMLProductStructure& structure)
    {
        return structure.m_document;
    }
    static XML::CAD::CADDocument& document(PLMXMLProductStructure& structure) { return structure.m_document; }
    static const std::vector<std::string>& instancePath(const PLMXMLProductStructure& structure)
    {
        return structure.m_instancePath;
    }
};

/// A document written out in the test, its product structure and its tree.
class PLMXMLStructureTest : public SessionTest
{
protected:
    void TearDown() override
    {
        m_tree = osg::NodePtr();
        m_structure.reset();
        SessionTest::TearDown();
    }

    /// Loads a document whose `ProductDef` has this content into a new structure.
    void load(const std::string& content)
    {
        m_tree = osg::NodePtr();
        m_structure = std::make_unique<PLMXMLProductStructure>();
        m_structure->setLoadFiles(m_loadFiles);
        m_structure->setLimits(m_limits);
        const std::string text = "<PLMXML><ProductDef id='pd'>" + content + "</ProductDef></PLMXML>";
        const QString file = write(QStringLiteral("doc.plmxml"), QByteArray::fromStdString(text));
        ASSERT_TRUE(m_structure->loadDocument(file.toStdString()));
    }
    /// Loads it and builds its scene.
    void build(const std::string& content)
    {
        load(content);
        m_tree = m_structure->createScene();
    }

    std::string folder() const { return m_folder.path().toStdString() + "/"; }
    std::string tree() const { return treeText(m_tree, folder()); }
    std::string records() const { return recordText(*m_structure); }
    std::string materials() const { return materialText(m_tree); }
    CADNodeRecord& record(std::uint32_t id) { return ProductStructureTestAccess::record(*m_structure, id); }

    /// The matrix of the one instance with this transform.
    osg::Matrix matrixOf(const std::string& transform)
    {
        build("<InstanceGraph rootRefs='i'><Instance id='i' name='I' transformRef='t'/>" + transform +
              "</InstanceGraph>");
        const osg::NodePtr node = m_tree->getChild(0)->getChild(0);
        return static_cast<osg::Transform*>(node->getCore().get())->getMatrix();
    }

    bool m_loadFiles = false;
    CADWalkLimits m_limits;
    std::unique_ptr<PLMXMLProductStructure> m_structure = std::make_unique<PLMXMLProductStructure>();
    osg::RefPtr<osg::NodePtr> m_tree;
};

} // namespace HB::Visualization
