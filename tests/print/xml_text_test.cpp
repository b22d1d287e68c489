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

TEST(XmlUnchanged, LinesCarriageReturnsAndLongLines) {
    const std::string line(5000, 'x');
    const std::pair<std::string, std::string> cases[] = {
        {"<a>\r\n<b/>\r\n</a>", "<a>\n<b/>\n</a>"},
        {"x\n\n\r\ny", "x\n\n\ny"},
        {"tail\n", "tail\n"},
        {"a\rb\n", "a\rb\n"},  // only a carriage return before the line feed goes
        {line + "\n", line + "\n"},  // long lines go out in pieces
        // A carriage return that ends a 2048-character piece is dropped.
        {std::string(2047, 'y') + "\r" + std::string(10, 'z') + "\n",
         std::string(2047, 'y') + std::string(10, 'z') + "\n"},
    };
    for (const auto& [xml, expected] : cases) EXPECT_EQ(unchanged(xml), expected) << xml.substr(0, 40);
}

TEST(XmlReindented, Layout) {
    const std::pair<const char*, const char*> cases[] = {
        {"<a>\n  <b>1</b>\n<c  x = '1' />\n</a>", "<a>\n  <b>1</b>\n  <c x = '1' />\n</a>"},
        // Whitespace inside tags is tidied.
        {"<a x='1' y='2'></a>", "<a x='1' y='2'>\n</a>"},
        {"<a x='1'  y='2'></a>", "<a x='1' y='2'>\n</a>"},
        {"<a x='1'\ny='2'></a>", "<a x='1' y='2'>\n</a>"},
        {"<a x  ='1'></a>", "<a x='1'>\n</a>"},  // no blank before '='
        {"<a x=  '1'></a>", "<a x='1'>\n</a>"},  // no blank before a quote
        {"<a  ></a>", "<a>\n</a>"},  // a run before '>' closes the tag
        {"<a><b  x='1'\t/></a>", "<a>\n  <b x='1'/>\n</a>"},
        {"<a></a   >", "<a>\n</a>"},
        // Quoted values are copied whole, '>' and '/' inside them included.
        {"<a x='>  /' y=\"'\"></a>", "<a x='>  /' y=\"'\">\n</a>"},
        // Character data keeps its line.
        {"<a><b>x</b></a>", "<a>\n  <b>x</b>\n</a>"},
        {"<a>text<b/>more</a>", "<a>text<b/>more</a>"},
        {"<a><b><c>1</c></b></a>", "<a>\n  <b>\n    <c>1</c>\n  </b>\n</a>"},
        // Prolog, comments and CDATA.
        {"junk<?xml version=\"1.0\"?><a/>", "<?xml version=\"1.0\"?>\n<a/>"},
        {"<?xml?>\n<!-- c --><a/>", "<?xml?>\n\n<!-- c -->\n<a/>"},
        // Prolog character data goes out line by line; a carriage return ends
        // a line, and counts once when a line feed follows it.
        {"<?xml?>one\r\ntwo\r\r\n<a/>", "<?xml?>\none\ntwo\n\n<a/>"},
        {"<?xml?>\ntail", "<?xml?>\n\ntail\n"},  // data left at the end
        {"<a><!-- > --></a>", "<a>\n  <!-- > -->\n</a>"},
        // No line break before CDATA unless the data ended with one.
        {"<a><![CDATA[<x>]]></a>", "<a><![CDATA[<x>]]>\n</a>"},
        {"<a>\n<![CDATA[x]]></a>", "<a>\n  <![CDATA[x]]>\n</a>"},
        {"<!DOCTYPE a [<!ELEMENT a ANY>]><a/>", "<!DOCTYPE a [<!ELEMENT a ANY>]>\n<a/>"},
        // Incomplete texts stop without reading past the end.
        {"no tags at all", ""},
        {"<a><b>trailing", "<a>\n  <b>"},
        {"<a x='1", "<a x='1"},
        {"<a><b  ", "<a>\n  <b>"},
        {"<a><!-- open", "<a>\n  <!-- open"},
        {"<a></a><b></b>", "<a>\n</a>"},  // the walk ends with the root
    };
    for (const auto& [xml, expected] : cases) EXPECT_EQ(reindented(xml), expected) << xml;
}

TEST(XmlText, NullsAndEmptyPrintNothing) {
    fenk::test::TestWorld w;
    kivPrintXmlText(w.get(), nullptr, 5, 1);
    kivPrintXmlText(w.get(), "<a/>", 0, 1);
    kivPrintXmlText(nullptr, "<a/>", 4, 0);
    EXPECT_EQ(w.output(), "");
}
