#include "importer/plmxml/TreeNotes.h"

#include "files/scenefile/AttributeTags.h"
#include "host/OSGSystem/Cast.h"
#include "host/OSGSystem/Edit.h"
#include "host/OSGSystem/MaterialGroup.h"
#include "host/OSGSystem/Names.h"
#include "importer/plmxml/PlaceWalk.h"
#include "scene/Attributes.h"
#include "scene/Tags.h"

#include <algorithm>

namespace importer::plmxml
{

namespace
{

/// The nodes of one place, and how far its children are.
struct Frame {
    osg::NodePtr part;     ///< whose children are the places below; null where there is no part
    osg::NodePtr material; ///< the group of the material that the place has; null without one
    unsigned next = 0;     ///< of these children
    Visibility visibility = Visibility::Shown;
    bool isLeaf = true;
    bool isShown = false;             ///< something below it
    osg::NodePtr top;                 ///< the node of the place
    std::vector<osg::NodePtr> hidden; ///< below it, wholly
};

osg::NodePtr childAt(const osg::NodePtr& node, unsigned index)
{
    return node && index < node->getNChildren() ? node->getChild(index) : osg::NodePtr();
}

bool isNamed(const osg::NodePtr& node, const std::string& name)
{
    const char* const found = node ? osg::getName(node) : nullptr;
    const auto isSame = [](char a, char b) {
        return a == b || (static_cast<unsigned char>(a) < ' ' && b == ' ') || (a & 0x80) != 0;
    };
    return found && std::equal(name.begin(), name.end(), found, found + std::string_view(found).size(), isSame);
}

/// What is no attribute stays a tag.
void addFacts(const osg::NodePtr& node, osg::AttributeOwner owner, std::vector<std::string> tags)
{
    osg::addAttributes(node, owner, osg::scenefile::converted::takeAttributes(tags));
    if (tags.empty())
        return;
    std::vector<std::string> all = osg::tagsOf(node);
    all.insert(all.end(), tags.begin(), tags.end());
    osg::setTags(node, std::move(all));
}

void addProduct(const osg::NodePtr& node, const StructurePart& part)
{
    if (!part.name.empty())
        osg::addAttributes(node, osg::AttributeOwner::Product, {{osg::scenefile::converted::ProductName, part.name}});
    addFacts(node, osg::AttributeOwner::Product, part.tags);
}

void switchOff(const osg::NodePtr& node)
{
    osg::beginEditCP(node, osg::Node::ActiveFieldMask, 1);
    node->setActive(false);
    osg::endEditCP(node, osg::Node::ActiveFieldMask, 1);
}

class Notes
{
public:
    Notes(const Structure& structure, const osg::NodePtr& root)
        : m_structure(structure), m_root(root), m_materials(structure.materialTags.size())
    {
    }

    bool enter(const Place& place)
    {
        if (place.depth == 0 && m_graph != place.graph + 1)
            beginGraph(place.graph);
        Frame& above = m_frames.back();
        Frame frame;
        if (!find(place, above, frame)) {
            ++m_unmatched;
            return false;
        }
        frame.visibility = visibilityAt(place, above.visibility);
        note(place, frame);
        above.isLeaf = false;
        m_frames.push_back(std::move(frame));
        return true;
    }

    void leave()
    {
        Frame frame = std::move(m_frames.back());
        m_frames.pop_back();
        Frame& above = m_frames.back();
        const bool isShown = frame.isLeaf ? frame.visibility != Visibility::Hidden : frame.isShown;
        above.isShown = above.isShown || isShown;
        if (!isShown)
            above.hidden.push_back(frame.top);
        else
            std::for_each(frame.hidden.begin(), frame.hidden.end(), switchOff);
    }

    std::size_t finish()
    {
        endGraph();
        return m_unmatched;
    }

private:
    void beginGraph(std::size_t graph)
    {
        endGraph();
        m_graph = graph + 1;
        Frame frame;
        frame.part = childAt(m_root, static_cast<unsigned>(graph));
        m_frames.push_back(std::move(frame));
    }

