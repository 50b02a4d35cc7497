#include "importer/plmxml/ElementKind.h"

#include <algorithm>
#include <iterator>

namespace importer::plmxml
{

ElementKind kindOfName(std::string_view name)
{
    struct Named {
        std::string_view name;
        ElementKind kind;
    };
    // Few have the same length, so that hardly any letters are compared.
    static constexpr Named kinds[] = {
        {"ProductDef", ElementKind::ProductDef},
        {"InstanceGraph", ElementKind::InstanceGraph},
        {"Instance", ElementKind::Instance},
        {"ProductInstance", ElementKind::Instance},
        {"Part", ElementKind::Part},
        {"ProductRevisionView", ElementKind::Part},
        {"Representation", ElementKind::Representation},
        {"CompoundRep", ElementKind::CompoundRep},
        {"Transform", ElementKind::Transform},
        {"Material", ElementKind::Material},
        {"ProductView", ElementKind::ProductView},
        {"Occurrence", ElementKind::Occurrence},
        {"UserData", ElementKind::UserData},
        {"UserValue", ElementKind::UserValue},
    };
    const auto* const found =
        std::find_if(std::begin(kinds), std::end(kinds), [name](const Named& each) { return each.name == name; });
    return found == std::end(kinds) ? ElementKind::Other : found->kind;
}

} // namespace importer::plmxml
