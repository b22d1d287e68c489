// The XML text printer, both layouts, byte for byte.
#include <gtest/gtest.h>

#include <string>

#include "support/test_world.h"

namespace {

std::string printed(const std::string& xml, bool reindent) {
    fenk::test::TestWorld w;
    // Exactly the given characters, with no terminator after them.
    char* copy = new char[xml.size() + 1];
    xml.copy(copy, xml.size());
    kivPrintXmlText(w.get(), copy, static_cast<int32_t>(xml.size()), reindent ? 1 : 0);
    delete[] copy;
    return w.output();
}

std::string unchanged(const std::string& xml) { return printed(xml, false); }
std::string reindented(const std::string& xml) { return printed(xml, true); }

}  // namespace

TEST(XmlUnchanged, LinesAndCarriageReturns) {
    EXPECT_EQ(unchanged("<a>\r\n<b/>\r\n</a>"), "<a>\n<b/>\n</a>");
    EXPECT_EQ(unchanged("x\n\n\r\ny"), "x\n\n\ny");
    EXPECT_EQ(unchanged("tail\n"), "tail\n");
    EXPECT_EQ(unchanged("a\rb\n"), "a\rb\n") << "only a carriage return before the line feed goes";
}

TEST(XmlUnchanged, LongLinesGoOutInPieces) {
    std::string line(5000, 'x');
    EXPECT_EQ(unchanged(line + "\n"), line + "\n");
    // A carriage return that ends a 2048-character piece is dropped.
    std::string withReturn = std::string(2047, 'y') + "\r" + std::string(10, 'z');
    EXPECT_EQ(unchanged(withReturn + "\n"), std::string(2047, 'y') + std::string(10, 'z') + "\n");
}

TEST(XmlReindented, TheExampleDocument) {
    EXPECT_EQ(reindented("<a>\n  <b>1</b>\n<c  x = '1' />\n</a>"),
              "<a>\n  <b>1</b>\n  <c x = '1' />\n</a>");
}

TEST(XmlReindented, TagWhitespaceIsTidied) {
    EXPECT_EQ(reindented("<a x='1' y='2'></a>"), "<a x='1' y='2'>\n</a>");
    EXPECT_EQ(reindented("<a x='1'  y='2'></a>"), "<a x='1' y='2'>\n</a>");
    EXPECT_EQ(reindented("<a x='1'\ny='2'></a>"), "<a x='1' y='2'>\n</a>");
    EXPECT_EQ(reindented("<a x  ='1'></a>"), "<a x='1'>\n</a>") << "no blank before '='";
    EXPECT_EQ(reindented("<a x=  '1'></a>"), "<a x='1'>\n</a>") << "no blank before a quote";
    EXPECT_EQ(reindented("<a  ></a>"), "<a>\n</a>") << "a run before '>' closes the tag";
    EXPECT_EQ(reindented("<a><b  x='1'\t/></a>"), "<a>\n  <b x='1'/>\n</a>");
    EXPECT_EQ(reindented("<a></a   >"), "<a>\n</a>");
    EXPECT_EQ(reindented("<a x='>  /' y=\"'\"></a>"), "<a x='>  /' y=\"'\">\n</a>")
        << "quoted values are copied whole, '>' and '/' inside them included";
}

TEST(XmlReindented, CharacterDataKeepsItsLine) {
    EXPECT_EQ(reindented("<a><b>x</b></a>"), "<a>\n  <b>x</b>\n</a>");
    EXPECT_EQ(reindented("<a>text<b/>more</a>"), "<a>text<b/>more</a>");
    EXPECT_EQ(reindented("<a><b><c>1</c></b></a>"),
              "<a>\n  <b>\n    <c>1</c>\n  </b>\n</a>");
}

TEST(XmlReindented, PrologCommentsAndCdata) {
    EXPECT_EQ(reindented("junk<?xml version=\"1.0\"?><a/>"), "<?xml version=\"1.0\"?>\n<a/>");
    EXPECT_EQ(reindented("<?xml?>\n<!-- c --><a/>"), "<?xml?>\n\n<!-- c -->\n<a/>");
    // Prolog character data goes out line by line; a carriage return ends a
    // line, and counts once when a line feed follows it.
    EXPECT_EQ(reindented("<?xml?>one\r\ntwo\r\r\n<a/>"), "<?xml?>\none\ntwo\n\n<a/>");
    EXPECT_EQ(reindented("<?xml?>\ntail"), "<?xml?>\n\ntail\n") << "data left at the end";
    EXPECT_EQ(reindented("<a><!-- > --></a>"), "<a>\n  <!-- > -->\n</a>");
    EXPECT_EQ(reindented("<a><![CDATA[<x>]]></a>"), "<a><![CDATA[<x>]]>\n</a>")
        << "no line break before CDATA unless the data ended with one";
    EXPECT_EQ(reindented("<a>\n<![CDATA[x]]></a>"), "<a>\n  <![CDATA[x]]>\n</a>");
    EXPECT_EQ(reindented("<!DOCTYPE a [<!ELEMENT a ANY>]><a/>"),
              "<!DOCTYPE a [<!ELEMENT a ANY>]>\n<a/>");
}

TEST(XmlReindented, IncompleteTextsStopWithoutReadingPastTheEnd) {
    EXPECT_EQ(reindented("no tags at all"), "");
    EXPECT_EQ(reindented("<a><b>trailing"), "<a>\n  <b>");
    EXPECT_EQ(reindented("<a x='1"), "<a x='1");
    EXPECT_EQ(reindented("<a><b  "), "<a>\n  <b>");
    EXPECT_EQ(reindented("<a><!-- open"), "<a>\n  <!-- open");
    EXPECT_EQ(reindented("<a></a><b></b>"), "<a>\n</a>") << "the walk ends with the root";
}

TEST(XmlText, NullsAndEmptyPrintNothing) {
    fenk::test::TestWorld w;
    kivPrintXmlText(w.get(), nullptr, 5, 1);
    kivPrintXmlText(w.get(), "<a/>", 0, 1);
    kivPrintXmlText(nullptr, "<a/>", 4, 0);
    EXPECT_EQ(w.output(), "");
}
