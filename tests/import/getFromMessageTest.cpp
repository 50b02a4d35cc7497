#include "import/getFromMessage.h"

#include "host/OSGSystem/Node.h"
#include "tests/import/ForeignValue.h"
#include "tests/support/QtPrinters.h"

#include <QString>
#include <QUrl>

#include <gmock/gmock.h>

using testing::HasSubstr;
using testing::StartsWith;

namespace
{

struct Twin {
    int number;
};

/// What `call` prints to standard error.
template <class Call>
std::string saidBy(const Call& call)
{
    testing::internal::CaptureStderr();
    call();
    return testing::internal::GetCapturedStderr();
}

TEST(GetFromMessage, CopiesTextsUrlsAndNodes)
{
    const osg::RefPtr<osg::NodePtr> node(osg::Node::create());
    znMessage message;
    message.set("text", boost::any(QString::fromUtf8("Gehäuse")), true);
    message.set("url", boost::any(QUrl(QStringLiteral("file:///materials"))), true);
    message.set("node", boost::any(osg::NodePtr(node)), true);

    QString text;
    QUrl url;
    osg::NodePtr found;
    EXPECT_TRUE(getFromMessage(message, "text", text));
    EXPECT_TRUE(getFromMessage(message, "url", url));
    EXPECT_TRUE(getFromMessage(message, "node", found));
    EXPECT_EQ(text, QString::fromUtf8("Gehäuse"));
    EXPECT_EQ(url, QUrl(QStringLiteral("file:///materials")));
    EXPECT_TRUE(found == node.get());
    EXPECT_EQ(found->getRefCount(), 1u);
}

TEST(GetFromMessage, IsSilentAboutAnAbsentAttribute)
{
    QString text = QStringLiteral("before");
    EXPECT_EQ(saidBy([&] { EXPECT_FALSE(getFromMessage(znMessage(), "text", text)); }), "");
    EXPECT_EQ(text, QStringLiteral("before"));
}

TEST(GetFromMessage, IsSilentAboutAnEmptyValue)
{
    const znMessage message(0, "text", boost::any());
    QString text = QStringLiteral("before");
    EXPECT_EQ(saidBy([&] { EXPECT_FALSE(getFromMessage(message, "text", text)); }), "");
    EXPECT_EQ(text, QStringLiteral("before"));
}

TEST(GetFromMessage, TellsBothTypesAndTheWayToTheCallOnAMismatch)
{
    const znMessage message(0, "FileIO tmp path", boost::any(3));
    QString text = QStringLiteral("before");
    const std::string said = saidBy([&] { EXPECT_FALSE(getFromMessage<QString>(message, "FileIO tmp path", text)); });
    EXPECT_THAT(said, StartsWith("getFromMessage : Attribute 'FileIO tmp path' has wrong type (is:'i' != "
                                 "req:'7QString')!\n"));
    EXPECT_THAT(said, HasSubstr("import_test"));
    EXPECT_EQ(text, QStringLiteral("before"));
}

TEST(GetFromMessage, ADerivedPointerIsAnotherType)
{
    const znMessage message(0, "node", boost::any(osg::AttachmentContainerPtr()));
    osg::NodePtr node;
    EXPECT_THAT(saidBy([&] { EXPECT_FALSE(getFromMessage(message, "node", node)); }), HasSubstr("has wrong type"));
}

TEST(GetFromMessage, RecognisesTheValueOfAnotherModuleByTheNameOfItsType)
{
    const znMessage message(0, "twin", foreignTwin(42));
    EXPECT_EQ(boost::any_cast<Twin>(&message.get("twin")), nullptr);
    Twin twin = {7};
    EXPECT_TRUE(getFromMessage(message, "twin", twin));
    EXPECT_EQ(twin.number, 42);
}

TEST(GetFromMessage, TheMessagesOwnGetRecognisesItAsWell)
{
    const znMessage message(0, "twin", foreignTwin(42));
    Twin twin = {7};
    EXPECT_TRUE(message.get("twin", twin));
    EXPECT_EQ(twin.number, 42);
}

} // namespace
