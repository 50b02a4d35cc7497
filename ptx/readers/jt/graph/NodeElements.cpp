#include "ptx/readers/jt/graph/NodeElements.h"
#include "ptx/readers/jt/container/BlockVersion.h"
#include "ptx/readers/jt/container/CountedText.h"

namespace ptx::jt::graph
{

namespace
{

constexpr std::uint32_t IgnoredFlag = 1;

std::vector<Id> readIds(container::Cursor& in)
{
    std::vector<Id> ids(in.count(sizeof(Id)));
    for (Id& id : ids)
        id = in.i32();
    return ids;
}

void readBase(container::Cursor& in, int major, SceneNode& node)
{
    container::skipBlockVersion(in, major);
    node.isIgnored = (in.u32() & IgnoredFlag) != 0;
    node.attributes = readIds(in);
}

void readGroup(container::Cursor& in, int major, SceneNode& node)
{
    container::skipBlockVersion(in, major);
    node.children = readIds(in);
}

void readPartition(container::Cursor& in, int major, SceneNode& node)
{
    if (major >= 10)
        in.u8();
    in.u32();
    node.file = container::readText(in);
}

bool isGroup(ElementKind kind, int baseType)
{
    switch (kind) {
    case ElementKind::Group:
    case ElementKind::Lod:
    case ElementKind::Partition:
    case ElementKind::Switch:
    case ElementKind::Part:
    case ElementKind::MetaData:
        return true;
    case ElementKind::Unknown:
        return baseType == BaseGroup;
    default:
        return false;
    }
}

} // namespace

SceneNode readNode(container::Cursor& in, int major, ElementKind kind, int baseType)
{
    SceneNode node;
    node.kind = kind != ElementKind::Unknown ? kind
                : baseType == BaseGroup      ? ElementKind::Group
                : baseType == BaseShape      ? ElementKind::Shape
                                             : ElementKind::Node;
    readBase(in, major, node);
    if (isGroup(kind, baseType))
        readGroup(in, major, node);
    if (kind == ElementKind::Instance) {
        container::skipBlockVersion(in, major);
        node.children = {in.i32()};
    } else if (kind == ElementKind::Partition) {
        readPartition(in, major, node);
    } else if (kind == ElementKind::Switch) {
        in.take(major >= 10 ? 1 : 2);
        node.selected = in.i32();
    }
    return node;
}

} // namespace ptx::jt::graph
