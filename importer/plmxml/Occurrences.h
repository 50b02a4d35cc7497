#pragma once

#include "importer/plmxml/Reading.h"
#include "importer/plmxml/Structure.h"

#include <unordered_map>
#include <vector>

namespace importer::plmxml
{

/// Which occurrence stands below which: by the lists of the upper ones, by the references of the lower ones, and by
/// standing in one another.
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

/// Counts an occurrence that speaks of no place of the structure.
void noteUnplaced(const Reading& reading, const pugi::xml_node& occurrence);

/// What an occurrence says of its own visibility.
Visibility visibilityOf(const Reading& reading, const pugi::xml_node& occurrence);

} // namespace importer::plmxml
