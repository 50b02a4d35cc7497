#pragma once

#include "cad/xml/CADBase.h"
#include "cad/xml/CADOccurrenceIndex.h"

#include <string>
#include <vector>

namespace HB::XML::CAD
{

/// A configuration: a list of occurrences, which applies where the view is the active one.
class CADProductView : public CADBase
{
public:
    /// An empty element below `parent`, which owns it; see CADBase.
    explicit CADProductView(CADBase* parent) : CADBase(parent) {}

    /// Reads `Occurrence` children. Their ids go behind the references of the attributes, unless the attributes gave
    /// exactly one: that one then stays the only one.
    void load(const TiXmlElement& element) override;

    /// In file order: `rootRefs` adds its references, `primaryOccurrenceView` replaces all of them by its whole value.
    /// The view is active when `state` is exactly "active".
    void loadAttributes(const TiXmlElement& element) override;

    /// References to its occurrences.
    const std::vector<std::string>& getRootRefs() const { return m_rootRefs; }
    /// Whether the document calls the view active.
    bool isActive() const { return m_active; }

    /// The occurrences of the view's list with this instance path, in the order of the list. Occurrences inside others
    /// count only where the list names them itself.
    std::vector<CADOccurrence*> findOccurrences(const std::vector<std::string>& path) const;

private:
    friend struct ModelTestAccess;

    std::vector<std::string> m_rootRefs;
    bool m_active = false;
    mutable CADOccurrenceIndex m_occurrenceIndex;
};

} // namespace HB::XML::CAD
