#pragma once

#include "importer/plmxml/DanglingReference.h"
#include "importer/plmxml/ElementIndex.h"

#include <algorithm>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

namespace importer::plmxml
{

/// A reference taken apart.
struct Reference {
    std::string_view file; ///< empty within the document
    std::string_view id;   ///< without hash sign
};

/// Takes `text` apart, which may be an id, an id behind a hash sign, or a file, a hash sign and an id.
Reference referenceOf(std::string_view text);

/// The id that `text` refers to; empty where it leads into another document.
std::string_view ownIdOf(std::string_view text);

/// Calls `visit` for each word of a list that is separated by white space, until it gives false.
template <class Visit>
void eachWord(std::string_view list, const Visit& visit)
{
    const auto isBlank = [](char c) { return c == ' ' || c == '\t' || c == '\r' || c == '\n'; };
    for (auto at = list.begin(); at != list.end();) {
        const auto begin = std::find_if_not(at, list.end(), isBlank);
        at = std::find_if(begin, list.end(), isBlank);
        if (begin != at && !visit(std::string_view(&*begin, static_cast<std::size_t>(at - begin))))
            return;
    }
}

/// The words of a list that is separated by white space.
std::vector<std::string_view> wordsOf(std::string_view list);

/// The beginning of a text of a document, for a person.
QString shownText(std::string_view utf8);

/// Follows the references of one document, and keeps those that lead nowhere.
class References
{
public:
    /// Over the elements of `index`, which must outlive this.
    explicit References(const ElementIndex& index) : m_index(index) {}

    /// The element of `kind` that an attribute leads to; null for an attribute that is not there, and for a reference
    /// that leads nowhere, which is noted.
    pugi::xml_node follow(const pugi::xml_node& from, const char* attribute, ElementKind kind);
    /// The same for each word of a list, without those that lead nowhere.
    std::vector<pugi::xml_node> followList(const pugi::xml_node& from, const char* attribute, ElementKind kind);
    /// Looks one word of an attribute up, and notes it when it leads nowhere.
    pugi::xml_node look(const pugi::xml_node& from, const char* attribute, std::string_view word, ElementKind kind);
    /// A reference of `from` leads nowhere.
    void note(const pugi::xml_node& from, const char* attribute, std::string_view word);

    /// The first of those that lead nowhere, in the order in which they were met.
    const std::vector<DanglingReference>& dangling() const { return m_dangling; }
    /// All of those that lead nowhere.
    std::size_t danglingCount() const { return m_danglingCount; }

private:
    const ElementIndex& m_index;
    std::vector<DanglingReference> m_dangling;
    std::size_t m_danglingCount = 0;
    std::unordered_set<const char*> m_noted; ///< words in the text
};

} // namespace importer::plmxml
