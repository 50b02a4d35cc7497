// Containers, their types and what is attached to them.
#include "Containers.h"

#include "host/OSGSystem/Edit.h"
#include "host/OSGSystem/FieldContainerFactory.h"
#include "host/OSGSystem/Names.h"

#include <map>
#include <vector>

namespace osg
{

namespace
{

/// By id, from 1; null once destroyed.
std::vector<FieldContainer*>& allContainers()
{
    static std::vector<FieldContainer*> containers(1);
    return containers;
}

std::uint32_t nextTypeId()
{
    static std::uint32_t last = 0;
    return ++last;
}

} // namespace

class AttachmentMap
{
public:
    std::map<std::pair<unsigned, unsigned short>, RefPtr<AttachmentPtr>> entries;
};

FieldContainerType::FieldContainerType(const char* name, const FieldContainerType* parent, const char* groupName)
    : m_name(name), m_parent(parent), m_groupName(groupName), m_id(nextTypeId())
{
}

/// The attachments of this host make no groups: each type is its own.
std::uint16_t FieldContainerType::getGroupId() const
{
    return static_cast<std::uint16_t>(m_id);
}

FieldContainerType FieldContainer::_type("FieldContainer", nullptr);
FieldContainerType AttachmentContainer::_type("AttachmentContainer", &FieldContainer::_type);
FieldContainerType Attachment::_type("Attachment", &FieldContainer::_type);

FieldContainer::FieldContainer() : m_id(static_cast<std::uint32_t>(allContainers().size()))
{
    allContainers().push_back(this);
}

FieldContainer::~FieldContainer()
{
    allContainers()[m_id] = nullptr;
}

bool FieldContainer::isEqual(const FieldContainerPtr& a, const FieldContainerPtr& b)
{
    if (a == b)
        return true;
    return a && b && a->getType().getId() == b->getType().getId() && a->equalFields(*b);
}

void FieldContainerPtrBase::addRef() const
{
    if (m_container)
        ++m_container->m_references;
}

void FieldContainerPtrBase::subRef() const
{
    if (m_container && --m_container->m_references == 0)
        delete m_container;
}

FieldContainerFactory* FieldContainerFactory::the()
{
    static FieldContainerFactory factory;
    return &factory;
}

FieldContainerPtr FieldContainerFactory::getContainer(unsigned id) const
{
    return id < allContainers().size() ? FieldContainerPtr(allContainers()[id]) : FieldContainerPtr();
}

AttachmentContainer::AttachmentContainer() : m_attachments(std::make_unique<AttachmentMap>()) {}
AttachmentContainer::~AttachmentContainer() = default;

void AttachmentContainer::addAttachment(const AttachmentPtr& attachment, unsigned short binding)
{
    m_attachments->entries[{attachment->getType().getGroupId(), binding}] = attachment;
}

void AttachmentContainer::subAttachment(const AttachmentPtr& attachment, unsigned short binding)
{
    m_attachments->entries.erase({attachment->getType().getGroupId(), binding});
}

AttachmentPtr AttachmentContainer::findAttachment(unsigned groupId, unsigned short binding) const
{
    const auto found = m_attachments->entries.find({groupId, binding});
    return found == m_attachments->entries.end() ? AttachmentPtr() : found->second.get();
}

bool AttachmentContainer::equalAttachments(const AttachmentContainer& other) const
{
    const auto& mine = m_attachments->entries;
    const auto& theirs = other.m_attachments->entries;
    return std::equal(mine.begin(), mine.end(), theirs.begin(), theirs.end(), [](const auto& a, const auto& b) {
        return a.first == b.first && FieldContainer::isEqual(a.second.get(), b.second.get());
    });
}

// Nothing here listens to changes.
void beginEditCP(const FieldContainerPtr&, FieldMask, unsigned) {}
void endEditCP(const FieldContainerPtr&, FieldMask, unsigned) {}

} // namespace osg

namespace external
{

osg::FieldContainerType Notes::_type("Notes", &osg::Attachment::_type);

bool Notes::equalFields(const osg::FieldContainer& other) const
{
    const auto& notes = static_cast<const Notes&>(other);
    return notes.name == name && notes.tags == tags && notes.file == file;
}

osg::FieldContainerPtr Notes::copy() const
{
    auto* copied = new Notes;
    copied->name = name;
    copied->tags = tags;
    copied->file = file;
    return osg::FieldContainerPtr(copied);
}

Notes* findNotes(const osg::AttachmentContainerPtr& container)
{
    if (!container)
        return nullptr;
    const osg::AttachmentPtr found = container->findAttachment(Notes::_type.getGroupId());
    return static_cast<Notes*>(found.get());
}

Notes& notesOf(const osg::AttachmentContainerPtr& container)
{
    if (!findNotes(container))
        container->addAttachment(osg::AttachmentPtr(new Notes));
    return *findNotes(container);
}

} // namespace external

const char* osg::getName(const AttachmentContainerPtr& container)
{
    const external::Notes* notes = external::findNotes(container);
    return notes && !notes->name.empty() ? notes->name.c_str() : nullptr;
}

void osg::setName(const AttachmentContainerPtr& container, const std::string& name)
{
    if (container)
        external::notesOf(container).name = name;
}
