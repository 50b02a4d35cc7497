#include "files/vrml/VrmlSource.h"

#include "files/vrml/Gunzip.h"

#include <algorithm>

namespace files::vrml
{

namespace
{

constexpr std::size_t blockSize = 4096;
constexpr std::size_t longestQuote = 60;

FileBytes readUnpacked(ReadTask& task, const QString& path)
{
    FileBytes bytes = readFile(task, path);
    return isGzip(bytes.text()) ? gunzip(task, path, bytes.text()) : bytes;
}

std::uint64_t linesIn(std::string_view text)
{
    return static_cast<std::uint64_t>(std::count(text.begin(), text.end(), '\n'));
}

} // namespace

Source::Source(ReadTask& task, const QString& path) : m_task(task), m_path(path), m_bytes(readUnpacked(task, path))
{
    checkHeader();
}

void Source::checkHeader() const
{
    std::string_view start = text();
    if (start.starts_with("\xEF\xBB\xBF"))
        start.remove_prefix(3);
    if (start.starts_with("#VRML V1.0"))
        fail(ErrorCode::Unsupported, tr("this is a VRML 1.0 file; only VRML 2.0 (VRML97) is read"), 0);
    if (!start.starts_with("#VRML V2.0"))
        fail(ErrorCode::Damaged, tr("this is no VRML 2.0 file"), 0);
}

void Source::fail(ErrorCode code, const QString& message, std::size_t offset) const
{
    m_task.failIn(m_path, code, message, place(offset));
}

void Source::warn(const QString& message, std::size_t offset) const
{
    m_task.warnIn(m_path, message, place(offset));
}

QString Source::place(std::size_t offset) const
{
    const std::string_view all = text();
    const std::size_t end = std::min(offset, all.size());
    if (m_linesBefore.empty()) {
        std::uint64_t lines = 0;
        for (std::size_t start = 0; start <= all.size(); start += blockSize) {
            m_linesBefore.push_back(lines);
            lines += linesIn(all.substr(start, blockSize));
        }
    }
    const std::size_t block = end / blockSize;
    const std::uint64_t line = m_linesBefore[block] + linesIn(all.substr(block * blockSize, end % blockSize));
    const std::size_t lineStart = end == 0 ? 0 : all.rfind('\n', end - 1) + 1; // npos + 1 is 0
    return tr("line %1, column %2").arg(qulonglong{line} + 1).arg(qulonglong{end} - lineStart + 1);
}

std::string toUtf8(std::string_view text)
{
    const auto size = static_cast<int>(text.size());
    if (std::all_of(text.begin(), text.end(), [](char c) { return static_cast<unsigned char>(c) < 128; }))
        return std::string(text);
    const bool isUtf8 = QString::fromUtf8(text.data(), size).toUtf8() == QByteArray::fromRawData(text.data(), size);
    return isUtf8 ? std::string(text) : QString::fromLatin1(text.data(), size).toStdString();
}

QString quoted(std::string_view text)
{
    const bool isLong = text.size() > longestQuote;
    return QString::fromStdString(toUtf8(text.substr(0, longestQuote))) + (isLong ? QStringLiteral("...") : QString());
}

} // namespace files::vrml
