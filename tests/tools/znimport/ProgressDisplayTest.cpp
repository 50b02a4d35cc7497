#include "tools/znimport/ProgressDisplay.h"

#include <gtest/gtest.h>

#include <string>

namespace
{

/// What a display writes.
class ProgressDisplayTest : public testing::Test
{
protected:
    ~ProgressDisplayTest() override { std::fclose(m_stream); }

    std::string text()
    {
        std::string text(static_cast<std::size_t>(std::ftell(m_stream)), '\0');
        std::rewind(m_stream);
        EXPECT_EQ(std::fread(text.data(), 1, text.size(), m_stream), text.size());
        return text;
    }

    std::FILE* const m_stream = std::tmpfile();
};

TEST_F(ProgressDisplayTest, WithoutATerminalOnlyTheEndOfAllPartsIsALine)
{
    znimport::ProgressDisplay display(m_stream, false);
    display.begin(QStringLiteral("/cad/engine.stp"));
    display.showParts({3, 1, 0, 0}, QStringLiteral("0 of 3"));
    display.showParts({3, 2, 1, 0}, QStringLiteral("1 of 3"));
    display.showParts({3, 0, 2, 1}, QStringLiteral("2 of 3, 1 failed"));
    EXPECT_EQ(text(), "engine.stp: 2 of 3, 1 failed\n");
}

TEST_F(ProgressDisplayTest, OnATerminalOneLineChanges)
{
    znimport::ProgressDisplay display(m_stream, true);
    display.begin(QStringLiteral("/cad/engine.stp"));
    display.showParts({4, 2, 1, 0}, QStringLiteral("1 of 4"));
    const std::string shown = text();
    EXPECT_EQ(shown.rfind("\r\x1b[Kengine.stp: 1 of 4 25 %", 0), 0u) << shown;
    EXPECT_EQ(shown.find('\n'), std::string::npos);
}

} // namespace
