#pragma once

#include "importer/plmxml/Reading.h"

#include <string>
#include <unordered_set>
#include <vector>

namespace importer::plmxml
{

/// Collects what a document says of a thing, as tags for its node: `ptx::attribute::<title>=<value>`, with the type
/// where it has one, the same as for the user attributes of CAD files. Of several values with one title the first
/// counts; empty ones and those that are not meant for display are left out.
class UserTexts
{
public:
    /// Of the document that is being read.
    explicit UserTexts(const Reading& reading) : m_reading(reading) {}

    /// The user data of `element`, with `prefix` before each title.
    UserTexts& userData(const pugi::xml_node& element, const std::string& prefix = {});
    /// An attribute of `element`, under its own name.
    UserTexts& attribute(const pugi::xml_node& element, const char* name);
    /// What a revision says of itself, its item and their forms.
    UserTexts& revision(const pugi::xml_node& revision);
    /// The forms that are attached to an occurrence.
    UserTexts& attachedForms(const pugi::xml_node& occurrence);

    /// The tags, in the order in which their values were met.
    std::vector<std::string> take() { return std::move(m_tags); }

private:
    void description(const pugi::xml_node& element);
    void forms(const pugi::xml_node& owner);
    void form(const pugi::xml_node& form);
    void add(const std::string& title, const std::string& value, const std::string& type = {});
    bool isNew(const std::string& title);
    std::string valueOf(const pugi::xml_node& userValue) const;

    const Reading& m_reading;
    std::vector<std::string> m_tags;
    std::vector<std::string> m_fewTitles;     ///< the first
    std::unordered_set<std::string> m_titles; ///< the others
};

/// The value of `element`'s user data that is called `title`; empty if there is none.
std::string userValueOf(const Reading& reading, const pugi::xml_node& element, std::string_view title);

} // namespace importer::plmxml
