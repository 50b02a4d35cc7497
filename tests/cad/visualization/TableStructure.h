#pragma once

#include "cad/visualization/CADProductStructure.h"

#include <map>
#include <string>
#include <vector>

namespace HB::Visualization
{

/// What the product structure keeps and gives to nobody.
struct ProductStructureTestAccess {
    static std::map<std::string, std::uint32_t> fileUsers(const CADProductStructure& structure)
    {
        return structure.m_fileNodes.users();
    }
    static CADNodeRecord& record(const CADProductStructure& structure, std::uint32_t id)
    {
        return structure.record(id);
    }
};

/// What a record keeps and gives to nobody.
struct NodeRecordTestAccess {
    static const std::string& fileName(const CADNodeRecord& record) { return record.m_fileName; }
    static void setAuxiliary(CADNodeRecord& record) { record.m_auxiliary = true; }
    static void setKind(CADNodeRecord& record, std::int32_t kind) { record.m_kind = kind; }
};

/// A product structure whose table a test fills by hand.
class TableStructure : public CADProductStructure
{
public:
    osg::NodePtr createScene() override { return osg::NodePtr(); }
    bool loadDocument(const std::string& fileName) override
    {
        m_filePath = fileName;
        return true;
    }
    void realizeRecord(CADNodeRecord* record) override { m_realized.push_back(record); }

    /// Appends a record below `parent`, which may be the record itself for a root.
    CADNodeRecord& add(std::uint32_t parent, XML::CAD::CADBase* element = nullptr)
    {
        const std::uint32_t id = addRecord(element);
        if (id != parent)
            record(parent).addChild(id);
        return record(id);
    }

    std::vector<CADNodeRecord*> m_realized;
};

} // namespace HB::Visualization
