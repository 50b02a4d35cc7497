// Pictures of variant sets, from functions and on the whole road of a model with bookmarks.

#include "standalone/startup/StandaloneSession.h"
#include "standalone/znOpenSGUberCamera/SessionCameras.h"
#include "standalone/znVariants/SessionVariants.h"
#include "tests/roads/znimport/CarRun.h"

#include <QImage>

namespace
{

class VariantPicturesTest : public CarRun
{
protected:
    QStringList pictures() const { return QDir(path("pictures")).entryList(QDir::Files | QDir::Hidden); }
    QImage picture(const char* name) const { return QImage(QDir(path("pictures")).filePath(text(name))); }
};

/// The paint at a place: "light" or "dark" glass, the "orange" box or the "grey" body.
const char* paintAt(const QImage& image, int x, int y)
{
    const QColor color = image.pixelColor(x, y);
    if (color.red() > 1.5 * color.blue())
        return "orange";
    if (color.lightness() < 60)
        return "dark";
    return color.blue() > color.red() + 10 ? "light" : "grey";
}

TEST_F(VariantPicturesTest, EachBookmarkOfAModelBecomesAPictureFromItsViewpoint)
{
    const Ending ending = znimport(withScriptedChild({writeCar(), text("--variants"), text("--snapshot-variants"),
                                                      path("pictures"), text("--size"), text("320x200")}));
    ASSERT_EQ(ending.exitCode, 0) << ending.errors.toStdString();
    EXPECT_EQ(ending.output, text("Open Roof [Exterior] from Open Roof_vp\nNight [Exterior] from Night_vp\nJourney\n"));
    EXPECT_EQ(pictures(), (QStringList{text("Journey.png"), text("Night.png"), text("Open Roof.png")}));
    ASSERT_EQ(picture("Night.png").size(), QSize(320, 200));
    EXPECT_STREQ(paintAt(picture("Open Roof.png"), 160, 100), "grey");
    // The side of the car: its body in the middle, the roof above that.
    EXPECT_STREQ(paintAt(picture("Night.png"), 160, 100), "grey");
    EXPECT_STREQ(paintAt(picture("Night.png"), 160, 82), "dark");
}

TEST_F(VariantPicturesTest, ANamedViewCountsForAllSets)
{
    const Ending ending = znimport(withScriptedChild({writeCar(), text("--snapshot-variants"), path("pictures"),
                                                      text("--size"), text("320x200"), text("--view"), text("top")}));
    ASSERT_EQ(ending.exitCode, 0) << ending.errors.toStdString();
    EXPECT_STREQ(paintAt(picture("Open Roof.png"), 160, 100), "grey");
    EXPECT_STREQ(paintAt(picture("Night.png"), 160, 100), "dark");
    EXPECT_STREQ(paintAt(picture("Journey.png"), 160, 100), "orange");
}

TEST_F(VariantPicturesTest, ASavedViewShowsItsSetFromItsViewpoint)
{
    const QString car = writeCar();
    const QStringList size{text("--size"), text("320x200")};
    ASSERT_EQ(
        znimport(withScriptedChild(QStringList{car, text("--snapshot-variants"), path("pictures")} + size)).exitCode,
        0);
    for (const char* name : {"Night", "Open Roof"}) {
        const Ending ending = znimport(withScriptedChild(
            QStringList{car, text("--view"), text("saved:") + text(name), text("--snapshot"), path("one.png")} + size));
        ASSERT_EQ(ending.exitCode, 0) << ending.errors.toStdString();
        EXPECT_EQ(QImage(path("one.png")), QImage(path("pictures") + text("/") + text(name) + text(".png"))) << name;
    }
}

TEST_F(VariantPicturesTest, ASavedViewIsThePlaceForTheOtherSetsToo)
{
    const Ending ending =
        znimport(withScriptedChild({writeCar(), text("--snapshot-variants"), path("pictures"), text("--size"),
                                    text("320x200"), text("--view"), text("saved:Night")}));
    ASSERT_EQ(ending.exitCode, 0) << ending.errors.toStdString();
    // The side of the car, whose roof is open in one of them and dark in the other.
    EXPECT_STREQ(paintAt(picture("Night.png"), 160, 82), "dark");
    EXPECT_STRNE(paintAt(picture("Open Roof.png"), 160, 82), "dark");
    EXPECT_STREQ(paintAt(picture("Open Roof.png"), 160, 100), "grey");
}

TEST_F(VariantPicturesTest, ASavedViewThatIsNotThereIsTold)
{
    const QString car = writeCar();
    for (const auto& [name, complaint] :
         {std::pair("Day",
                    "znimport: --view: there is no variant set 'Day'; the scene has 'Open Roof', 'Night', 'Journey'"),
          std::pair("Journey", "znimport: --view: the variant set 'Journey' has no viewpoint")}) {
        const Ending ending = znimport(withScriptedChild(
            {car, text("--view"), text("saved:") + text(name), text("--snapshot"), path("none.png")}));
        EXPECT_EQ(ending.exitCode, 1);
        EXPECT_TRUE(ending.errors.contains(text(complaint))) << ending.errors.toStdString();
        EXPECT_FALSE(QFileInfo::exists(path("none.png")));
    }
    EXPECT_EQ(znimport({car, text("--view"), text("saved:"), text("--snapshot"), path("none.png")}).exitCode, 2);
}

TEST_F(VariantPicturesTest, ASceneWithoutSetsGivesAWarning)
{
    const QString file = write("a.obj", "v 0 0 0\nv 1 0 0\nv 0 1 0\nf 1 2 3\n");
    const Ending ending = znimport({file, text("--snapshot-variants"), path("pictures")});
    EXPECT_EQ(ending.exitCode, 0);
    EXPECT_TRUE(ending.errors.contains(text("znimport: there are no variant sets to draw\n")))
        << ending.errors.toStdString();
    EXPECT_EQ(pictures(), QStringList());
}

TEST_F(VariantPicturesTest, AFileInPlaceOfTheFolderIsWrongUse)
{
    const QString file = write("a.obj", "v 0 0 0\nv 1 0 0\nv 0 1 0\nf 1 2 3\n");
    const Ending ending = znimport({file, text("--snapshot-variants"), file});
    EXPECT_EQ(ending.exitCode, 2);
    EXPECT_EQ(ending.errors, text("znimport: --snapshot-variants wants a folder, and '%1' is a file\n").arg(file));
}

} // namespace
