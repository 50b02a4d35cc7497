#pragma once

#include "cad/xml/CADBase.h"
#include "cad/xml/CADOccurrenceIndex.h"

#include <cstdint>
#include <string>
#include <vector>

namespace HB::XML::CAD
{

/// The one top element of a document: the instance graphs, and the occurrences that hang under the `ProductDef` itself
/// or under any part of it.
class CADProductDef : public CADBase
{
public:
    /// An empty root element of `document`.
    explicit CADProductDef(CADDocument* document) : CADBase(document) {}

    /// Reads `InstanceGraph`, `Representation`, `Part`, `Material`, `ProductView` and `Occurrence` children. Only
    /// graphs and occurrences leave a trace here; the others are found through the document.
    void load(const TiXmlElement& element) override;

    /// Only `name` and `id` count.
    void loadAttributes(const TiXmlElement& element) override;

    /// How many graphs it has.
    std::uint32_t getInstanceGraphCount() const;

    /// @throws std::exception, without message, when the index is past the end
    CADInstanceGraph* getInstanceGraph(std::uint32_t index) const;

    /// Appends the id of an occurrence.
    void addOccurrenceRef(const CADBase* occurrence);

    /// The occurrences with this instance path, in the order in which they were added.
    std::vector<CADOccurrence*> findOccurrences(const std::vector<std::string>& path) const;

private:
    friend struct ModelTestAccess;

    std::vector<CADInstanceGraph*> m_instanceGraphs;
    std::vector<std::string> m_occurrenceRefs;
    mutable CADOccurrenceIndex m_occurrenceIndex;
};

} // namespace HB::XML::CAD
