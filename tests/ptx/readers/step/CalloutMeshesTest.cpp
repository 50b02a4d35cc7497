#include "ptx/readers/step/CalloutMeshes.h"

#include "files/scenefile/AttributeTags.h"

#include <gmock/gmock.h>

using namespace ptx::step;
using annotations::Meaning;
using osg::scenefile::converted::attributeTag;
using testing::ElementsAre;

TEST(CalloutMeshes, EachValueOfACalloutIsAnAttribute)
{
    annotations::Callout drawn;
    drawn.meanings = {Meaning{"diameter", {30.5, "mm"}, {-0.1, "mm"}, {}, ""},
                      Meaning{"position tolerance", {0.05, "mm"}, {}, {}, "A|B"}, Meaning{"datum", {}, {}, {}, "C"},
                      Meaning{"depth", {7, "mm"}, {}, {0.25, "mm"}, ""},
                      Meaning{"flatness tolerance", {0.5, "mm"}, {}, {}, ""}};
    ptx::model::AppearanceTable appearances;
    EXPECT_THAT(calloutWithMeshes(drawn, 1, appearances).tags,
                ElementsAre(attributeTag({"Value", 30.5, "mm"}), attributeTag({"Lower deviation", -0.1, "mm"}),
                            attributeTag({"Tolerance", 0.05, "mm"}), attributeTag({"Value 2", 7., "mm"}),
                            attributeTag({"Upper deviation 2", 0.25, "mm"}), attributeTag({"Tolerance 2", 0.5, "mm"}),
                            attributeTag({"Meaning", "diameter\nposition tolerance\ndatum\ndepth\nflatness tolerance"}),
                            attributeTag({"Datums", "A|B\nC"})));
}
