#include "files/vrml/Gunzip.h"

#include <algorithm>
#include <limits>
#include <string>

#include <zlib.h>

namespace files::vrml
{

namespace
{

constexpr std::size_t chunkSize = std::size_t(1) << 18;
constexpr int gzipWindow = 15 + 16;

/// A zlib stream that ends with its scope.
class Inflater
{
public:
    Inflater() { m_isGood = inflateInit2(&m_stream, gzipWindow) == Z_OK; }
    Inflater(const Inflater&) = delete;
    Inflater& operator=(const Inflater&) = delete;
    ~Inflater() { inflateEnd(&m_stream); }

    z_stream& stream() { return m_stream; }
    bool isGood() const { return m_isGood; }

private:
    z_stream m_stream = {};
    bool m_isGood = false;
};

/// Feeds `input` to the stream, in pieces that zlib can count, and inflates up to `size` bytes to `out`.
int inflateSome(z_stream& stream, std::string_view& input, char* out, std::size_t size)
{
    const std::size_t piece = std::min<std::size_t>(input.size(), std::numeric_limits<uInt>::max());
    stream.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(input.data()));
    stream.avail_in = static_cast<uInt>(piece);
    stream.next_out = reinterpret_cast<Bytef*>(out);
    stream.avail_out = static_cast<uInt>(size);
    const int state = inflate(&stream, Z_NO_FLUSH);
    input.remove_prefix(piece - stream.avail_in);
    return state;
}

[[noreturn]] void failDamaged(const ReadTask& task, const QString& path)
{
    task.failIn(path, ErrorCode::Damaged, tr("the compressed data are damaged or end too early"));
}

} // namespace

bool isGzip(std::string_view bytes)
{
    return bytes.starts_with("\x1f\x8b");
}

FileBytes gunzip(ReadTask& task, const QString& path, std::string_view packed)
{
    Inflater inflater;
    if (!inflater.isGood())
        task.failIn(path, ErrorCode::OutOfMemory, tr("there is not enough memory for this file"));
    auto text = std::make_shared<std::string>();
    std::string_view left = packed;
    while (isGzip(left)) {
        int state = Z_OK;
        while (state != Z_STREAM_END) {
            const std::size_t done = text->size();
            text->resize(done + chunkSize);
            state = inflateSome(inflater.stream(), left, text->data() + done, chunkSize);
            const std::size_t made = chunkSize - inflater.stream().avail_out;
            text->resize(done + made);
            if (state != Z_STREAM_END && (state != Z_OK || (made == 0 && left.empty())))
                failDamaged(task, path);
            task.countUnpackedBytes(path, made);
        }
        inflateReset(&inflater.stream());
    }
    const auto* start = reinterpret_cast<const std::byte*>(text->data());
    return {std::shared_ptr<const std::byte[]>(text, start), text->size()};
}

} // namespace files::vrml
