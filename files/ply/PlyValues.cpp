#include "files/ply/PlyValues.h"

#include <QtEndian>

#include <bit>
#include <charconv>

namespace files::ply
{

namespace
{

class TextValues final : public PlyValues
{
public:
    TextValues(std::string_view data, std::uint64_t lines, const ReadTask& task)
        : PlyValues(task), m_data(data), m_line(lines)
    {
    }

    /// Empty lines are no rows.
    void beginRow() override
    {
        m_row = {};
        while (m_row.find_first_not_of(blanks) == std::string_view::npos) {
            if (m_data.empty())
                fail(tr("the file ends too early"));
            const std::size_t end = std::min(m_data.find('\n'), m_data.size());
            m_row = m_data.substr(0, end);
            m_data.remove_prefix(std::min(end + 1, m_data.size()));
            ++m_line;
        }
    }

    double take(PlyType) override
    {
        m_row.remove_prefix(std::min(m_row.find_first_not_of(blanks), m_row.size()));
        const std::string_view word = m_row.substr(0, m_row.find_first_of(blanks));
        m_row.remove_prefix(word.size());
        double value = 0;
        const char* start = word.data() + (word.starts_with('+') ? 1 : 0);
        const auto [end, error] = std::from_chars(start, word.data() + word.size(), value);
        if (word.empty() || error != std::errc() || end != word.data() + word.size())
            fail(word.empty() ? tr("a number is missing") : tr("a value is no number"));
        return value;
    }

    /// Each takes a character and a blank at least.
    std::uint64_t possible(PlyType) const override { return (m_row.size() + m_data.size() + 1) / 2; }
    QString place() const override { return linePlace(m_line); }

private:
    static constexpr std::string_view blanks = " \t\r";

    std::string_view m_data;
    std::string_view m_row;
    std::uint64_t m_line;
};

class BinaryValues final : public PlyValues
{
public:
    BinaryValues(std::string_view file, std::size_t position, bool isBigEndian, const ReadTask& task)
        : PlyValues(task), m_file(file), m_position(position), m_isBigEndian(isBigEndian)
    {
    }

    void beginRow() override {}

    double take(PlyType type) override
    {
        if (possible(type) == 0)
            fail(tr("the file ends too early"));
        const char* bytes = m_file.data() + m_position;
        m_position += plyTypeSize(type);
        switch (type) {
        case PlyType::Int8:
            return number<std::int8_t>(bytes);
        case PlyType::Uint8:
            return number<std::uint8_t>(bytes);
        case PlyType::Int16:
            return number<std::int16_t>(bytes);
        case PlyType::Uint16:
            return number<std::uint16_t>(bytes);
        case PlyType::Int32:
            return number<std::int32_t>(bytes);
        case PlyType::Uint32:
            return number<std::uint32_t>(bytes);
        case PlyType::Float:
            return static_cast<double>(std::bit_cast<float>(number<std::uint32_t>(bytes)));
        case PlyType::Double:
            return std::bit_cast<double>(number<quint64>(bytes));
        }
        return 0;
    }

    std::uint64_t possible(PlyType type) const override { return (m_file.size() - m_position) / plyTypeSize(type); }
    QString place() const override { return tr("byte %1").arg(static_cast<qulonglong>(m_position)); }

private:
    template <class T>
    T number(const char* bytes) const
    {
        return m_isBigEndian ? qFromBigEndian<T>(bytes) : qFromLittleEndian<T>(bytes);
    }

    std::string_view m_file;
    std::size_t m_position;
    bool m_isBigEndian;
};

} // namespace

std::unique_ptr<PlyValues> PlyValues::open(const PlyHeader& header, std::string_view file, const ReadTask& task)
{
    if (header.format == PlyFormat::Text)
        return std::make_unique<TextValues>(file.substr(header.size), header.lines, task);
    return std::make_unique<BinaryValues>(file, header.size, header.format == PlyFormat::BigEndian, task);
}

std::uint64_t PlyValues::takeLength(const PlyProperty& list)
{
    const double length = take(*list.countType);
    if (!(length >= 0) || length > static_cast<double>(possible(list.type)))
        fail(tr("a list is longer than the file"));
    return static_cast<std::uint64_t>(length);
}

} // namespace files::ply
