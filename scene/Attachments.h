#pragma once

#include "host/OSGSystem/AttachmentContainer.h"

#include <cstdint>
#include <string>
#include <vector>

namespace osg
{

/// The attachments of one container, in the order in which their keys came. It holds a reference on each.
class AttachmentMap
{
public:
    struct Entry {
        std::uint32_t key = 0; ///< group id and binding
        Attachment* attachment = nullptr;
    };

    AttachmentMap() = default;
    AttachmentMap(const AttachmentMap&) = delete;
    AttachmentMap& operator=(const AttachmentMap&) = delete;
    ~AttachmentMap();

    static std::uint32_t key(unsigned groupId, unsigned short binding) { return groupId << 16 | binding; }

    Attachment* find(std::uint32_t key) const;
    void set(std::uint32_t key, Attachment* attachment);
    void remove(std::uint32_t key);
    const std::vector<Entry>& entries() const { return m_entries; }

private:
    std::vector<Entry> m_entries;
};

/// What the implementation does with the attachments of a container as a whole.
struct AttachmentAccess {
    /// Null stands for none.
    static const AttachmentMap* map(const AttachmentContainer& container) { return container.m_attachments.get(); }
    /// addAttachment for a container that nobody has seen yet, and an attachment that is no name.
    static void add(AttachmentContainer& container, Attachment& attachment, unsigned short binding);
    /// Attaches copies of all attachments of `from` to `to`.
    static void copyAll(const AttachmentContainer& from, AttachmentContainer& to);
};

/// A fresh object of class `T` with copies of the attachments of `from`, for the copy functions of classes.
template <class T>
T* copyWithAttachments(const AttachmentContainer& from)
{
    T* result = T::create().get();
    AttachmentAccess::copyAll(from, *result);
    return result;
}

/// The attachment that holds the name of its container.
class NameAttachment final : public Attachment
{
public:
    using Ptr = FCPtr<AttachmentPtr, NameAttachment>;
    static FieldContainerType _type;
    static constexpr FieldMask NameFieldMask = 1u << 0;

    static Ptr create(const std::string& name);
    const FieldContainerType& getType() const override { return _type; }

    const std::string& name() const { return m_name; }

private:
    explicit NameAttachment(const std::string& name) : m_name(name) {}
    bool equalFields(const FieldContainer& other) const override;
    FieldContainerPtr copy() const override;

    std::string m_name;
};

} // namespace osg
