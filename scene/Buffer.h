#pragma once

#include <cstddef>
#include <cstring>
#include <memory>
#include <span>
#include <utility>
#include <vector>

namespace osg
{

/// An immutable array that many may share: it owns what it stands on (a vector of its own, a mapped file), never a
/// copy.
template <class T>
class Buffer
{
public:
    Buffer() = default;
    /// Takes `values` over.
    Buffer(std::vector<T> values)
    {
        auto owner = std::make_shared<const std::vector<T>>(std::move(values));
        m_data = owner->data();
        m_size = owner->size();
        m_owner = std::move(owner);
    }
    /// A view of memory that lives as long as `owner`.
    Buffer(std::shared_ptr<const void> owner, const T* data, std::size_t size)
        : m_owner(std::move(owner)), m_data(data), m_size(size)
    {
    }

    ///@{
    /// The values; they stay where they are as long as this or a copy of it lives. An index past the end is undefined.
    const T* data() const { return m_data; }
    std::size_t size() const { return m_size; }
    bool empty() const { return m_size == 0; }
    const T& operator[](std::size_t index) const { return m_data[index]; }
    const T* begin() const { return m_data; }
    const T* end() const { return m_data + m_size; }
    ///@}
    /// All values; valid as long as this or a copy of it lives.
    std::span<const T> span() const { return {m_data, m_size}; }

    /// Equal lengths and equal bytes, so that two values that are no numbers can be equal.
    friend bool operator==(const Buffer& a, const Buffer& b)
    {
        return a.m_size == b.m_size &&
               (a.m_data == b.m_data || a.m_size == 0 || std::memcmp(a.m_data, b.m_data, a.m_size * sizeof(T)) == 0);
    }

private:
    std::shared_ptr<const void> m_owner;
    const T* m_data = nullptr;
    std::size_t m_size = 0;
};

} // namespace osg
