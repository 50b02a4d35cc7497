#pragma once

#include "host/OSGSystem/AttachmentContainer.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <new>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace osg
{

/// A point in time as ISO 8601 writes it, e.g. "2024-05-31T08:00:00"; what a file gives is not checked.
struct AttributeDate {
    std::string text;
    friend bool operator==(const AttributeDate&, const AttributeDate&) = default;
};

/// A value by its type: text, integer, real, boolean, date, or a list of texts.
using AttributeValue = std::variant<std::string, std::int64_t, double, bool, AttributeDate, std::vector<std::string>>;

/// What a file says of a product, an occurrence or a material under a name of the file's own choice.
struct Attribute {
    std::string name;
    AttributeValue value;
    std::string unit = {}; ///< of a real, as the file or `files/scenefile/ConvertedTree.h` words it; may be empty
    friend bool operator==(const Attribute&, const Attribute&) = default;
};

/// Attributes in the order of their file; names may occur several times.
using AttributeList = std::vector<Attribute>;

/// Whose an attribute is. What belongs to a product holds at all of its places.
enum class AttributeOwner : unsigned short { Product = 0, Occurrence = 1 };

/// Where attachments have their attributes from, so that a mapped file need not be unfolded before somebody asks. It
/// lives as long as one of them.
class AttributeSource
{
public:
    AttributeSource();
    AttributeSource(const AttributeSource&) = delete;
    AttributeSource& operator=(const AttributeSource&) = delete;
    virtual ~AttributeSource();

    /// The list that `place` stands for, which only this source understands.
    virtual AttributeList list(const void* place) const = 0;
    /// The same where the source has it in this form, as long as the source lives; null where it would have to be made.
    virtual const AttributeList* kept(const void* place) const;
    /// findText in that list, of which nothing else need be made.
    virtual std::string text(const void* place, std::string_view name) const;

private:
    friend class AttributeAttachment;
    friend class AttributeBlock;

    void subUser();

    // Counted here: a shared pointer for each of many attachments waits for memory at each, as it counts for threads.
    std::size_t m_users = 0;
    std::unique_ptr<std::byte[]> m_room; ///< of the block; null where the attachment stands alone
};

/// The attachment that holds the attributes of one owner; its binding is the owner. It never changes, so that all
/// nodes of a product hold the same one, and a copy is the attachment itself.
class AttributeAttachment final : public Attachment
{
public:
    using Ptr = FCPtr<AttachmentPtr, AttributeAttachment>;
    static FieldContainerType _type;

    static Ptr create(AttributeList attributes);
    const FieldContainerType& getType() const override { return _type; }

    AttributeList attributes() const { return m_source->list(m_place); }
    /// Calls `visit` with the attributes; they are not copied for that. Returns what it returns.
    template <class Visit>
    decltype(auto) visit(const Visit& visit) const
    {
        const AttributeList* kept = m_source->kept(m_place);
        return kept ? visit(*kept) : visit(attributes());
    }
    /// The first text of the attribute with this name; empty if there is none.
    std::string text(std::string_view name) const { return m_source->text(m_place, name); }

    /// Leaves the memory alone that belongs to a block.
    static void operator delete(AttributeAttachment* attachment, std::destroying_delete_t);

private:
    friend class AttributeBlock;

    AttributeAttachment(AttributeSource& source, const void* place) : m_source(&source), m_place(place)
    {
        ++m_source->m_users;
    }
    bool equalFields(const FieldContainer& other) const override;
    FieldContainerPtr copy() const override;

    AttributeSource* m_source;
    const void* m_place;
};

/// Makes the attachments of one source in one piece of memory, which lives as long as the source.
class AttributeBlock
{
public:
    /// For at most `size` attachments.
    AttributeBlock(std::unique_ptr<AttributeSource> source, std::size_t size);
    AttributeBlock(const AttributeBlock&) = delete;
    AttributeBlock& operator=(const AttributeBlock&) = delete;
    ~AttributeBlock();

    /// A new attachment with the list that `place` stands for.
    AttributeAttachment::Ptr create(const void* place);
    /// How many were made.
    std::size_t size() const { return m_size; }
    /// The one that was made as this one, from 0 on. Whoever asks knows that it is alive.
    AttributeAttachment::Ptr operator[](std::size_t index) const;

private:
    void* at(std::size_t index) const { return m_source->m_room.get() + index * sizeof(AttributeAttachment); }

    AttributeSource* m_source;
    std::size_t m_size = 0;
};

/// The attachment with the attributes of this owner; null when `container` is null or has none.
AttributeAttachment::Ptr attributeAttachment(const AttachmentContainerPtr& container, AttributeOwner owner);

/// The attributes of this owner; empty when `container` is null or has none.
AttributeList attributesOf(const AttachmentContainerPtr& container, AttributeOwner owner);

/// Those of the product and then those of the occurrence.
AttributeList attributesOf(const AttachmentContainerPtr& container);

/// Exchanges the attributes of this owner; null takes them away. Edits within the bracket of the attachments. A null
/// container is ignored.
void setAttributes(const AttachmentContainerPtr& container, AttributeOwner owner,
                   const AttributeAttachment::Ptr& attributes);

/// Adds `attributes` behind those that the owner has; an empty list changes nothing.
void addAttributes(const AttachmentContainerPtr& container, AttributeOwner owner, AttributeList attributes);

/// The value as a person reads it, with its unit: numbers with as many digits as tell them apart, "true" or "false", a
/// list with "; " between its texts.
std::string textOf(const Attribute& attribute);

/// The same without the unit.
std::string textOf(const AttributeValue& value);

/// The first text of the attribute with this name among `attributes`; empty if there is none.
std::string findText(const AttributeList& attributes, std::string_view name);

} // namespace osg
