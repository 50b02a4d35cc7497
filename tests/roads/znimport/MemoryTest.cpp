// Files of few bytes that ask for much memory are refused with a sentence that names them.

#include "tests/roads/znimport/ToolRun.h"

namespace
{

class MemoryTest : public ToolRun
{
protected:
    /// A structure that doubles at each of `levels`.
    QString writeDoubling(int levels) const
    {
        QByteArray instances, parts;
        for (int i = 0; i < levels; ++i) {
            const QByteArray n = QByteArray::number(i), next = QByteArray::number(i + 1);
            for (const char* side : {"a", "b"})
                instances += "<Instance id='" + QByteArray(side) + n + "' partRef='#p" + next + "'/>";
            parts += "<Part id='p" + n + "' instanceRefs='a" + n + " b" + n + "'/>";
        }
        return write("bomb.plmxml", "<PLMXML><ProductDef><InstanceGraph rootRefs='a0'>" + instances +
                                        "</InstanceGraph>" + parts + "<Part id='p" + QByteArray::number(levels) +
                                        "'><Representation format='JT' location='x.jt'/></Part></ProductDef></PLMXML>");
    }
};

TEST_F(MemoryTest, CountsWithoutBytesAreRefusedWithFileAndPlace)
{
    const QString file = write(
        "zeros.gltf", R"({"asset":{"version":"2.0"},"nodes":[{"mesh":0}],"meshes":[{"primitives":[{"attributes":)"
                      R"({"POSITION":0}}]}],"accessors":[{"componentType":5126,"count":160000000,"type":"VEC3"}]})");
    const Ending end = znimport({file, text("-o"), path("o.glb")});
    EXPECT_EQ(end.exitCode, 1);
    EXPECT_TRUE(
        end.errors.contains(file + text(": more than 4194304 elements have no bytes in the file (/accessors/0)")))
        << end.errors.toStdString();
    EXPECT_FALSE(QFile::exists(path("o.glb")));
}

TEST_F(MemoryTest, PlacesOfADocumentAreHeldAgainstTheSettingBeforeTheyAreMade)
{
    const QString file = writeDoubling(21);
    const QStringList arguments{file, text("--tree-only"), text("--set"), text("read.memory=1024")};
    const Ending end = znimport(arguments);
    EXPECT_EQ(end.exitCode, 1);
    EXPECT_TRUE(end.errors.contains(file + text(": the structure has more than 1048576 places; Instance \"b20\"")))
        << end.errors.toStdString();
}

TEST_F(MemoryTest, WhereTheSystemHasNoMoreAnImportFailsWithASentence)
{
#ifdef __SANITIZE_ADDRESS__
    GTEST_SKIP() << "sanitizers need more address space than any limit leaves";
#endif
    const QString file = writeDoubling(20);
    for (const char* bytes : {"250000000", "400000000"}) {
        QProcess process;
        process.start(text("prlimit"), {text("--as=") + text(bytes), text(ZNIMPORT), file, text("--tree-only")});
        ASSERT_TRUE(process.waitForFinished(60000));
        EXPECT_EQ(process.exitStatus(), QProcess::NormalExit);
        EXPECT_EQ(process.exitCode(), 1);
        const QString errors = QString::fromUtf8(process.readAllStandardError());
        EXPECT_TRUE(errors.contains(text("not enough memory"))) << errors.toStdString();
    }
}

} // namespace
