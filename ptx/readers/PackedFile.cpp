#include "ptx/readers/PackedFile.h"

#include "protocol/Formats.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <memory>
#include <vector>

#include <minizip/unzip.h>
#include <zlib.h>

namespace ptx::readers::packed
{

namespace
{

constexpr std::string_view GzipMark = "\x1f\x8b";
constexpr std::string_view ZipMark = "PK\x03\x04";
constexpr unsigned Piece = 1U << 20U;
/// A byte of deflate becomes at most so many.
constexpr std::uint64_t MostGrowth = 1032;
constexpr std::size_t LongestName = 4096;

core::Failure damaged(const std::string& what)
{
    return {core::ExitCode::Damaged, what};
}

/// Calls `read(to, count)`, which gives how much came, until nothing comes or `most` bytes are there. False when it
/// gave a negative number.
template <class Read>
bool readUpTo(std::string& text, std::size_t most, Read read)
{
    while (text.size() < most) {
        const std::size_t done = text.size();
        const auto count = static_cast<unsigned>(std::min<std::size_t>(Piece, most - done));
        text.resize(done + count);
        const int came = read(text.data() + done, count);
        text.resize(done + static_cast<std::size_t>(std::max(came, 0)));
        if (came < 0)
            return false;
        if (came == 0)
            break;
    }
    return true;
}

core::Outcome<std::string> gzipContent(const std::string& path, std::size_t most)
{
    struct Close {
        void operator()(gzFile file) const { gzclose(file); }
    };
    const std::unique_ptr<gzFile_s, Close> file(gzopen(path.c_str(), "rb"));
    if (!file)
        return core::Failure{core::ExitCode::InputUnreadable, "cannot open the input"};
    std::string text;
    const bool isGood = readUpTo(text, most, [&](char* to, unsigned count) { return gzread(file.get(), to, count); });
    int state = Z_OK;
    gzerror(file.get(), &state);
    // An early end is no error to a reader that may wait for more.
    if (!isGood || state != Z_OK)
        return damaged("its gzip data are damaged or end too early");
    return text;
}

/// An open ZIP file.
class Zip
{
public:
    explicit Zip(const std::string& path) : m_file(unzOpen64(path.c_str())) {}
    Zip(const Zip&) = delete;
    Zip& operator=(const Zip&) = delete;
    ~Zip()
    {
        if (m_file)
            unzClose(m_file);
    }

    /// Goes to the STEP file; the reason if there is none or more than one.
    core::Trouble goToStep()
    {
        std::vector<std::string> names;
        for (int state = m_file ? unzGoToFirstFile(m_file) : UNZ_BADZIPFILE; state == UNZ_OK;
             state = unzGoToNextFile(m_file))
            if (std::string name = currentName(); isStep(name))
                names.push_back(std::move(name));
        if (!m_file)
            return damaged("its ZIP directory is damaged or missing");
        if (names.empty())
            return damaged("the ZIP file holds no STEP file");
        if (names.size() > 1)
            return damaged("the ZIP file holds " + std::to_string(names.size()) + " STEP files (\"" + names[0] +
                           "\", \"" + names[1] + "\"" + (names.size() > 2 ? ", ..." : "") +
                           "): unpack the one that is meant");
        return unzLocateFile(m_file, names[0].c_str(), 1) == UNZ_OK ? core::Trouble()
                                                                    : damaged("its ZIP directory is damaged");
    }

    core::Outcome<std::string> content(std::size_t most)
    {
        if (unzOpenCurrentFile(m_file) != UNZ_OK)
            return damaged("the STEP file in the ZIP file is encrypted or packed in an unknown way");
        std::string text;
        const bool isGood =
            readUpTo(text, most, [&](char* to, unsigned count) { return unzReadCurrentFile(m_file, to, count); });
        const bool isWhole = text.size() < most || unzeof(m_file) == 1;
        const int end = unzCloseCurrentFile(m_file);
        if (!isGood || (isWhole && end != UNZ_OK))
            return damaged("the STEP file in the ZIP file is damaged");
        return text;
    }

    std::uint64_t size()
    {
        unz_file_info64 info = {};
        const int state = unzGetCurrentFileInfo64(m_file, &info, nullptr, 0, nullptr, 0, nullptr, 0);
        return state == UNZ_OK ? info.uncompressed_size : 0;
    }

private:
    static bool isStep(const std::string& name)
    {
        const std::string extension = protocol::extensionOf(name);
        return (extension == "stp" || extension == "step" || extension == "p21") && !name.starts_with("__MACOSX/");
    }

    std::string currentName()
    {
        std::vector<char> name(LongestName + 1, '\0');
        unzGetCurrentFileInfo64(m_file, nullptr, name.data(), LongestName, nullptr, 0, nullptr, 0);
        return name.data();
    }

    unzFile m_file;
};

std::string headOf(const std::string& path)
{
    std::string head(4, '\0');
    std::ifstream stream(path, std::ios::binary);
    stream.read(head.data(), static_cast<std::streamsize>(head.size()));
    head.resize(static_cast<std::size_t>(stream.gcount()));
    return head;
}

/// The length of the last member, modulo 2^32 (RFC 1952, 2.3.1).
std::uint64_t gzipSize(const std::string& path)
{
    std::ifstream stream(path, std::ios::binary);
    unsigned char bytes[4] = {};
    stream.seekg(-4, std::ios::end);
    if (!stream.read(reinterpret_cast<char*>(bytes), 4))
        return 0;
    return bytes[0] | std::uint64_t{bytes[1]} << 8U | std::uint64_t{bytes[2]} << 16U | std::uint64_t{bytes[3]} << 24U;
}

std::uint64_t zipSize(const std::string& path)
{
    Zip zip(path);
    return zip.goToStep() ? 0 : zip.size();
}

} // namespace

bool isPacked(std::string_view head)
{
    return head.starts_with(GzipMark) || head.starts_with(ZipMark);
}

core::Outcome<std::string> content(const std::string& path, std::size_t most)
{
    if (headOf(path).starts_with(GzipMark))
        return gzipContent(path, most);
    Zip zip(path);
    if (core::Trouble trouble = zip.goToStep())
        return *trouble;
    return zip.content(most);
}

std::uint64_t sizeOf(const std::string& path)
{
    std::error_code error;
    const std::uint64_t bytes = std::filesystem::file_size(path, error);
    const std::string head = headOf(path);
    if (error || !isPacked(head))
        return error ? 0 : bytes;
    return std::min(head.starts_with(GzipMark) ? gzipSize(path) : zipSize(path), MostGrowth * bytes);
}

} // namespace ptx::readers::packed
