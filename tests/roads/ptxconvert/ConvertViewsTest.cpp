// Saved views of small files.

#include "host/OSGSystem/Cast.h"
#include "host/znOpenSGUberCamera/UberCamera.h"
#include "scene/Tags.h"
#include "tests/roads/ptxconvert/ConvertRun.h"
#include "tests/support/StepText.h"

#include <gmock/gmock.h>

using namespace ptxtest;
using testing::ElementsAre;
using testing::FloatNear;
using testing::HasSubstr;
using testing::IsEmpty;

namespace
{

std::string ref(int entity)
{
    return "#" + std::to_string(entity);
}

/// A box of 30 x 20 x 10 units, and views of it from the front.
class ViewText
{
public:
    explicit ViewText(LengthUnit unit = LengthUnit::Millimetre) : m_step(unit), m_part(m_step.product("a [part]"))
    {
        m_step.box(m_part, {0, 0, 0}, {30, 20, 10});
    }

    int add(const std::string& entity) { return m_step.add(entity); }

    int camera(const std::string& name, const std::string& projection = ".PARALLEL.", const std::string& y = "-100.")
    {
        const int eye = add("CARTESIAN_POINT('',(15.," + y + ",5.))");
        const int along = add("DIRECTION('',(0.,1.,0.))");
        const int left = add("DIRECTION('',(-1.,0.,0.))");
        const int system = add("AXIS2_PLACEMENT_3D(''," + ref(eye) + "," + ref(along) + "," + ref(left) + ")");
        const int zero = add("CARTESIAN_POINT('',(0.,0.,0.))");
        const int corner = add("AXIS2_PLACEMENT_3D(''," + ref(zero) + ",$,$)");
        const int window = add("PLANAR_BOX('',60.,50.," + ref(corner) + ")");
        const int volume =
            add("VIEW_VOLUME(" + projection + "," + ref(zero) + ",100.,0.,.F.,0.,.F.,.F.," + ref(window) + ")");
        return add("CAMERA_MODEL_D3('" + name + "'," + ref(system) + "," + ref(volume) + ")");
    }

    void view(const std::string& name, const std::string& projection = ".PARALLEL.", const std::string& y = "-100.")
    {
        draw(camera(name, projection, y));
    }

    void draw(int camera) { add("DRAUGHTING_MODEL('',(" + ref(camera) + ")," + ref(m_step.context()) + ")"); }

    /// A drawing of the part's own shape.
    void drawShape(int camera)
    {
        const int zero = add("CARTESIAN_POINT('',(0.,0.,0.))");
        const int origin = add("AXIS2_PLACEMENT_3D(''," + ref(zero) + ",$,$)");
        const int map = add("REPRESENTATION_MAP(" + ref(origin) + "," + ref(m_part.representation) + ")");
        const int item = add("MAPPED_ITEM(''," + ref(map) + "," + ref(origin) + ")");
        add("DRAUGHTING_MODEL('',(" + ref(camera) + "," + ref(item) + ")," + ref(m_step.context()) + ")");
    }

    /// Puts the part into an assembly.
    void hold() { m_step.place(m_step.product("top"), m_part, "use", {100, 0, 0}); }

    std::string text() { return m_step.text(); }

private:
    StepText m_step;
    StepProduct m_part;
};

std::vector<osg::NodePtr> bookmarks(const osg::NodePtr& root)
{
    std::vector<osg::NodePtr> found;
    for (unsigned i = 0; root && i < root->getNChildren(); ++i)
        if (!osg::tagsOf(root->getChild(i)).empty() && osg::tagsOf(root->getChild(i))[0] == "stylar::bookmark")
            found.push_back(root->getChild(i));
    return found;
}

std::vector<std::string> names(const std::vector<osg::NodePtr>& nodes)
{
    std::vector<std::string> result;
    for (const osg::NodePtr& node : nodes)
        result.push_back(nameOf(node));
    return result;
}

osg::UberCameraPtr cameraOf(const osg::NodePtr& bookmark)
{
    return osg::fcCast<osg::UberCamera>(bookmark->getChild(0)->getCore());
}

} // namespace

