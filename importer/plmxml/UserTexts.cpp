#include "importer/plmxml/UserTexts.h"

#include "files/scenefile/ConvertedTree.h"

#include <algorithm>
#include <utility>

namespace importer::plmxml
{

namespace
{

namespace converted = osg::scenefile::converted;

/// The items of a list in one line.
std::string listText(const Reading& reading, const pugi::xml_node& list)
{
    std::string text;
    eachChild(reading.document, list, "Item", [&](const pugi::xml_node& item) {
        const std::string own = reading.languages.find(item, "value", "valueRef");
        const std::string value = own.empty() ? item.child_value() : own;
        text += text.empty() ? "" : ", ";
        text += value;
    });
    return text;
}

/// How tags call the type of a value; empty for a text.
std::string typeOf(const pugi::xml_node& userValue)
{
    constexpr std::pair<std::string_view, const char*> words[] = {
        {"int", "integer"}, {"real", "real"}, {"boolean", "boolean"}, {"dateTime", "date"}};
    const std::string_view type = userValue.attribute("type").value();
    for (const auto& [word, own] : words)
        if (type == word)
            return own;
    return {};
}

} // namespace

UserTexts& UserTexts::userData(const pugi::xml_node& element, const std::string& prefix)
{
    eachChild(m_reading.document, element, "UserData", [&](const pugi::xml_node& data) {
        if (std::string_view(data.attribute("type").value()) == "Hidden_Metadata")
            return;
        eachChild(m_reading.document, data, "UserValue", [&](const pugi::xml_node& value) {
            const std::string title = m_reading.languages.find(value, "title", "titleRef");
            if (!title.empty())
                add(prefix + title, valueOf(value), typeOf(value));
        });
    });
    return *this;
}

UserTexts& UserTexts::attribute(const pugi::xml_node& element, const char* name)
{
    add(name, textOf(element, name));
    return *this;
}

UserTexts& UserTexts::revision(const pugi::xml_node& revision)
{
    if (!revision)
        return *this;
    userData(revision).attribute(revision, "revision").description(revision);
    const pugi::xml_node item = otherOf(m_reading, revision, "masterRef");
    userData(item).attribute(item, "productId").attribute(item, "catalogueId").description(item);
    forms(revision);
    forms(item);
    return *this;
}

UserTexts& UserTexts::attachedForms(const pugi::xml_node& occurrence)
{
    for (const pugi::xml_node& attachment :
         m_reading.references.followList(occurrence, "associatedAttachmentRefs", ElementKind::Other))
        if (const pugi::xml_node target = otherOf(m_reading, attachment, "attachmentRef");
            m_reading.document.nameOf(target) == "Form")
            form(target);
    return *this;
}

void UserTexts::description(const pugi::xml_node& element)
{
    const std::string own = childOf(m_reading, element, "Description").child_value();
    add("Description", own.empty() ? m_reading.languages.find(element, "", "descriptionTextRef") : own);
}

void UserTexts::forms(const pugi::xml_node& owner)
{
    eachChild(m_reading.document, owner, "AssociatedForm",
              [this](const pugi::xml_node& link) { form(otherOf(m_reading, link, "formRef")); });
}

void UserTexts::form(const pugi::xml_node& form)
{
    userData(form, nameOf(m_reading, form) + ": ");
}

void UserTexts::add(const std::string& title, const std::string& value, const std::string& type)
{
    if (value.empty() || !isNew(title))
        return;
    std::string key = "ptx::attribute:";
    key.reserve(key.size() + type.size() + 2 + title.size());
    key.append(type).append(type.empty() ? ":" : "::").append(title);
    m_tags.push_back(converted::tag(key, value));
}

/// Most things have few titles.
bool UserTexts::isNew(const std::string& title)
{
    constexpr std::size_t few = 8;
    if (m_fewTitles.size() == few)
        return std::find(m_fewTitles.begin(), m_fewTitles.end(), title) == m_fewTitles.end() &&
               m_titles.insert(title).second;
    if (std::find(m_fewTitles.begin(), m_fewTitles.end(), title) != m_fewTitles.end())
        return false;
    m_fewTitles.reserve(few);
    m_fewTitles.push_back(title);
    return true;
}

/// A value that stands elsewhere is told by the name of what it leads to.
std::string UserTexts::valueOf(const pugi::xml_node& userValue) const
{
    const std::string value = m_reading.languages.find(userValue, "value", "valueRef");
    if (!value.empty())
        return value;
    if (const pugi::xml_node list = childOf(m_reading, userValue, "UserList"))
        return listText(m_reading, list);
    const std::string_view id = ownIdOf(userValue.attribute("dataRef").value());
    const pugi::xml_node target = m_reading.index.find(ElementKind::Other, id);
    const std::string name = nameOf(m_reading, target);
    return name.empty() ? textOf(target, "userId") : name;
}

std::string userValueOf(const Reading& reading, const pugi::xml_node& element, std::string_view title)
{
    std::string found;
    eachChild(reading.document, element, "UserData", [&](const pugi::xml_node& data) {
        eachChild(reading.document, data, "UserValue", [&](const pugi::xml_node& value) {
            if (found.empty() && reading.languages.find(value, "title", "titleRef") == title)
                found = reading.languages.find(value, "value", "valueRef");
        });
    });
    return found;
}

} // namespace importer::plmxml
