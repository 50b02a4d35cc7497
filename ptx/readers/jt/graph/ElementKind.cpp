#include "ptx/readers/jt/graph/ElementKind.h"

#include <algorithm>
#include <array>

namespace ptx::jt::graph
{

namespace
{

struct Row {
    std::string_view guid;
    ElementKind kind;
};

// In the order of their GUIDs.
constexpr std::array<Row, 27> Rows = {{
    {"10dd1019-2ac8-11d1-9b6b-0080c7bb5997", ElementKind::FloatAtom},
    {"10dd101b-2ac8-11d1-9b6b-0080c7bb5997", ElementKind::Group},
    {"10dd102a-2ac8-11d1-9b6b-0080c7bb5997", ElementKind::Instance},
    {"10dd102b-2ac8-11d1-9b6b-0080c7bb5997", ElementKind::IntegerAtom},
    {"10dd102c-2ac8-11d1-9b6b-0080c7bb5997", ElementKind::Lod},
    {"10dd1030-2ac8-11d1-9b6b-0080c7bb5997", ElementKind::Material},
    {"10dd1035-2ac8-11d1-9b6b-0080c7bb5997", ElementKind::Node},
    {"10dd103e-2ac8-11d1-9b6b-0080c7bb5997", ElementKind::Partition},
    {"10dd1046-2ac8-11d1-9b6b-0080c7bb5997", ElementKind::Shape},
    {"10dd1048-2ac8-11d1-9b6b-0080c7bb5997", ElementKind::Shape},
    {"10dd104c-2ac8-11d1-9b6b-0080c7bb5997", ElementKind::Lod},
    {"10dd1059-2ac8-11d1-9b6b-0080c7bb5997", ElementKind::Shape},
    {"10dd106e-2ac8-11d1-9b6b-0080c7bb5997", ElementKind::StringAtom},
    {"10dd1073-2ac8-11d1-9b6b-0080c7bb5997", ElementKind::Texture},
    {"10dd1077-2ac8-11d1-9b6b-0080c7bb5997", ElementKind::Shape},
    {"10dd107f-2ac8-11d1-9b6b-0080c7bb5997", ElementKind::Shape},
    {"10dd1083-2ac8-11d1-9b6b-0080c7bb5997", ElementKind::Transform},
    {"10dd10f3-2ac8-11d1-9b6b-0080c7bb5997", ElementKind::Switch},
    {"4cc7a521-0728-11d3-9d8b-00a0c9c7ddc2", ElementKind::Shape},
    {"98134716-0010-0818-1998-080009835d5a", ElementKind::Shape},
    {"ce357244-38fb-11d1-a506-006097bdc6e1", ElementKind::Part},
    {"ce357245-38fb-11d1-a506-006097bdc6e1", ElementKind::MetaData},
    {"ce357246-38fb-11d1-a506-006097bdc6e1", ElementKind::DateAtom},
    {"ce357247-38fb-11d1-a506-006097bdc6e1", ElementKind::PropertyProxy},
    {"d239e7b6-dd77-4289-a07d-b0ee79f79494", ElementKind::Node}, // a shape that draws nothing
    {"e0b05be5-fbbd-11d1-a3a7-00aa00d10954", ElementKind::LateLoadedAtom},
    {"e40373c1-1ad9-11d3-9daf-00a0c9c7ddc2", ElementKind::Shape},
}};

} // namespace

ElementKind kindOf(std::string_view guid)
{
    const auto before = [](const Row& each, std::string_view id) { return each.guid < id; };
    const auto* row = std::lower_bound(Rows.begin(), Rows.end(), guid, before);
    return row != Rows.end() && row->guid == guid ? row->kind : ElementKind::Unknown;
}

} // namespace ptx::jt::graph
