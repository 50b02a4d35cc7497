#include "render/studio/HdrFile.h"

#include "files/Failure.h"

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <array>
#include <cmath>

namespace render::studio
{

namespace
{

constexpr qint64 longestLine = 4096;
constexpr int mostHeaderLines = 1000;
constexpr int mostSide = 1 << 20;
/// Widths that packed rows can have.
constexpr int leastPacked = 8, mostPacked = 0x7FFF;

QString text(const char* source)
{
    return QCoreApplication::translate("Environment", source);
}

using Rgbe = std::array<std::uint8_t, 4>;

Eigen::Vector3f lightOf(const Rgbe& pixel)
{
    if (pixel[3] == 0)
        return Eigen::Vector3f::Zero();
    const float unit = std::ldexp(1.0f, int(pixel[3]) - 136);
    return (Eigen::Vector3f(pixel[0], pixel[1], pixel[2]) * unit).cwiseMin(mostLight);
}

class Reader
{
public:
    Reader(const QString& path, std::size_t most) : m_path(path), m_file(path), m_most(most) {}

    HdrPicture read()
    {
        const QFileInfo info(m_path);
        if (!info.exists())
            fail(files::ErrorCode::NotFound, text("the file is missing"));
        if (!info.isFile())
            fail(files::ErrorCode::NotRegular, text("this is no file"));
        if (!m_file.open(QIODevice::ReadOnly))
            fail(files::ErrorCode::NotReadable, m_file.errorString());
        readHeader();
        readSize();
        m_row.resize(std::size_t(m_picture.width));
        for (int row = 0; row < m_picture.height; ++row) {
            readRow(row);
            for (const Rgbe& pixel : m_row)
                m_picture.pixels.push_back(lightOf(pixel) * m_scale);
        }
        return std::move(m_picture);
    }

private:
    [[noreturn]] void fail(files::ErrorCode code, const QString& message, const QString& place = {}) const
    {
        throw files::Failure(files::Error{{message, m_path, place}, code});
    }

    [[noreturn]] void failHeader(const QString& message) const { fail(files::ErrorCode::DamagedHeader, message); }

    [[noreturn]] void failRow(files::ErrorCode code, const QString& message, int row) const
    {
        fail(code, message, text("row %1").arg(row + 1));
    }

    QByteArray nextLine()
    {
        const QByteArray line = m_file.readLine(longestLine);
        if (!line.endsWith('\n'))
            failHeader(text("the header does not end"));
        return line.trimmed();
    }

    void readHeader()
    {
        if (!m_file.peek(2).startsWith("#?"))
            fail(files::ErrorCode::UnknownFormat, text("this is no Radiance picture (.hdr)"));
        nextLine();
        for (int i = 0; i < mostHeaderLines; ++i) {
            const QByteArray line = nextLine();
            if (line.isEmpty())
                return;
            if (line.startsWith("FORMAT=") && line.mid(7).trimmed() != "32-bit_rle_rgbe")
                fail(files::ErrorCode::Unsupported,
                     text("pixels of the format \"%1\" are not read").arg(QString::fromLatin1(line.mid(7).trimmed())));
            if (line.startsWith("EXPOSURE="))
                takeExposure(line.mid(9));
        }
        failHeader(text("the header does not end"));
    }

    /// Pixels were multiplied by all exposures that the header tells.
    void takeExposure(const QByteArray& number)
    {
        bool isNumber = false;
        const float exposure = number.trimmed().toFloat(&isNumber);
        m_scale /= exposure;
        if (!isNumber || !(exposure > 0) || !std::isfinite(exposure) || !(m_scale > 0) || !std::isfinite(m_scale))
            failHeader(text("the exposure is no number above 0"));
    }

    void readSize()
    {
        const QList<QByteArray> words = nextLine().simplified().split(' ');
        if (words.size() != 4 || words[0] != "-Y" || words[2] != "+X")
            fail(files::ErrorCode::Unsupported, text("only rows from top to bottom (-Y height +X width) are read"));
        m_picture.height = words[1].toInt();
        m_picture.width = words[3].toInt();
        const int width = m_picture.width, height = m_picture.height;
        if (width < 1 || height < 1 || width > mostSide || height > mostSide ||
            std::size_t(width) * std::size_t(height) > m_most)
            fail(files::ErrorCode::LimitExceeded, text("%1x%2 pixels are not read: there may be %3 at most")
                                                      .arg(width)
                                                      .arg(height)
                                                      .arg(qulonglong(m_most)));
    }

