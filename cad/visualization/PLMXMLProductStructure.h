#pragma once

#include "cad/visualization/CADProductStructure.h"
#include "cad/visualization/CADWalkGuard.h"
#include "cad/visualization/PLMXMLTransforms.h"
#include "cad/xml/CADDocument.h"

#include <string>
#include <vector>

namespace HB::XML::CAD
{
class CADInstance;
class CADInstanceGraph;
class CADPart;
class CADProductDef;
class CADRepresentation;
} // namespace HB::XML::CAD

namespace HB::Visualization
{

/// The product structure of a PLMXML document.
///
/// One walk, depth first, makes records and scene nodes at the same time: a part before the geometry records of its
/// representations, and these before the parts of its instances. A part that two instances place is walked twice. The
/// root, the graphs and the parts are plain `osg::Transform` nodes; instances have a node only for a transform, and a
/// leaf node for a material, but no record. Translations are taken for metres and become millimetres.
///
/// References that lead nowhere cost the place that they stand at, and nothing else. A second representation of a solid
/// part is left out, since a solid part's record is that of its representation.
class PLMXMLProductStructure : public CADProductStructure
{
public:
    PLMXMLProductStructure() = default;
    ~PLMXMLProductStructure() override;

    /// How far the next scene may grow.
    void setLimits(const CADWalkLimits& limits) { m_limits = limits; }

    /// The root alone, and no record, for a document without a product definition. Null, with an empty table and a line
    /// in the log that names the instance path, when a limit is reached. The table begins anew with each call.
    osg::NodePtr createScene() override;

    /// @param fileName path in the form that the C library opens
    /// @return false when the document cannot be read
    bool loadDocument(const std::string& fileName) override;

    /// Reads the record's file and hangs its content in front of the other children of the record's node, below the
    /// record's material group if it has one. A record without a file is realised by this alone; one whose state is a
    /// request, or realised, stays as it is, and so does one whose file gives no node.
    void realizeRecord(CADNodeRecord* record) override;

private:
    friend struct PLMXMLStructureTestAccess;

    void beginAnew();
    void buildGraphs(const osg::NodePtr& root, XML::CAD::CADProductDef& definition);
    CADNodeRecord& addPlace(XML::CAD::CADBase* element, CADNodeRecord* parent);
    osg::NodePtr abandon(const osg::NodePtr& root);
    std::string describeFault() const;

    void buildInstanceGraph(const osg::NodePtr& parent, XML::CAD::CADInstanceGraph* graph, CADNodeRecord* record);
    void buildInstance(const osg::NodePtr& parent, XML::CAD::CADInstance* instance, CADNodeRecord* record);
    void placePart(const osg::NodePtr& parent, const XML::CAD::CADInstance& instance, CADNodeRecord* record);
    void buildPart(const osg::NodePtr& parent, XML::CAD::CADPart* part, CADNodeRecord* record);
    void buildRepresentation(const osg::NodePtr& parent, XML::CAD::CADRepresentation* representation,
                             CADNodeRecord* record);

    void addMaterialGroup(const osg::NodePtr& parent, const std::string& reference);
    const std::string& partName(const XML::CAD::CADPart& part);

    void addAssemblyGeometry(const osg::NodePtr& parent, XML::CAD::CADRepresentation* representation,
                             CADNodeRecord* record);
    void bindSolidGeometry(const osg::NodePtr& current, XML::CAD::CADRepresentation* representation,
                           CADNodeRecord* record);

    XML::CAD::CADDocument m_document;
    PLMXMLTransforms m_transforms{m_document};
    std::vector<std::string> m_instancePath;
    std::string m_currentName;
    osg::NodePtr m_currentMaterialNode;
    CADWalkLimits m_limits;
    CADWalkGuard m_guard{m_instancePath};
};

} // namespace HB::Visualization
