#include "tests/engines/own_texts.h"

#include "host/text.h"

#include <array>
#include <initializer_list>
#include <string_view>
#include <vector>

namespace vellumo::engines
{
namespace
{

using namespace std::string_literals;

using Texts = std::vector<std::string>;

std::string Character(char32_t code)
{
    std::string text;
    host::AppendCharacter(code, text);
    return text;
}

std::string Repeated(std::string_view text, std::size_t times)
{
    std::string all;
    for (std::size_t time = 0; time < times; ++time)
    {
        all += text;
    }
    return all;
}

// Characters at the edges of what XML allows, where engines have their own tables.
std::vector<char32_t> Edges()
{
    std::vector<char32_t> codes;
    for (char32_t code = 1; code < 0x100; ++code)
    {
        codes.push_back(code);
    }
    for (const char32_t code :
         {0x131U,   0x132U,   0x17FU,   0x1C4U,    0x2BBU,    0x300U,   0x345U,  0x360U,  0x37DU,  0x37EU,
          0x387U,   0x3F3U,   0x482U,   0x660U,    0xE33U,    0x1FFFU,  0x2000U, 0x2028U, 0x203FU, 0x2041U,
          0x2070U,  0x218FU,  0x2190U,  0x2BFFU,   0x2C00U,   0x2FEFU,  0x3000U, 0x3005U, 0x4E00U, 0x9FA5U,
          0xAC00U,  0xD7A3U,  0xD7FFU,  0xD800U,   0xDBFFU,   0xDC00U,  0xDFFFU, 0xE000U, 0xF8FFU, 0xF900U,
          0xFDCFU,  0xFDD0U,  0xFDF0U,  0xFEFEU,   0xFEFFU,   0xFFFCU,  0xFFFDU, 0xFFFEU, 0xFFFFU, 0x10000U,
          0x1D400U, 0xEFFFFU, 0xF0000U, 0x10FFFDU, 0x10FFFFU, 0x110000U})
    {
        codes.push_back(code);
    }
    return codes;
}

Texts WithCharacters(const std::function<std::string(const std::string& character)>& around)
{
    Texts texts;
    for (const char32_t code : Edges())
    {
        texts.push_back(around(Character(code)));
    }
    return texts;
}

Texts References()
{
    Texts texts;
    for (const char32_t code : Edges())
    {
        texts.push_back("<a b='&#" + std::to_string(static_cast<unsigned>(code)) + ";'>&#" +
                        std::to_string(static_cast<unsigned>(code)) + ";</a>");
    }
    for (const auto* const reference : {"&amp;",       "&lt;&gt;&quot;&apos;",
                                        "&AMP;",       "&nbsp;",
                                        "&;",          "&#;",
                                        "&#x;",        "&#X41;",
                                        "&#x41",       "&#x00000041;",
                                        "&#-1;",       "&# 65;",
                                        "&#65 ;",      "& amp;",
                                        "&a:b;",       "&#99999999999999999999;",
                                        "&#x110000;",  "&#xD800;&#xDC00;",
                                        "&#0;",        "%a;",
                                        "&amp",        "&&amp;",
                                        "&lt;b>",      "&#38;amp;",
                                        "&#60;b/&#62;"})
    {
        texts.push_back("<a>"s + reference + "</a>");
        texts.push_back("<a b='"s + reference + "'/>");
    }
    return texts;
}

Texts Bytes()
{
    Texts texts;
    for (const auto* const bytes : {"\x80",
                                    "\xBF",
                                    "\xC0\x80",
                                    "\xC1\xBF",
                                    "\xC2",
                                    "\xC3(",
                                    "\xE0\x80\x80",
                                    "\xE2\x82",
                                    "\xED\xA0\x80",
                                    "\xED\xBF\xBF",
                                    "\xEF\xBF\xBE",
                                    "\xF0\x80\x80\x80",
                                    "\xF4\x90\x80\x80",
                                    "\xF8\x88\x80\x80\x80",
                                    "\xFE",
                                    "\xFF",
                                    "\xFF\xFE",
                                    "\xEF\xBB\xBF",
                                    "\xEF\xBB",
                                    "\xE8",
                                    "\xE2\x82\xAC"})
    {
        texts.push_back("<a>"s + bytes + "</a>");
        texts.push_back("<a b='"s + bytes + "'/>");
        texts.push_back("<a><!--"s + bytes + "--></a>");
        texts.push_back("<a><?p "s + bytes + "?></a>");
        texts.push_back("<a"s + bytes + "/>");
        texts.push_back(bytes + "<a/>"s);
        texts.push_back("<a/>"s + bytes);
    }
    texts.push_back("<a>\0</a>"s);
    texts.push_back("<a/>\0"s);
    texts.push_back("\0<a/>"s);
    return texts;
}

Texts Declarations()
{
    Texts texts;
    for (const auto* const declaration : {"<?xml version='1.0'?>",
                                          "<?xml version='1.1'?>",
                                          "<?xml version='1.9'?>",
                                          "<?xml version='2.0'?>",
                                          "<?xml version='1.0' ?>",
                                          "<?xml  version\n=\t'1.0'?>",
                                          "<?xml version='1.0\"?>",
                                          "<?xml version=1.0?>",
                                          "<?xml?>",
                                          "<?xml ?>",
                                          "<?XML version='1.0'?>",
                                          "<?xml Version='1.0'?>",
                                          "<?xml version='1.0' standalone='yes'?>",
                                          "<?xml version='1.0' standalone='YES'?>",
                                          "<?xml version='1.0' standalone='no' ?>",
                                          "<?xml version='1.0' encoding='UTF-8' standalone='no'?>",
                                          "<?xml version='1.0' encoding='utf-16'?>",
                                          "<?xml version='1.0' encoding='ISO-8859-1'?>",
                                          "<?xml version='1.0' encoding='nessuna'?>",
                                          "<?xml version='1.0' encoding='-a'?>",
                                          "<?xml version='1.0' encoding=''?>",
                                          "<?xml version=''?>",
                                          "<?xml version='1.'?>",
                                          "<?xml version='1.0' a='b'?>",
                                          "<?xml version='1.0' version='1.0'?>",
                                          "<?xml version='1.0'",
                                          "<?xml version='1.0'>",
                                          " <?xml version='1.0'?>",
                                          "<?xml-stylesheet href='a'?>",
                                          "<?xmlx?>",
                                          "<?xm?>",
                                          "<?\?>",
                                          "<? p?>",
                                          "<?p?>",
                                          "<?p x?><?q?>",
                                          "<?p:q x?>",
                                          "<!-- x -->",
                                          "<!-->-->",
                                          "<!--->",
                                          "<!---->",
                                          "<!-- -- -->",
                                          "<!-- --->",
                                          "<!ELEMENT a ANY>",
                                          "<![CDATA[]]>",
                                          "\n",
                                          "x",
                                          "&#32;"})
    {
        texts.push_back(declaration + "<a>x</a>"s);
        texts.push_back("<a>x</a>"s + declaration);
        texts.push_back("<a>x"s + declaration + "</a>");
    }
    return texts;
}

Texts Prefixes()
{
    Texts texts;
    for (const auto* const text : {"<m:a/>",
                                   "<m:a xmlns:m='u'/>",
                                   "<m:a xmlns:m=''/>",
                                   "<a xmlns=''/>",
                                   "<a xmlns:=''/>",
                                   "<a xmlns:='u'/>",
                                   "<:a/>",
                                   "<a:/>",
                                   "<::/>",
                                   "<m:n:a xmlns:m='u'/>",
                                   "<a m:n:b='1' xmlns:m='u'/>",
                                   "<a :b='1'/>",
                                   "<a b:='1'/>",
                                   "<xml:a/>",
                                   "<xmlns:a/>",
                                   "<a xmlns:xml='u'/>",
                                   "<a xmlns:xml='http://www.w3.org/XML/1998/namespace'/>",
                                   "<a xmlns:b='http://www.w3.org/XML/1998/namespace'/>",
                                   "<a xmlns:xmlns='u'/>",
                                   "<a xmlns:m='http://www.w3.org/2000/xmlns/'/>",
                                   "<a xmlns='http://www.w3.org/2000/xmlns/'/>",
                                   "<a xml:lang='it' xml:space='preserve' xml:id='x'/>",
                                   "<a xml:space='other'/>",
                                   "<a xml:id=' 1 '/>",
                                   "<a xmlns:m='u' xmlns:n='u' m:b='1' n:b='2'/>",
                                   "<a xmlns:m='u' xmlns:m='v'/>",
                                   "<a xmlns='u' xmlns='v'/>",
                                   "<a b='1' b='2'/>",
                                   "<a xmlns:m='u' m:b='1' b='2'/>",
                                   "<m:a xmlns:m='u'></m:a >",
                                   "<m:a xmlns:m='u'></a>",
                                   "<m:a xmlns:m='u'></n:a>",
                                   "<a xmlns:M='u'><m:b/></a>",
                                   "<a xmlns:xsi='u'/>",
                                   "<a xmlns:XML='u'/>",
                                   "<a xmlns:m='  '/>",
                                   "<a xmlns:m='u&#10;v'/>",
                                   "<a xmlns:\xC3\xA8='u'><\xC3\xA8:b/></a>",
                                   "<a xmlns:1='u'/>",
                                   "<a 1:b='2'/>",
                                   "<a xmlns:-m='u'/>",
                                   "<m:1 xmlns:m='u'/>",
                                   "<m:-a xmlns:m='u'/>"})
    {
        texts.emplace_back(text);
        texts.push_back("<r>"s + text + text + "</r>");
    }
    return texts;
}

Texts Sizes()
{
    const auto line = Repeated("testo ", 20000);
    return {
        "<a>" + line + "</a>",
        "<a b='" + line + "'/>",
        "<a><![CDATA[" + line + "]]></a>",
        "<a><!--" + line + "--></a>",
        "<a><?p " + line + "?></a>",
        "<a>" + Repeated("&amp;\n", 5000) + "</a>",
        "<a>" + Repeated("<![CDATA[x]]>\n", 5000) + "</a>",
        "<a>" + Repeated("<b/>\r\n", 5000) + "</a>",
        "<a" + Repeated("a", 20000) + "/>",
        "<a b" + Repeated("b", 20000) + "='1'/>",
        "<a>" + Repeated("<b>", 199) + Repeated("</b>", 199) + "</a>",
        "<a>" + Repeated("<b>", 200) + Repeated("</b>", 200) + "</a>",
        "<a>" + Repeated(Character(0x1F600), 9000) + "</a>",
        "<a>x" + Repeated(Character(0x1F600), 9000) + "</a>",
        "<a>" + Repeated("\r\n", 9000) + "x" + Repeated("\r", 9000) + "</a>",
        Repeated(" ", 20000) + "<a/>" + Repeated("\n", 20000),
        "<a>x" + Repeated("\r\n", 9000) + "y</a>",
    };
}

constexpr std::string_view sample =
    "<?xml version='1.0' encoding='UTF-8'?>\n<s:a xmlns:s=\"urn:s\" s:k='v'>\n <!-- c --><b l = \"&lt;&#233;\" n=''>t"
    "<![CDATA[<x>]]>\r\n e</b><?p q?><c/>\xC3\xA8 ]] > </s:a>\n";

// Each place of a good text taken out, doubled, or with something else in its place.
void PlayMutations(const Play& play)
{
    constexpr std::array<std::string_view, 24> instead = {"",   " ", "\n", "<", ">", "/",    "&",    "'",
                                                          "\"", "=", "!",  "?", "-", "[",    "]",    ":",
                                                          ";",  "#", "x",  "1", ".", "\x01", "\xC3", "\xEF\xBB\xBF"};
    for (std::size_t at = 0; at < sample.size(); ++at)
    {
        for (std::size_t which = 0; which < instead.size(); ++which)
        {
            const auto name = "own/mutated/" + std::to_string(at) + '.' + std::to_string(which);
            const std::string before(sample.substr(0, at));
            const std::string_view behind = sample.substr(at + 1);
            play(name, std::string(before).append(instead.at(which)).append(behind));
            play(name + "+", std::string(before).append(instead.at(which)).append(sample.substr(at)));
        }
        play("own/cut/" + std::to_string(at), std::string(sample.substr(0, at)));
    }
}

} // namespace

void PlayOwnTexts(const Play& play)
{
    const auto all = [&](const std::string& group, const Texts& texts)
    {
        for (std::size_t number = 0; number < texts.size(); ++number)
        {
            play("own/" + group + '/' + std::to_string(number + 1), texts[number]);
        }
    };
    all("first of a name", WithCharacters([](const std::string& c) { return '<' + c + "/>"; }));
    all("within a name", WithCharacters([](const std::string& c) { return "<a" + c + "b/>"; }));
    all("attribute's name", WithCharacters([](const std::string& c) { return "<a " + c + "='1'/>"; }));
    all("text", WithCharacters([](const std::string& c) { return "<a>x" + c + "y</a>"; }));
    all("value", WithCharacters([](const std::string& c) { return "<a b='x" + c + "y'/>"; }));
    all("section", WithCharacters([](const std::string& c) { return "<a><![CDATA[" + c + "]]></a>"; }));
    all("comment", WithCharacters([](const std::string& c) { return "<a><!--" + c + "--></a>"; }));
    all("instruction", WithCharacters([](const std::string& c) { return "<a><?p " + c + "?></a>"; }));
    all("instruction's name", WithCharacters([](const std::string& c) { return "<a><?" + c + "?></a>"; }));
    all("outside", WithCharacters([](const std::string& c) { return "<a/>" + c; }));
    all("references", References());
    all("bytes", Bytes());
    all("declarations", Declarations());
    all("prefixes", Prefixes());
    all("sizes", Sizes());
    PlayMutations(play);
}

} // namespace vellumo::engines
