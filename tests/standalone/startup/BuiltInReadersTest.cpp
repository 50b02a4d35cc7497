#include "standalone/startup/BuiltInReaders.h"

#include "tests/standalone/session/SessionTest.h"
#include "tests/support/QtPrinters.h"

namespace
{

TEST(BuiltInReaders, KnowTheMeshFormatsAndSceneFiles)
{
    QStringList extensions;
    for (const formats::SceneFormat& format : zn::builtInReaders().formats())
        extensions << format.extensions;
    EXPECT_EQ(extensions.join(QLatin1Char(' ')), QStringLiteral("obj gltf glb ply wrl wrz osb"));
}

TEST(BuiltInReaders, ADamagedSceneFileIsRefusedWithItsPlace)
{
    QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("cut.osb"));
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly) && file.write("no scene") == 8);
    file.close();
    const formats::ReadResult result = zn::builtInReaders().read(path);
    ASSERT_TRUE(result.error);
    EXPECT_EQ(result.error->code, formats::ReadErrorCode::Damaged);
    EXPECT_EQ(result.error->file, path);
    EXPECT_EQ(result.error->place.left(5), QStringLiteral("byte "));
    EXPECT_FALSE(result.root);
}

TEST(BuiltInReaders, AreThoseOfANewSession)
{
    znStandaloneSession session;
    EXPECT_EQ(session.state<formats::SceneReaders>().formats().size(), zn::builtInReaders().formats().size());
}

} // namespace
