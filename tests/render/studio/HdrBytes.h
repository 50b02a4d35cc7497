#pragma once

#include <QByteArray>
#include <QFile>
#include <QTemporaryDir>

#include <Eigen/Core>

#include <cmath>
#include <functional>

namespace render::studio
{

/// Radiance pictures for tests, row by row and not packed.
inline QByteArray hdrHeader(int width, int height)
{
    return "#?RADIANCE\nFORMAT=32-bit_rle_rgbe\n\n-Y " + QByteArray::number(height) + " +X " +
           QByteArray::number(width) + "\n";
}

inline void appendPixel(QByteArray& bytes, const Eigen::Vector3f& light)
{
    int exponent = 0;
    std::frexp(light.maxCoeff() * 1.002f, &exponent); // a mantissa below 256 when rounded
    for (int i = 0; i < 3; ++i)
        bytes += char(int(std::lround(std::ldexp(light[i], 8 - exponent))));
    bytes += char(exponent + 128);
}

/// `light` is asked with columns and rows.
inline QByteArray hdrBytes(int width, int height, const std::function<Eigen::Vector3f(int, int)>& light)
{
    QByteArray bytes = hdrHeader(width, height);
    for (int row = 0; row < height; ++row)
        for (int column = 0; column < width; ++column)
            appendPixel(bytes, light(column, row));
    return bytes;
}

/// A file that goes with the test.
class HdrTestFile
{
public:
    explicit HdrTestFile(const QByteArray& bytes) : m_path(m_folder.filePath(QStringLiteral("light.hdr")))
    {
        QFile file(m_path);
        if (file.open(QIODevice::WriteOnly))
            file.write(bytes);
    }
    const QString& path() const { return m_path; }

private:
    QTemporaryDir m_folder;
    QString m_path;
};

} // namespace render::studio
