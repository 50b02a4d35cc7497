#include "importer/plmxml/ElementKind.h"

#include <unordered_map>

namespace importer::plmxml
{

ElementKind kindOfName(std::string_view name)
{
    static const std::unordered_map<std::string_view, ElementKind> kinds = {
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
    const auto found = kinds.find(name);
    return found == kinds.end() ? ElementKind::Other : found->second;
}

} // namespace importer::plmxml
