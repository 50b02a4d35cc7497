#include "ptx/core/Rescue.h"

#include <gmock/gmock.h>

#include <QFile>
#include <QTemporaryDir>

#include <thread>

using namespace ptx::core;
using testing::ElementsAre;
using testing::IsEmpty;

namespace
{

class RescueTest : public testing::Test
{
protected:
    std::string path() const { return m_folder.filePath(QStringLiteral("out.parts")).toStdString(); }

    /// The file as a process leaves it that does not come to its end.
    void keepMarks()
    {
        m_content.setFileName(QString::fromStdString(path()));
        ASSERT_TRUE(m_content.open(QIODevice::ReadOnly));
        m_marks = m_content.readAll();
        m_content.close();
    }
    void putMarksBack()
    {
        ASSERT_TRUE(m_content.open(QIODevice::WriteOnly));
        m_content.write(m_marks);
        m_content.close();
    }

    QByteArray marks() const { return m_marks; }

private:
    QTemporaryDir m_folder;
    QFile m_content;
    QByteArray m_marks;
};

} // namespace

TEST_F(RescueTest, ThePartOfTheThreadThatCrashedIsLost)
{
    {
        Rescue first(path(), 0);
        const Rescue::Mark own = first.workOnPart(2);
        std::thread([&] {
            const Rescue::Mark other = first.workOnPart(5);
            EXPECT_TRUE(first.noteCrash());
            keepMarks();
        }).join();
    }
    putMarksBack();
    const Rescue second(path(), 1);
    EXPECT_THAT(second.lostParts(), ElementsAre(5));
    EXPECT_EQ(second.translationCrashes(), 0);
}

TEST_F(RescueTest, AllPartsAtWorkAreLostWhereTheThreadHasNone)
{
    {
        Rescue first(path(), 0);
        {
            const Rescue::Mark done = first.workOnPart(0);
        }
        const Rescue::Mark own = first.workOnPart(2);
        std::thread([&] { EXPECT_TRUE(first.noteCrash()); }).join();
        keepMarks();
    }
    putMarksBack();
    EXPECT_THAT(Rescue(path(), 1).lostParts(), ElementsAre(2));
}

TEST_F(RescueTest, LossesAddUp)
{
    {
        Rescue first(path(), 0);
        const Rescue::Mark own = first.workOnPart(2);
        first.noteCrash();
        keepMarks();
    }
    putMarksBack();
    {
        Rescue second(path(), 1);
        const Rescue::Mark own = second.translate();
        second.noteCrash();
        keepMarks();
    }
    putMarksBack();
    {
        Rescue third(path(), 2);
        EXPECT_THAT(third.lostParts(), ElementsAre(2));
        EXPECT_EQ(third.translationCrashes(), 1);
        const Rescue::Mark own = third.translate();
        third.noteCrash();
        keepMarks();
    }
    putMarksBack();
    EXPECT_EQ(Rescue(path(), 3).translationCrashes(), 2);
}

TEST_F(RescueTest, WorkAheadThatCrashedTakesTheBlameAlone)
{
    {
        Rescue first(path(), 0);
        EXPECT_TRUE(first.mayWorkAhead());
        const Rescue::Mark translation = first.translate();
        std::thread([&] {
            const Rescue::Mark ahead = first.workAhead();
            std::thread([&] { EXPECT_TRUE(first.noteCrash()); }).join();
            keepMarks();
        }).join();
    }
    putMarksBack();
    const Rescue second(path(), 1);
    EXPECT_EQ(second.translationCrashes(), 0);
    EXPECT_THAT(second.lostParts(), IsEmpty());
    EXPECT_FALSE(second.mayWorkAhead());
}

TEST_F(RescueTest, WorkAheadIsNotToBlameForACrashOfTheTranslation)
{
    {
        Rescue first(path(), 0);
        const Rescue::Mark translation = first.translate();
        std::thread([&] {
            const Rescue::Mark ahead = first.workAhead();
            keepMarks();
        }).join();
        EXPECT_TRUE(first.noteCrash());
        keepMarks();
    }
    putMarksBack();
    EXPECT_EQ(Rescue(path(), 1).translationCrashes(), 1);
}

TEST_F(RescueTest, WorkAheadIsOverWithTheLastThreadOfIt)
{
    Rescue first(path(), 0);
    std::thread([&] {
        const Rescue::Mark ahead = first.workAhead();
        std::thread([&] { const Rescue::Mark other = first.workAhead(); }).join();
        keepMarks();
    }).join();
    const QByteArray during = marks();
    keepMarks();
    EXPECT_NE(during, marks());
}

TEST_F(RescueTest, ACrashAheadIsNoAttemptLess)
{
    for (const bool isAhead : {false, true}) {
        {
            Rescue first(path(), 0);
            const Rescue::Mark own = isAhead ? first.workAhead() : first.workOnPart(0);
            first.noteCrash();
            keepMarks();
        }
        for (int attempt = 1; attempt <= Rescue::MostAttempts + 1; ++attempt) {
            putMarksBack();
            Rescue next(path(), attempt);
            EXPECT_EQ(next.isLastAttempt(), attempt == Rescue::MostAttempts + (isAhead ? 1 : 0)) << attempt;
            const Rescue::Mark own = next.workOnPart(static_cast<std::size_t>(attempt));
            next.noteCrash();
            keepMarks();
        }
    }
}

TEST_F(RescueTest, WithNothingAtWorkNothingIsToBeLeftOut)
{
    Rescue first(path(), 0);
    EXPECT_FALSE(first.noteCrash());
    {
        const Rescue::Mark done = first.workOnPart(0);
    }
    EXPECT_FALSE(first.noteCrash());
}

TEST_F(RescueTest, TheFirstAttemptTakesNothingFromAFileOfBefore)
{
    QFile file(QString::fromStdString(path()));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("2sxxx");
    file.close();
    EXPECT_THAT(Rescue(path(), 0).lostParts(), IsEmpty());
    EXPECT_FALSE(file.exists());
}
