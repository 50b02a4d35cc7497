#include "ptx/occt/OcctText.h"

#include <TCollection_ExtendedString.hxx>
#include <TCollection_HAsciiString.hxx>
#include <TDF_Label.hxx>
#include <TDataStd_Name.hxx>

#include <algorithm>

namespace ptx::occt
{

namespace
{

bool isBlank(char c)
{
    return static_cast<unsigned char>(c) <= 0x20;
}

} // namespace

std::string utf8(const TCollection_ExtendedString& text)
{
    std::string result(static_cast<std::size_t>(text.LengthOfCString()), '\0');
    Standard_PCharacter buffer = result.data();
    text.ToUTF8CString(buffer);
    std::replace_if(result.begin(), result.end(), isBlank, ' ');
    result.erase(std::find_if_not(result.rbegin(), result.rend(), isBlank).base(), result.end());
    result.erase(result.begin(), std::find_if_not(result.begin(), result.end(), isBlank));
    return result;
}

std::string utf8(const Handle(TCollection_HAsciiString) & text)
{
    return text.IsNull() ? std::string() : utf8(TCollection_ExtendedString(text->ToCString(), true));
}

std::string nameOf(const TDF_Label& label)
{
    Handle(TDataStd_Name) name;
    return label.FindAttribute(TDataStd_Name::GetID(), name) ? utf8(name->Get()) : std::string();
}

} // namespace ptx::occt
