#pragma once

#include "cad/xml/CADDocument.h"
#include "cad/xml/CADInstance.h"
#include "cad/xml/CADInstanceGraph.h"
#include "cad/xml/CADOccurrence.h"
#include "cad/xml/CADPart.h"
#include "cad/xml/CADProductDef.h"
#include "cad/xml/CADProductView.h"
#include "cad/xml/CADUserList.h"
#include "cad/xml/CADUserListItem.h"
#include "cad/xml/CADUserValue.h"

namespace HB::XML::CAD
{

/// What the model keeps and gives to nobody.
struct ModelTestAccess {
    static std::vector<CADBase*> children(const CADBase& element)
    {
        std::vector<CADBase*> children;
        for (const auto& child : element.m_children)
            children.push_back(child.get());
        return children;
    }

    static const auto& instances(const CADDocument& document) { return document.m_instances.elements(); }
    static const auto& parts(const CADDocument& document) { return document.m_parts.elements(); }
    static const auto& transforms(const CADDocument& document) { return document.m_transforms.elements(); }
    static const auto& representations(const CADDocument& document) { return document.m_representations.elements(); }
    static const auto& userLists(const CADDocument& document) { return document.m_userLists.elements(); }
    static const auto& materials(const CADDocument& document) { return document.m_materials.elements(); }
    static const auto& occurrences(const CADDocument& document) { return document.m_occurrences.elements(); }
    static const auto& productViews(const CADDocument& document) { return document.m_productViews.elements(); }
    static CADUserList* findUserList(const CADDocument& document, std::string_view reference)
    {
        return document.m_userLists.find(reference);
    }

    static const auto& representationRefs(const CADInstance& instance) { return instance.m_representationRefs; }
    static const auto& partRefs(const CADPart& part) { return part.m_partRefs; }
    static const auto& materialRef(const CADPart& part) { return part.m_materialRef; }
    static const auto& occurrenceRefs(const CADProductDef& productDef) { return productDef.m_occurrenceRefs; }
    static const auto& occurrenceRefs(const CADOccurrence& occurrence) { return occurrence.m_occurrenceRefs; }
    static const auto& rootRefs(const CADProductView& view) { return view.m_rootRefs; }
    static const auto& format(const CADUserValue& value) { return value.m_format; }
    static const auto& userListRef(const CADUserValue& value) { return value.m_userListRef; }
    static const auto& items(const CADUserList& list) { return list.m_items; }
    static const auto& text(const CADUserListItem& item) { return item.m_text; }
};

} // namespace HB::XML::CAD
