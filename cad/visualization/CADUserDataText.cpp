#include "cad/visualization/CADUserDataText.h"

#include "cad/xml/CADUserData.h"
#include "cad/xml/CADUserValue.h"

#include <array>
#include <string_view>

namespace HB::Visualization
{

namespace
{

// Only the word for a string ends in a blank; readers of this form are used to it.
constexpr std::array<std::string_view, 11> typeWords = {
    R"("int")",     R"("intlist")",   R"("real")", R"("reallist")", R"("boolean")", R"("booleanlist")",
    R"("string" )", R"("reference")", R"("enum")", R"("list")",     R"("datetime")"};

std::string_view typeWord(XML::CAD::CADUserValue::Type type)
{
    const auto index = static_cast<std::size_t>(type);
    return index < typeWords.size() ? typeWords[index] : std::string_view();
}

void append(std::string& text, const XML::CAD::CADUserValue& value)
{
    text.append("<UserValue type=").append(typeWord(value.getType()));
    text.append("title=\"").append(value.getName()).append("\" ");
    text.append("value=\"").append(value.getValue()).append("\">");
    text.append("</UserValue>");
}

} // namespace

std::string userDataText(const XML::CAD::CADUserData& userData)
{
    std::string text = "<UserData>";
    for (const auto* value : userData.getUserValues())
        append(text, *value);
    return text.append("</UserData>");
}

} // namespace HB::Visualization
