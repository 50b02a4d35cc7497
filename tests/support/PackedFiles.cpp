#include "tests/support/PackedFiles.h"

#include <gtest/gtest.h>

#include <minizip/zip.h>
#include <zlib.h>

namespace packedfiles
{

std::string gzipped(const std::string& text)
{
    constexpr int gzipWindow = 15 + 16;
    z_stream stream = {};
    EXPECT_EQ(deflateInit2(&stream, Z_BEST_SPEED, Z_DEFLATED, gzipWindow, 8, Z_DEFAULT_STRATEGY), Z_OK);
    std::string result(deflateBound(&stream, text.size()), '\0');
    stream.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(text.data()));
    stream.avail_in = static_cast<uInt>(text.size());
    stream.next_out = reinterpret_cast<Bytef*>(result.data());
    stream.avail_out = static_cast<uInt>(result.size());
    EXPECT_EQ(deflate(&stream, Z_FINISH), Z_STREAM_END);
    result.resize(stream.total_out);
    deflateEnd(&stream);
    return result;
}

void writeZip(const std::string& path, const std::vector<std::pair<std::string, std::string>>& entries)
{
    const zipFile file = zipOpen64(path.c_str(), APPEND_STATUS_CREATE);
    ASSERT_TRUE(file);
    for (const auto& [name, text] : entries) {
        const zip_fileinfo info = {};
        ASSERT_EQ(
            zipOpenNewFileInZip(file, name.c_str(), &info, nullptr, 0, nullptr, 0, nullptr, Z_DEFLATED, Z_BEST_SPEED),
            ZIP_OK);
        ASSERT_EQ(zipWriteInFileInZip(file, text.data(), static_cast<unsigned>(text.size())), ZIP_OK);
        ASSERT_EQ(zipCloseFileInZip(file), ZIP_OK);
    }
    ASSERT_EQ(zipClose(file, nullptr), ZIP_OK);
}

} // namespace packedfiles
