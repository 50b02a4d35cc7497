#include "cad/xml/XMLTextScan.h"

#include <gtest/gtest.h>

#include <string>

using namespace HB::XML::CAD;

namespace HB::XML::CAD
{
bool operator==(const XMLVerdict& left, const XMLVerdict& right)
{
    return left.fault == right.fault && left.position == right.position;
}

void PrintTo(const XMLVerdict& verdict, std::ostream* out)
{
    *out << "fault " << static_cast<int>(verdict.fault) << " at " << verdict.position;
}
} // namespace HB::XML::CAD

namespace
{

constexpr XMLVerdict accepted;

XMLVerdict scan(std::string_view text, const XMLLimits& limits = {})
{
    return scanXMLText(text, limits);
}

XMLVerdict scanDepth(std::string_view text, std::uint32_t depth)
{
    return scanXMLText(text, {depth, 1000});
}

XMLVerdict scanAttributes(std::string_view text, std::uint32_t attributes)
{
    return scanXMLText(text, {2000, attributes});
}

} // namespace

TEST(XMLTextScan, DefaultLimits)
{
    EXPECT_EQ(XMLLimits().depth, 2000U);
    EXPECT_EQ(XMLLimits().attributes, 1000U);
}

TEST(XMLTextScan, OrdinaryDocumentPasses)
{
    EXPECT_EQ(
        scan("<?xml version=\"1.0\" encoding='UTF-8' standalone = \"yes\"?>\n<!DOCTYPE a>\n<?xml-stylesheet "
             "href=\"a.xsl\"?>\n<!-- <a> -->\n<a b='>' c=\"</a>\"><b/>&lt;<![CDATA[<a></b>]]><?pi x?>\xC3\xA4</a >"),
        accepted);
}

TEST(XMLTextScan, EmptyAndPlainTextsAreLeftToTheParser)
{
    EXPECT_EQ(scan(""), accepted);
    EXPECT_EQ(scan("no markup at all"), accepted);
}

TEST(XMLTextScan, NulIsRefusedWhereverItStands)
{
    using namespace std::string_view_literals;
    EXPECT_EQ(scan("<a>\0</a>"sv), (XMLVerdict{XMLFault::EmbeddedNul, 3}));
    EXPECT_EQ(scan("<a/>\0"sv), (XMLVerdict{XMLFault::EmbeddedNul, 4}));
    EXPECT_EQ(scan("<\0a/>"sv), (XMLVerdict{XMLFault::EmbeddedNul, 1}));
}

TEST(XMLTextScan, DepthCountsTheRootAndEmptyElements)
{
    EXPECT_EQ(scanDepth("<a><b><c></c></b></a>", 3), accepted);
    EXPECT_EQ(scanDepth("<a><b><c></c></b></a>", 2), (XMLVerdict{XMLFault::TooDeep, 6}));
    EXPECT_EQ(scanDepth("<a><b/></a>", 1), (XMLVerdict{XMLFault::TooDeep, 3}));
}

TEST(XMLTextScan, SiblingsAddNoDepth)
{
    EXPECT_EQ(scanDepth("<a><b/><b></b><b c='/'></b><b /></a>", 2), accepted);
}

TEST(XMLTextScan, SlashInAValueClosesNoElement)
{
    EXPECT_EQ(scanDepth("<a b='/'><a b=\"/>\"><a></a></a></a>", 2), (XMLVerdict{XMLFault::TooDeep, 19}));
}

TEST(XMLTextScan, TagsInCommentsAndCDataAndInstructionsCountForNothing)
{
    EXPECT_EQ(scanDepth("<a><!-- <b><b> --><![CDATA[<b><b>]]><?b <b?></a>", 1), accepted);
    EXPECT_EQ(scanDepth("<a><!--></a></a>--><b/></a>", 1), (XMLVerdict{XMLFault::TooDeep, 19}));
    EXPECT_EQ(scanDepth("<a><![CDATA[</a>]]><b/></a>", 1), (XMLVerdict{XMLFault::TooDeep, 19}));
}

TEST(XMLTextScan, ProcessingInstructionEndsWhereTheParserEndsIt)
{
    // The parser takes the first angle bracket for the end, and what follows for content.
    EXPECT_EQ(scanDepth("<a><?b > <b> ?></a>", 1), (XMLVerdict{XMLFault::TooDeep, 9}));
}

TEST(XMLTextScan, NamesOfAllScriptsBeginElements)
{
    EXPECT_EQ(scanDepth("<_><\xC3\xA4/></_>", 1), (XMLVerdict{XMLFault::TooDeep, 3}));
    EXPECT_EQ(scanDepth("<Z><1/></Z>", 1), accepted);
}

TEST(XMLTextScan, AttributesOfOneElementAreCounted)
{
    EXPECT_EQ(scanAttributes("<a b='=' c = \"==\"/><d e='1' f='2'></d>", 2), accepted);
    EXPECT_EQ(scanAttributes("<a><a b='' c='' d=''/></a>", 2), (XMLVerdict{XMLFault::TooManyAttributes, 3}));
}

