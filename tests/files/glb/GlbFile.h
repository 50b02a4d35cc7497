#pragma once

#include <QByteArray>
#include <QFile>
#include <QString>

#include <nlohmann/json.hpp>

#include <cstdint>
#include <cstring>
#include <vector>

/// A binary glTF file taken apart by hand.
class GlbFile
{
public:
    explicit GlbFile(const QString& path)
    {
        QFile file(path);
        if (!file.open(QIODevice::ReadOnly))
            return;
        m_bytes = file.readAll();
        json = nlohmann::json::parse(m_bytes.mid(20, static_cast<int>(word(12))).toStdString());
    }

    qint64 size() const { return m_bytes.size(); }
    const QByteArray& bytes() const { return m_bytes; }
    std::uint32_t word(int place) const
    {
        std::uint32_t result = 0;
        std::memcpy(&result, m_bytes.constData() + place, sizeof(result));
        return result;
    }
    int binaryChunk() const { return 20 + static_cast<int>(word(12)); }

    /// The numbers of an accessor, all elements one after the other.
    template <class T>
    std::vector<T> array(std::size_t accessor) const
    {
        const nlohmann::json& view = json["bufferViews"][json["accessors"][accessor]["bufferView"].get<std::size_t>()];
        std::vector<T> result(view["byteLength"].get<std::size_t>() / sizeof(T));
        std::memcpy(result.data(), m_bytes.constData() + binaryChunk() + 8 + view["byteOffset"].get<int>(),
                    result.size() * sizeof(T));
        return result;
    }

    /// The primitive of a mesh.
    const nlohmann::json& primitive(std::size_t mesh, std::size_t index = 0) const
    {
        return json["meshes"][mesh]["primitives"][index];
    }

    nlohmann::json json;

private:
    QByteArray m_bytes;
};
