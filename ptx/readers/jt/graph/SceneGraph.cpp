#include "ptx/readers/jt/graph/SceneGraph.h"

#include "ptx/readers/jt/graph/AttributeElements.h"
#include "ptx/readers/jt/graph/NodeElements.h"
#include "ptx/readers/jt/graph/PropertyElements.h"

namespace ptx::jt::graph
{

namespace
{

class GraphReader
{
public:
    GraphReader(container::Bytes data, int major, bool isBigEndian) : m_list(data, isBigEndian), m_major(major) {}

    SceneGraph read()
    {
        container::Element element{{}, 0, m_list};
        while (container::nextElement(m_list, element))
            addNodeOrAttribute(element);
        while (container::nextElement(m_list, element))
            addAtom(element);
        if (m_list.isOk())
            readPropertyTable(m_list, m_atoms, m_graph);
        m_graph.damage =
            m_graph.nodes.empty() ? container::Damage{"the scene graph holds no nodes", 0} : m_list.damage();
        return std::move(m_graph);
    }

private:
    static bool isNode(const container::Element& element, ElementKind kind)
    {
        return (kind >= ElementKind::Node && kind <= ElementKind::Shape) ||
               (kind == ElementKind::Unknown && element.base <= BaseShape);
    }

    void addNodeOrAttribute(container::Element& element)
    {
        const ElementKind kind = kindOf(element.type);
        const Id id = element.data.i32();
        if (isNode(element, kind)) {
            if (m_graph.nodes.empty())
                m_graph.root = id;
            m_graph.nodes.try_emplace(id, readNode(element.data, m_major, kind, element.base));
        } else if (kind == ElementKind::Material || kind == ElementKind::Transform) {
            m_graph.attributes.try_emplace(id, readAttribute(element.data, m_major, kind));
        } else if (kind == ElementKind::Texture) {
            ++m_graph.textures;
        }
        checkElement(element, id);
    }

    void addAtom(container::Element& element)
    {
        const Id id = element.data.i32();
        readAtom(element.data, m_major, kindOf(element.type), id, m_atoms);
        checkElement(element, id);
    }

    void checkElement(const container::Element& element, Id id)
    {
        if (!element.data.isOk())
            m_graph.warnings.push_back("element " + std::to_string(id) + " of the scene graph at " +
                                       std::to_string(element.data.damage().offset) + ": " +
                                       element.data.damage().what);
    }

    container::Cursor m_list;
    int m_major;
    Atoms m_atoms;
    SceneGraph m_graph;
};

} // namespace

SceneGraph readSceneGraph(container::Bytes data, int major, bool isBigEndian)
{
    return GraphReader(data, major, isBigEndian).read();
}

} // namespace ptx::jt::graph
