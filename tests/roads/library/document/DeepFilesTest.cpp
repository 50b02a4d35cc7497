#include "cad/xml/CADDocument.h"

#include "tests/cad/xml/ModelFixture.h"

#include <functional>

#include <pthread.h>

namespace HB::XML::CAD
{

namespace
{

// The address sanitizer's own frames are many times those of the code.
#if defined(__SANITIZE_ADDRESS__)
constexpr std::size_t stackFactor = 8;
#else
constexpr std::size_t stackFactor = 1;
#endif

/// Runs an action in a thread with 1 MiB of stack.
void runOn1MiB(std::function<void()> action)
{
    pthread_attr_t attributes;
    ASSERT_EQ(pthread_attr_init(&attributes), 0);
    ASSERT_EQ(pthread_attr_setstacksize(&attributes, stackFactor * 1024U * 1024U), 0);
    const auto call = [](void* argument) -> void* {
        (*static_cast<std::function<void()>*>(argument))();
        return nullptr;
    };
    pthread_t thread;
    ASSERT_EQ(pthread_create(&thread, &attributes, call, &action), 0);
    EXPECT_EQ(pthread_join(thread, nullptr), 0);
    pthread_attr_destroy(&attributes);
}

/// A file of this depth in all: the root, the product definition, `opening` elements and `count` times `nested`.
std::string nest(const std::string& opening, const std::string& nested, int count, const std::string& closing)
{
    std::string text = "<PLMXML><ProductDef>" + opening;
    for (int i = 0; i < count; ++i)
        text += "<" + nested + " id='n" + std::to_string(i) + "'>";
    for (int i = 0; i < count; ++i)
        text += "</" + nested + ">";
    return text + closing + "</ProductDef></PLMXML>";
}

} // namespace

class DeepFilesTest : public ModelTest
{
protected:
    /// Loads and destroys on 1 MiB of stack; gives the depth of the first chain of children that was made.
    std::size_t depthOn1MiB(const std::string& text)
    {
        const auto file = write("deep.plmxml", text);
        std::size_t depth = 0;
        runOn1MiB([&file, &depth] {
            CADDocument document;
            document.load(file);
            const CADBase* element = document.getProductDef(0);
            while (!ModelTestAccess::children(*element).empty()) {
                element = ModelTestAccess::children(*element)[0];
                ++depth;
            }
        });
        return depth;
    }
};

TEST_F(DeepFilesTest, NestedOccurrencesStandTheLimitOn1MiB)
{
    EXPECT_EQ(depthOn1MiB(nest("", "Occurrence", 1998, "")), 1998U);
}

TEST_F(DeepFilesTest, NestedCompoundsStandTheLimitOn1MiB)
{
    EXPECT_EQ(depthOn1MiB(nest("<Representation>", "CompoundRep", 1997, "</Representation>")), 1998U);
}

TEST_F(DeepFilesTest, NestedUserDataStandsTheLimitOn1MiB)
{
    EXPECT_EQ(depthOn1MiB(nest("", "UserData", 1998, "")), 1998U);
}

TEST_F(DeepFilesTest, NestedSkippedElementsStandTheLimitOn1MiB)
{
    EXPECT_EQ(depthOn1MiB(nest("<Part/>", "Unknown", 1998, "")), 1U);
}

TEST_F(DeepFilesTest, OneLevelMoreIsRefused)
{
    EXPECT_EQ(outcomeOf(m_document, write("deeper.plmxml", nest("", "Occurrence", 1999, ""))), plainException);
}

TEST_F(DeepFilesTest, HalfAMillionLevelsAreRefused)
{
    EXPECT_EQ(outcomeOf(m_document, write("deepest.plmxml", nest("", "a", 500000, ""))), plainException);
}

TEST_F(DeepFilesTest, FiftyThousandAttributesAreRefused)
{
    std::string text = "<PLMXML><ProductDef ";
    for (int i = 0; i < 50000; ++i)
        text.append("a").append(std::to_string(i)).append("='' ");
    EXPECT_EQ(outcomeOf(m_document, write("wide.plmxml", text + "/></PLMXML>")), plainException);
}

TEST_F(DeepFilesTest, HalfReadTreeOfTheLimitIsDestroyedOn1MiB)
{
    auto text = nest("", "Occurrence", 1997, "");
    text.insert(text.find("</Occurrence>"), "<Transform>word</Transform>");
    const auto file = write("half.plmxml", text);
    LoadOutcome outcome;
    runOn1MiB([&file, &outcome] {
        CADDocument document;
        outcome = outcomeOf(document, file);
    });
    EXPECT_EQ(outcome, (LoadOutcome{"std::invalid_argument", "invalid stof argument"}));
}

} // namespace HB::XML::CAD
