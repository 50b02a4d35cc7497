#include "cad/xml/CADGrammar.h"

#include <algorithm>

namespace HB::XML::CAD
{

namespace
{

using Names = std::vector<std::string_view>;
using Attributes = std::vector<CADAttributeRule>;

std::vector<CADElementRule> makeGrammar()
{
    const Names inInstance = {"Transform", "UserData"};
    const Names inPart = {"Representation", "Material", "Occurrence", "UserData"};
    const Names inRepresentation = {"Transform", "CompoundRep", "Material", "UserData"};
    const Attributes ofInstance = {{"partRef", CADValue::Part},
                                   {"materialRef", CADValue::Material},
                                   {"transformRef", CADValue::Transform},
                                   {"representationRefs", CADValue::Unused}};
    const Attributes ofPart = {{"type", CADValue::Plain},
                               {"instanceRefs", CADValue::Instances},
                               {"representationRefs", CADValue::Representations},
                               {"materialRef", CADValue::Unused},
                               {"partRefs", CADValue::Unused}};
    const Attributes ofRepresentation = {{"format", CADValue::Plain},
                                         {"location", CADValue::Plain},
                                         {"transformRef", CADValue::Transform},
                                         {"type", CADValue::Unused}};
    return {
        {"ProductDef",
         {"InstanceGraph", "Representation", "Part", "ProductRevisionView", "Material", "ProductView", "Occurrence",
          "UserData"},
         {}},
        {"InstanceGraph",
         {"Instance", "ProductInstance", "Part", "ProductRevisionView", "Transform"},
         {{"rootRefs", CADValue::Roots}, {"rootInstanceRef", CADValue::Roots}}},
        {"Instance", inInstance, ofInstance},
        {"ProductInstance", inInstance, ofInstance},
        {"Part", inPart, ofPart},
        {"ProductRevisionView", inPart, ofPart},
        {"Representation", inRepresentation, ofRepresentation},
        {"CompoundRep", inRepresentation, ofRepresentation},
        {"Transform", {"UserData"}, {{"type", CADValue::Plain}}},
        {"Material",
         {"UserData"},
         {{"ambient", CADValue::Plain},
          {"diffuse", CADValue::Plain},
          {"specular", CADValue::Plain},
          {"emissive", CADValue::Plain},
          {"shininess", CADValue::Plain},
          {"alpha", CADValue::Plain}}},
        {"ProductView",
         {"Occurrence", "UserData"},
         {{"state", CADValue::Plain},
          {"rootRefs", CADValue::Occurrences},
          {"primaryOccurrenceView", CADValue::Occurrences}}},
        {"Occurrence",
         {"Occurrence", "Transform", "Material", "UserData"},
         {{"materialRef", CADValue::Material},
          {"transformRef", CADValue::Transform},
          {"instanceRefs", CADValue::Instances},
          {"occurrenceRefs", CADValue::Occurrences}}},
        {"UserData", {"UserData", "UserValue"}, {}},
        {"UserValue",
         {"UserData", "UserList"},
         {{"title", CADValue::Plain},
          {"type", CADValue::Plain},
          {"value", CADValue::Plain},
          {"format", CADValue::Unused}}},
        {"UserList", {"UserData", "Item"}, {}},
        {"Item", {"UserData"}, {}},
    };
}

} // namespace

const std::vector<CADElementRule>& grammar()
{
    static const std::vector<CADElementRule> rules = makeGrammar();
    return rules;
}

const CADElementRule* findElementRule(std::string_view name)
{
    const auto& rules = grammar();
    const auto found = std::find_if(rules.begin(), rules.end(), [name](const auto& rule) { return rule.name == name; });
    return found == rules.end() ? nullptr : &*found;
}

bool takesChild(std::string_view parent, std::string_view child)
{
    const CADElementRule* const rule = findElementRule(parent);
    return rule && std::find(rule->children.begin(), rule->children.end(), child) != rule->children.end();
}

} // namespace HB::XML::CAD
