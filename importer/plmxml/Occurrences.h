#pragma once

#include "importer/plmxml/Reading.h"
#include "importer/plmxml/Structure.h"

#include <unordered_map>
#include <vector>

namespace importer::plmxml
{

/// Which occurrence stands below which: by the lists of the upper ones, by standing in one another, by the references
/// of the lower ones, and by paths that lead over an upper one.
class Occurrences
{
public:
    /// Those of one view, or of none.
    Occurrences(const Reading& reading, std::vector<pugi::xml_node> elements);

    /// In the order of the text.
    const std::vector<pugi::xml_node>& all() const { return m_all; }
    /// Those below `occurrence`, in order.
    std::vector<pugi::xml_node> below(const pugi::xml_node& occurrence) const;
    /// The one above; null for one at the top.
    pugi::xml_node above(const pugi::xml_node& occurrence) const;
    /// Whether they are a tree of their own, and more than remarks on instances.
    bool areATree() const { return m_areATree; }

private:
    const Reading& m_reading;
    std::vector<pugi::xml_node> m_all;
    std::unordered_map<std::size_t, pugi::xml_node> m_above;
    std::unordered_map<std::size_t, std::vector<pugi::xml_node>> m_unlisted; ///< those that only say what is above them
    bool m_areATree = false;
};

/// The occurrence that the path of `pathRefs` begins with; null where it begins with an instance, and where the path is
/// that of `instanceRefs`.
pugi::xml_node beginOfPath(const Reading& reading, const pugi::xml_node& occurrence);

/// The last instance of the path of an occurrence; null without one.
pugi::xml_node lastInstanceOf(const Reading& reading, const pugi::xml_node& occurrence);

/// Counts an occurrence that speaks of no place of the structure.
void noteUnplaced(const Reading& reading, const pugi::xml_node& occurrence);

/// Counts an occurrence that speaks of a place that an earlier one speaks of.
void noteRepeated(const Reading& reading, const pugi::xml_node& occurrence);

/// What an occurrence says of its own visibility.
Visibility visibilityOf(const Reading& reading, const pugi::xml_node& occurrence);

} // namespace importer::plmxml