    std::uint8_t nextByte(int row)
    {
        char byte = 0;
        if (!m_file.getChar(&byte))
            failRow(files::ErrorCode::Truncated, text("the file ends within the picture"), row);
        return std::uint8_t(byte);
    }

    Rgbe nextPixel(int row)
    {
        Rgbe pixel;
        for (std::uint8_t& byte : pixel)
            byte = nextByte(row);
        return pixel;
    }

    void readRow(int row)
    {
        const int width = m_picture.width;
        const Rgbe first = nextPixel(row);
        const bool isPacked =
            width >= leastPacked && width <= mostPacked && first[0] == 2 && first[1] == 2 && first[2] < 128;
        if (!isPacked)
            return readPlainRow(row, first);
        if ((int(first[2]) << 8 | first[3]) != width)
            failRow(files::ErrorCode::Damaged, text("the row has another width than the picture"), row);
        for (std::size_t channel = 0; channel < 4; ++channel)
            readChannel(row, channel);
    }

    /// Runs of one value, of 129 bytes and more, and pieces of different ones.
    void readChannel(int row, std::size_t channel)
    {
        for (std::size_t column = 0; column < m_row.size();) {
            const std::uint8_t code = nextByte(row);
            const bool isRun = code > 128;
            const std::size_t count = isRun ? code - 128u : code;
            if (count == 0 || count > m_row.size() - column)
                failRow(files::ErrorCode::Damaged, text("the row is longer than the picture is wide"), row);
            const std::uint8_t repeated = isRun ? nextByte(row) : std::uint8_t(0);
            for (std::size_t i = 0; i < count; ++i)
                m_row[column++][channel] = isRun ? repeated : nextByte(row);
        }
    }

    /// Pixel by pixel; (1, 1, 1, n) repeats the one before n times, and again with 256 times as much.
    void readPlainRow(int row, Rgbe pixel)
    {
        int shift = 0;
        for (std::size_t column = 0;;) {
            if (pixel[0] == 1 && pixel[1] == 1 && pixel[2] == 1) {
                const std::size_t count = shift < 24 ? std::size_t(pixel[3]) << shift : m_row.size() + 1;
                if (column == 0 || count > m_row.size() - column)
                    failRow(files::ErrorCode::Damaged, text("the row is longer than the picture is wide"), row);
                std::fill_n(m_row.begin() + std::ptrdiff_t(column), count, m_row[column - 1]);
                column += count;
                shift += 8;
            } else {
                m_row[column++] = pixel;
                shift = 0;
            }
            if (column == m_row.size())
                return;
            pixel = nextPixel(row);
        }
    }

    QString m_path;
    QFile m_file;
    std::size_t m_most;
    float m_scale = 1;
    HdrPicture m_picture;
    std::vector<Rgbe> m_row;
};

} // namespace

Eigen::Vector3f HdrPicture::at(const Eigen::Vector3f& direction) const
{
    const float pi = float(EIGEN_PI);
    const float around = std::atan2(-direction.y(), direction.x()) / (2 * pi) + 0.5f;
    const float above = std::asin(std::clamp(direction.z(), -1.0f, 1.0f)) / pi + 0.5f;
    const float x = around * float(width) - 0.5f;
    const float y = std::clamp((1 - above) * float(height) - 0.5f, 0.0f, float(height - 1));
    const float left = std::floor(x), upper = std::floor(y);
    const auto pixel = [this](int column, int row) {
        const int wrapped = (column % width + width) % width;
        return pixels[std::size_t(std::min(row, height - 1)) * std::size_t(width) + std::size_t(wrapped)];
    };
    const auto inRow = [&](int row) -> Eigen::Vector3f {
        return pixel(int(left), row) * (1 - (x - left)) + pixel(int(left) + 1, row) * (x - left);
    };
    return inRow(int(upper)) * (1 - (y - upper)) + inRow(int(upper) + 1) * (y - upper);
}

files::Expected<HdrPicture> readHdrFile(const QString& path, std::size_t most)
{
    try {
        return Reader(path, most).read();
    } catch (const files::Failure& failure) {
        return failure.error();
    }
}

} // namespace render::studio