TEST(ConvertViews, AViewIsABookmarkWithItsCamera)
{
    ViewText step;
    step.view("Front");
    ConvertRun run;
    ASSERT_EQ(run.convertText("part.stp", step.text()), 0) << run.log();
    const auto found = bookmarks(run.scene());
    ASSERT_EQ(names(found), std::vector<std::string>{"Front"});
    EXPECT_THAT(osg::tagsOf(found[0]), ElementsAre("stylar::bookmark", "bookmark_group[a (part)]"));
    ASSERT_EQ(found[0]->getNChildren(), 1u);
    EXPECT_THAT(osg::tagsOf(found[0]->getChild(0)), ElementsAre("Front"));
    const osg::UberCameraPtr camera = cameraOf(found[0]);
    ASSERT_TRUE(camera);
    EXPECT_EQ(camera->getProjection(), osg::UberCamera::Parallel);
    EXPECT_EQ(camera->getHeight(), 50);
    EXPECT_THAT(camera->getMatrix().values,
                ElementsAre(1, 0, 0, 0, 0, 0, 1, 0, 0, -1, 0, 0, 15, FloatNear(-37.4166F, 1e-3F), 5, 1));
}

TEST(ConvertViews, CamerasAreInTheUnitOfTheirDrawing)
{
    ViewText step(LengthUnit::Inch);
    step.view("Front");
    step.view("Near", ".CENTRAL.");
    ConvertRun run;
    ASSERT_EQ(run.convertText("part.stp", step.text()), 0) << run.log();
    const auto found = bookmarks(run.scene());
    ASSERT_EQ(names(found), (std::vector<std::string>{"Front", "Near"}));
    EXPECT_FLOAT_EQ(cameraOf(found[0])->getHeight(), 1270);
    EXPECT_FLOAT_EQ(cameraOf(found[0])->getMatrix()[12], 381);
    EXPECT_EQ(cameraOf(found[1])->getProjection(), osg::UberCamera::Perspective);
    EXPECT_NEAR(cameraOf(found[1])->getFieldOfView(), 28.0725, 1e-3);
    EXPECT_FLOAT_EQ(cameraOf(found[1])->getMatrix()[13], -2540);
}

TEST(ConvertViews, NamesAreUniqueAndSafe)
{
    ViewText step;
    step.view("A[1]");
    step.view("A[1]");
    step.view("A[1]", ".CENTRAL.");
    step.view("");
    step.view("* front");
    ConvertRun run;
    ASSERT_EQ(run.convertText("part.stp", step.text()), 0) << run.log();
    EXPECT_EQ(names(bookmarks(run.scene())), (std::vector<std::string>{"A(1)", "A(1) (2)", "View 3"}));
    EXPECT_THAT(run.log(), HasSubstr("3 saved views"));
    EXPECT_THAT(run.log(), HasSubstr("1 views that a program made by itself are left out"));
}

TEST(ConvertViews, CamerasThatNothingDrawsAreNoViews)
{
    ViewText step;
    step.camera("Origin of something");
    ConvertRun run;
    ASSERT_EQ(run.convertText("part.stp", step.text()), 0) << run.log();
    EXPECT_THAT(bookmarks(run.scene()), IsEmpty());
}

TEST(ConvertViews, ViewsOfAPartCountWhereItIsTheWhole)
{
    ViewText alone;
    alone.drawShape(alone.camera("Front"));
    ConvertRun run;
    ASSERT_EQ(run.convertText("part.stp", alone.text()), 0) << run.log();
    EXPECT_EQ(names(bookmarks(run.scene())), std::vector<std::string>{"Front"});
    ViewText held;
    held.drawShape(held.camera("Front"));
    held.view("Of all");
    held.hold();
    ConvertRun assembly;
    ASSERT_EQ(assembly.convertText("top.stp", held.text()), 0) << assembly.log();
    EXPECT_EQ(names(bookmarks(assembly.scene())), std::vector<std::string>{"Of all"});
    EXPECT_THAT(assembly.log(), HasSubstr("1 saved views of parts within the assembly are left out"));
}

TEST(ConvertViews, CamerasThatAreBrokenAreLeftOutWithAWord)
{
    ViewText step;
    step.draw(step.add("CAMERA_MODEL_D3('Hollow',$,$)"));
    step.view("Far", ".PARALLEL.", "1.E300");
    ConvertRun run;
    ASSERT_EQ(run.convertText("part.stp", step.text()), 0) << run.log();
    EXPECT_THAT(bookmarks(run.scene()), IsEmpty());
    EXPECT_THAT(run.log(), HasSubstr("saved view \"Hollow\" is left out: its camera is incomplete"));
}
