#pragma once

#include <cstddef>
#include <string>
#include <unordered_map>
#include <vector>

namespace HB::XML::CAD
{

class CADDocument;
class CADOccurrence;

/// Finds the occurrences of a list of references by their instance path. The index is built by the first search, and
/// again when the list or the document's table of occurrences has grown since.
class CADOccurrenceIndex
{
public:
    /// The occurrences whose path equals `path` (see equalPaths), in the order of the references that lead to them. An
    /// occurrence that is named twice comes twice; a reference that leads nowhere matches nothing.
    std::vector<CADOccurrence*> find(const CADDocument& document, const std::vector<std::string>& references,
                                     const std::vector<std::string>& path);

private:
    using Path = const std::vector<std::string>*;
    struct PathHash {
        std::size_t operator()(Path path) const;
    };
    struct PathEqual {
        bool operator()(Path left, Path right) const;
    };

    bool isBuiltFrom(const CADDocument& document, const std::vector<std::string>& references) const;
    void build(const CADDocument& document, const std::vector<std::string>& references);

    std::unordered_map<Path, std::vector<CADOccurrence*>, PathHash, PathEqual> m_byPath;
    std::size_t m_referenceCount = 0;
    std::size_t m_occurrenceCount = 0;
};

} // namespace HB::XML::CAD
