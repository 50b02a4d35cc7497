#pragma once

#include "ptx/readers/TextFile.h"

#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

namespace ptx::step::damage
{

/// Where the entities of a STEP text stand and which ones refer to which. It knows the text alone, so that it holds for
/// entities too that OCCT cannot be asked about.
class TextIndex
{
public:
    /// Looks through the file `path` once; one that cannot be read has no entities.
    explicit TextIndex(const std::string& path);

    /// The line of entity #`ident`, 0 if there is no such entity. Lines count from 1.
    int lineOf(int ident) const;
    /// The type as the text has it, "(" for a complex one. Valid as long as this object.
    std::string_view typeOf(int ident) const;
    /// The entities that refer to #`ident`, as often as they do.
    std::vector<int> referringTo(int ident) const;

private:
    struct Entity {
        int line = 0;
        std::string_view type;
    };

    void scan(std::string_view text);

    readers::TextFile m_file;
    std::unordered_map<int, Entity> m_entities;
    std::vector<std::pair<int, int>> m_references; ///< referred to, referring; sorted
};

} // namespace ptx::step::damage