    void endGraph()
    {
        for (const Frame& frame : m_frames)
            std::for_each(frame.hidden.begin(), frame.hidden.end(), switchOff);
        m_frames.clear();
    }

    /// An instance's node has the part's as its last child; a material stands before it.
    bool find(const Place& place, Frame& above, Frame& frame) const
    {
        const StructurePlacement& placement = m_structure.placements[place.placement];
        const bool hasNode = placement.hasNode || (place.override && place.override->isMoved);
        const bool hasMaterial =
            placement.material != Nothing || (place.override && place.override->material != Nothing);
        const bool hasPart = placement.part != Nothing;
        if (hasNode) {
            frame.top = childAt(above.part, above.next++);
            frame.material = hasMaterial ? childAt(frame.top, 0) : osg::NodePtr();
            frame.part = hasPart ? childAt(frame.top, hasMaterial ? 1 : 0) : osg::NodePtr();
        } else {
            frame.material = hasMaterial ? childAt(above.part, above.next++) : osg::NodePtr();
            frame.part = hasPart ? childAt(above.part, above.next++) : osg::NodePtr();
            frame.top = frame.part;
        }
        if (!hasPart)
            return bool(frame.top);
        const StructurePart& part = m_structure.parts[placement.part];
        frame.next = part.shapeNodes;
        return frame.part && (part.name.empty() || isNamed(frame.part, part.name)) &&
               (!hasNode || isNamed(frame.top, placement.name));
    }

    /// Places of one material have groups of their own.
    void noteMaterial(const osg::NodePtr& node, std::uint32_t index)
    {
        const auto group = node ? osg::fcCast<osg::MaterialGroup>(node->getCore()) : osg::MaterialGroupPtr();
        if (!group || !group->getMaterial() || index == Nothing)
            return;
        Held& attributes = m_materials[index];
        std::vector<std::string> tags = m_structure.materialTags[index];
        if (!attributes.get() && !tags.empty())
            attributes = Held(osg::AttributeAttachment::create(osg::scenefile::converted::takeAttributes(tags)));
        osg::setAttributes(group->getMaterial(), osg::AttributeOwner::Product, attributes.get());
    }

    void note(const Place& place, const Frame& frame)
    {
        const StructurePlacement& placement = m_structure.placements[place.placement];
        const bool isOverridden = place.override && place.override->material != Nothing;
        noteMaterial(frame.material, isOverridden ? place.override->material : placement.material);
        addFacts(frame.top, osg::AttributeOwner::Occurrence, placement.tags);
        if (place.override) {
            addFacts(frame.top, osg::AttributeOwner::Occurrence, place.override->tags);
            if (!place.override->name.empty())
                osg::setName(frame.top, place.override->name);
        }
        if (frame.part)
            addProduct(frame.part, m_structure.parts[placement.part]);
    }

    Visibility visibilityAt(const Place& place, Visibility above) const
    {
        if (place.override && place.override->visibility != Visibility::AsAbove)
            return place.override->visibility;
        const Visibility own = m_structure.placements[place.placement].visibility;
        return own == Visibility::AsAbove ? above : own;
    }

    using Held = osg::RefPtr<osg::AttributeAttachment::Ptr>;

    const Structure& m_structure;
    const osg::NodePtr& m_root;
    std::vector<Held> m_materials; ///< their attributes
    std::vector<Frame> m_frames;   ///< that of the graph first
    std::size_t m_graph = 0;       ///< from 1; 0 before the first
    std::size_t m_unmatched = 0;
};

} // namespace

std::size_t applyNotes(const Structure& structure, const osg::NodePtr& root)
{
    Notes notes(structure, root);
    PlaceWalk(structure).run([&notes](const Place& place) { return notes.enter(place); },
                             [&notes](const Place&) { notes.leave(); });
    return notes.finish();
}

} // namespace importer::plmxml
