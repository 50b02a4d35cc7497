#include "files/ReadTask.h"

#include "files/Failure.h"

#include <gtest/gtest.h>

#include <functional>
#include <limits>

namespace
{

constexpr std::uint64_t megabyte = std::uint64_t(1) << 20;

files::ReadTask taskOf(std::uint64_t maxMemory)
{
    files::ReadOptions options;
    options.limits.maxMemory = maxMemory;
    return {QStringLiteral("a.obj"), options};
}

std::string errorOf(const std::function<void()>& work)
{
    try {
        work();
    } catch (const files::Failure& failure) {
        return failure.error().toStringWithCode().toStdString();
    }
    return "none";
}

TEST(ReadTask, ASmallFileClaimsNoGigabytes)
{
    files::ReadTask task = taskOf(8192 * megabyte);
    task.countFileBytes(QStringLiteral("a.obj"), 1024);
    EXPECT_EQ(errorOf([&] { task.takeMemory(257 * megabyte - 1024); }), "none");
    EXPECT_EQ(errorOf([&] { task.takeMemory(1, QStringLiteral("line 7")); }),
              "a.obj: it would take more than 257 MB of memory, too much for a file of 1024 bytes (LimitExceeded at "
              "line 7)");
}

TEST(ReadTask, ALargeFileTakesWhatTheLimitAllows)
{
    files::ReadTask task = taskOf(8192 * megabyte);
    task.countFileBytes(QStringLiteral("a.obj"), 100 * megabyte);
    EXPECT_EQ(errorOf([&] { task.takeMemory(8092 * megabyte); }), "none");
    EXPECT_EQ(errorOf([&] { task.takeMemory(1); }),
              "a.obj: it would take more memory than the 8192 MB that it may (read.memory) (LimitExceeded)");
}

TEST(ReadTask, BytesOfFilesAndNodesCount)
{
    files::ReadTask bytes = taskOf(2 * megabyte);
    EXPECT_EQ(errorOf([&] { bytes.countFileBytes(QStringLiteral("b.mtl"), 2 * megabyte + 1); }),
              "a.obj: it would take more memory than the 2 MB that it may (read.memory) (LimitExceeded)");
    files::ReadTask nodes = taskOf(2 * megabyte);
    EXPECT_EQ(errorOf([&] { nodes.countNodes(2048); }), "none");
    EXPECT_NE(errorOf([&] { nodes.countNodes(1); }), "none");
}

/// A packed file of a few bytes may become many, and is small all the same.
TEST(ReadTask, UnpackedBytesMakeNoLargeFile)
{
    files::ReadTask task = taskOf(8192 * megabyte);
    task.countFileBytes(QStringLiteral("a.wrz"), 1024);
    EXPECT_EQ(errorOf([&] { task.countUnpackedBytes(QStringLiteral("a.wrz"), 256 * megabyte); }), "none");
    EXPECT_NE(errorOf([&] { task.countUnpackedBytes(QStringLiteral("a.wrz"), megabyte); }), "none");
}

TEST(ReadTask, CountsThatNoNumberHoldsAreTooMuch)
{
    files::ReadTask task = taskOf(std::numeric_limits<std::uint64_t>::max());
    task.countFileBytes(QStringLiteral("a.obj"), 1);
    EXPECT_NE(errorOf([&] { task.takeMemory(std::numeric_limits<std::uint64_t>::max()); }), "none");
}

} // namespace