TEST(XMLTextScan, MarkupCutOffByTheEndIsRefused)
{
    for (const char* text : {"<", "<a", "<a b", "<a b=", "<a b='c", "<a b=\"c>", "<!--", "<!-- a --", "<![CDATA[ ]]",
                             "<!DOCTYPE a", "<?xml", "<?xml ", "<?xml version='1.0'?", "<?pi", "<a></a"})
        EXPECT_EQ(scan(text).fault, XMLFault::CutOff) << text;
    EXPECT_EQ(scan("<a/> <!-- "), (XMLVerdict{XMLFault::CutOff, 5}));
}

TEST(XMLTextScan, EndTagWithoutAnOpenElementIsRefused)
{
    EXPECT_EQ(scan("</a>"), (XMLVerdict{XMLFault::StrayEndTag, 0}));
    EXPECT_EQ(scan("<a></a></a>"), (XMLVerdict{XMLFault::StrayEndTag, 7}));
    EXPECT_EQ(scan("<a/></a>"), (XMLVerdict{XMLFault::StrayEndTag, 4}));
}

TEST(XMLTextScan, DeclarationValuesStandInQuotesWithoutMarkup)
{
    for (const char* text : {"<?xml version=1.0?><a/>", "<?xml version='>'?><a/>", "<?xml encoding=\"&gt;\"?><a/>",
                             "<?xml encoding?><a/>", "<?xml standalone='<'?><a/>", "<?XML VERSION=1?><a/>",
                             "<?xmlversion='>'?><a/>", "<?xml version='1.0?><a/>", "<?xml-stylesheet version='>'?><a/>",
                             "<?xml version='\xC3\xA4'?><a/>", "<?xml \xEF\xBB\xBFversion='>'?><a/>"})
        EXPECT_EQ(scan(text), (XMLVerdict{XMLFault::BadDeclaration, 0})) << text;
}

TEST(XMLTextScan, OtherWordsOfADeclarationAreSkipped)
{
    EXPECT_EQ(scan("<?xml foo=bar version = '1.0' baz ?><a/>"), accepted);
    EXPECT_EQ(scan("<?xml-stylesheet type=\"text/xsl\" href='version1.xsl'?><a/>"), accepted);
}

TEST(XMLTextScan, Utf8SequenceWithoutAllItsBytesIsRefused)
{
    const std::string declaration = "<?xml version='1.0'?>";
    EXPECT_EQ(scan(declaration + "<a b='\xC3'/>"), (XMLVerdict{XMLFault::BrokenCharacter, 27}));
    EXPECT_EQ(scan(declaration + "<a>\xE4\xB8</a>"), (XMLVerdict{XMLFault::BrokenCharacter, 24}));
    EXPECT_EQ(scan(declaration + "<a>\xF0\x9F\x98</a>"), (XMLVerdict{XMLFault::BrokenCharacter, 24}));
    EXPECT_EQ(scan(declaration + "<a/>\xF4"), (XMLVerdict{XMLFault::BrokenCharacter, 25}));
}

TEST(XMLTextScan, WholeUtf8SequencesPass)
{
    EXPECT_EQ(scan("<?xml version='1.0'?><a b='\xC3\xBC'>\xE4\xB8\xAD\xF0\x9F\x98\x80 12345678 \xC2\xA0</a>"),
              accepted);
}

TEST(XMLTextScan, EncodingOfTheFirstDeclarationDecidesWhatASequenceIs)
{
    const std::string latin1 = "<a b='\xFC\xE4'/>";
    EXPECT_EQ(scan("<?xml version='1.0' encoding='ISO-8859-1'?>" + latin1), accepted);
    EXPECT_EQ(scan("<?xml encoding='utf-8'?>" + latin1).fault, XMLFault::BrokenCharacter);
    EXPECT_EQ(scan("<?xml encoding='UTF8'?>" + latin1).fault, XMLFault::BrokenCharacter);
    EXPECT_EQ(scan("<?xml encoding='utf-8' encoding='latin1'?>" + latin1), accepted);
    EXPECT_EQ(scan("<?xml encoding='latin1'?><?xml encoding='utf-8'?>" + latin1), accepted);
    EXPECT_EQ(scan("<?xml-a?><?xml encoding='latin1'?>" + latin1).fault, XMLFault::BrokenCharacter);
    EXPECT_EQ(scan("<b><?xml encoding='latin1'?></b><?xml?>" + latin1).fault, XMLFault::BrokenCharacter);
}

TEST(XMLTextScan, WithoutDeclarationBytesAreBytes)
{
    EXPECT_EQ(scan("<a b='\xFC\xE4'/>"), accepted);
}

TEST(XMLTextScan, ByteOrderMarkDecidesOverTheDeclaration)
{
    EXPECT_EQ(scan("\xEF\xBB\xBF<?xml encoding='latin1'?><a b='\xE4'/>").fault, XMLFault::BrokenCharacter);
    EXPECT_EQ(scan("\xEF\xBB\xBF<a b='\xC3\xA4'/>"), accepted);
}
