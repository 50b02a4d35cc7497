#include "tools/ptxconvert/ReaderTable.h"
#include "protocol/Formats.h"
#include "ptx/readers/Reader.h"

#include <gmock/gmock.h>

#include <string>
#include <vector>

using ptxconvert::formats;

TEST(ReaderTable, ReadsTheFormatsThatTheHostIsTold)
{
    ASSERT_EQ(formats().size(), protocol::ReadFormats.size());
    for (std::size_t i = 0; i < formats().size(); ++i) {
        EXPECT_STREQ(formats()[i].name, protocol::ReadFormats[i].name);
        const std::vector<std::string> extensions(formats()[i].extensions.begin(), formats()[i].extensions.end());
        EXPECT_THAT(extensions, testing::ElementsAreArray(protocol::ReadFormats[i].extensions)) << formats()[i].name;
    }
}

TEST(ReaderTable, LooksForPartFilesWhereTheHostAsksForThem)
{
    for (const ptx::readers::Format& format : formats())
        for (const char* extension : format.extensions)
            EXPECT_EQ(format.refersToParts != nullptr, protocol::mayNamePartFiles(extension)) << extension;
}
