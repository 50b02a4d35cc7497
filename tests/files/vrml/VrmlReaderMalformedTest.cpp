#include "host/OSGSystem/TreeFunctions.h"
#include "tests/files/vrml/VrmlTest.h"

#include <QMap>

namespace
{

constexpr const char* folder = ZN_MALFORMED_VRML;

/// The outcome that the file EXPECTED.txt tells for each file: "name: text".
QMap<QString, QString> expectedOutcomes()
{
    QFile file(QString::fromUtf8(folder) + QStringLiteral("/EXPECTED.txt"));
    EXPECT_TRUE(file.open(QIODevice::ReadOnly));
    QMap<QString, QString> outcomes;
    while (!file.atEnd()) {
        const QString line = QString::fromUtf8(file.readLine()).trimmed();
        const int colon = line.indexOf(QStringLiteral(": "));
        outcomes.insert(line.left(colon), line.mid(colon + 2));
    }
    return outcomes;
}

class VrmlMalformedTest : public VrmlTest
{
protected:
    /// The error, or the number of triangles and what was told along with them.
    QString outcome(const QString& path)
    {
        const files::ReadResult result = read(path);
        if (!result)
            return QString::fromLatin1(files::errorName(result.error().code)) + QStringLiteral(" ") +
                   QString(result.error().toString()).remove(QString::fromUtf8(folder) + QStringLiteral("/"));
        std::size_t indices = 0;
        osg::traverse(root(), [&](const osg::NodePtr& node) {
            if (geometry(node))
                indices += mesh(node).triangles.size();
            return osg::Action::Continue;
        });
        QString text = QStringLiteral("%1 triangles").arg(indices / 3);
        for (const QString& note : texts(result.warnings))
            text += QStringLiteral("; ") + QString(note).remove(QString::fromUtf8(folder) + QStringLiteral("/"));
        return text;
    }
};

TEST_F(VrmlMalformedTest, EveryFileOfTheFolderEndsAsExpected)
{
    const QMap<QString, QString> expected = expectedOutcomes();
    QMap<QString, QString> actual;
    for (const QString& name : QDir(QString::fromUtf8(folder)).entryList({QStringLiteral("*.wrl")}, QDir::Files))
        actual.insert(name, outcome(QString::fromUtf8(folder) + QStringLiteral("/") + name));
    EXPECT_EQ(actual.keys(), expected.keys());
    for (auto file = actual.cbegin(); file != actual.cend(); ++file)
        EXPECT_EQ(file.value(), expected.value(file.key())) << file.key().toStdString();
}

} // namespace
