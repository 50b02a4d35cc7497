// Formats whose files name no others, or whose readers follow no such name.

#include "tests/roads/znimport/ToolRun.h"
#include "tests/support/IgesText.h"

#include <sys/stat.h>

namespace
{

/// Whoever opens it waits for ever.
class NoReferences : public ToolRun
{
protected:
    NoReferences() { ::mkfifo(path("pipe.igs").toStdString().c_str(), 0600); }
    void SetUp() override { ASSERT_TRUE(QFile::link(path("pipe.igs"), path("pipe.png"))); }

    void expectIn(const char* name, const QByteArray& content)
    {
        const Ending ending = znimport({write(name, content), text("--tree")});
        EXPECT_EQ(ending.exitCode, 0) << ending.errors.toStdString();
        EXPECT_TRUE(ending.output.contains(text(" triangle"))) << ending.output.toStdString();
    }
};

const char Facet[] = "facet normal 0 0 1\nouter loop\nvertex 0 0 0\nvertex 1 0 0\nvertex 0 1 0\nendloop\nendfacet\n";

} // namespace

TEST_F(NoReferences, ExternalReferencesOfIgesAreNotFollowed)
{
    ptxtest::IgesText iges;
    iges.patch({0, 0, 0}, {30, 0, 0}, {0, 20, 0}, {30, 20, 0});
    iges.externalFile("pipe.igs");
    iges.externalFile("./pipe.igs");
    expectIn("a.igs", QByteArray::fromStdString(iges.text()));
}

TEST_F(NoReferences, AnStlFileNamesNone)
{
    expectIn("a.stl", QByteArray("solid pipe.igs\n") + Facet + "endsolid pipe.igs\n");
}

TEST_F(NoReferences, TexturesThatPlyCommentsNameAreNotFollowed)
{
    expectIn("a.ply", "ply\nformat ascii 1.0\ncomment TextureFile pipe.png\nelement vertex 3\nproperty float x\n"
                      "property float y\nproperty float z\nelement face 1\nproperty list uchar int vertex_indices\n"
                      "end_header\n0 0 0\n1 0 0\n0 1 0\n3 0 1 2\n");
}
