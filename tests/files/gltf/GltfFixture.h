#pragma once

#include <QByteArray>

#include <cstdint>
#include <initializer_list>

/// The bytes of a glTF buffer, put together number by number.
class GltfBytes
{
public:
    template <class T>
    GltfBytes& add(std::initializer_list<T> numbers)
    {
        for (const T number : numbers)
            m_bytes.append(reinterpret_cast<const char*>(&number), sizeof(T));
        return *this;
    }
    GltfBytes& floats(std::initializer_list<float> numbers) { return add(numbers); }
    GltfBytes& bytes(std::initializer_list<std::uint8_t> numbers) { return add(numbers); }
    GltfBytes& shorts(std::initializer_list<std::uint16_t> numbers) { return add(numbers); }
    GltfBytes& words(std::initializer_list<std::uint32_t> numbers) { return add(numbers); }

    const QByteArray& all() const { return m_bytes; }
    /// The entry of the list of buffers.
    QByteArray embedded() const
    {
        return R"({"byteLength":)" + QByteArray::number(m_bytes.size()) +
               R"(,"uri":"data:application/octet-stream;base64,)" + m_bytes.toBase64() + R"("})";
    }

private:
    QByteArray m_bytes;
};

/// A binary glTF file of these two parts.
inline QByteArray glbOf(QByteArray json, QByteArray binary)
{
    json.append(QByteArray((4 - json.size() % 4) % 4, ' '));
    binary.append(QByteArray((4 - binary.size() % 4) % 4, '\0'));
    GltfBytes file;
    const auto total = static_cast<std::uint32_t>(12 + 8 + json.size() + 8 + binary.size());
    file.words({0x46546C67, 2, total, static_cast<std::uint32_t>(json.size()), 0x4E4F534A});
    GltfBytes binaryHeader;
    binaryHeader.words({static_cast<std::uint32_t>(binary.size()), 0x004E4942});
    return file.all() + json + binaryHeader.all() + binary;
}
