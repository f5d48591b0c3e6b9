#include "foundation/xmlParser.h"

#include "tests/support/Printed.h"
#include "tests/support/Rows.h"
#include "tests/support/Test.h"

namespace {

// A file with that text, until the next one.
std::string FileOf(const std::string& text)
{
    const std::string path = DataHome() / "file";
    WriteFile(path, text);
    return path;
}

std::string ValueOf(const char* text)
{
    return text ? text : "(null)";
}

// A tag as one line: name(attribute=value ...)[content|child@location ...]
std::string LineOf(const xmlTag& tag)
{
    std::string line = ValueOf(tag.name) + "(";
    char* name = nullptr;
    type_code type = 0;
    for (int32 i = 0; tag.modifiers.GetInfo(B_ANY_TYPE, i, &name, &type) == B_OK; i++) {
        const char* value = nullptr;
        tag.modifiers.FindString(name, &value);
        line += (i > 0 ? " " : "") + std::string(name) + "=" + ValueOf(value);
    }
    line += ")[" + ValueOf(tag.content);
    for (const xmlTag* child = tag.children.First(); child; child = tag.children.Next())
        line += "|" + LineOf(*child) + "@" + std::to_string(child->parentLocation);
    return line + "]";
}

// The first element of that name in a file with that text; "" if there is none.
std::string Found(const char* name, const std::string& text)
{
    xmlParser parser(FileOf(text).c_str());
    xmlTag tag;
    return parser.FindTag(name, tag) ? LineOf(tag) : "";
}

} // namespace

TEST(xmlParser, FindsElementsWithTheirParts)
{
    for (const Row& row : RowsOf("foundation/data/elements.txt", 3))
        EXPECT_EQ(Found(row[0].c_str(), row[1]), row[2]) << row[1];
    const std::string kilobyte(1024, 'x');
    EXPECT_EQ(Found("a", "<a>" + kilobyte + "y</a>"), "a()[" + kilobyte + "y]");
    for (const char* end : { "\n", "\r\n" })
        for (const size_t before : { 1020u, 1021u, 1022u, 1023u })
            EXPECT_EQ(Found("a", std::string(before, '-') + "<a" + end + "x=1>t</a>"), "a(x=1)[t]");
    EXPECT_EQ(Found("a", std::string("<a>o\0ne\ntwo</a>", 15)), "a()[otwo]");
    EXPECT_EQ(Found(nullptr, "<a>"), "");
}

TEST(xmlParser, GoesOnAfterWhatItFoundUntilItIsRewound)
{
    const std::string file = FileOf("<?xml version=\"1.0\"?>\n<t>1</t>\n\n<u>x</u><t>2\n</t>");
    xmlParser parser(file.c_str());
    xmlTag tag;
    const std::string start = "xmlParser: line 0, column 0\nbuffer <>\n";
    const xmlParser none;
    EXPECT_EQ(Printed(none), start);
    EXPECT_EQ(Printed(parser), start);
    for (int round = 0; round < 3; round++) {
        EXPECT_TRUE(parser.FindTag("t", tag));
        EXPECT_EQ(LineOf(tag) + Printed(parser),
            "t()[1]xmlParser: line 2, column 7\nbuffer <<t>1</t>>\n");
        EXPECT_TRUE(parser.FindTag("t", tag));
        EXPECT_EQ(
            LineOf(tag) + Printed(parser), "t()[2]xmlParser: line 5, column 3\nbuffer <</t>>\n");
        EXPECT_FALSE(parser.FindTag(tag.name, tag)); // its own name, which it loses
        EXPECT_EQ(LineOf(tag) + Printed(parser), "()[]xmlParser: line 5, column 0\nbuffer <>\n");
        round == 0       ? parser.Rewind()
            : round == 1 ? void(parser.Open(file.c_str()))
                         : parser.Close();
        EXPECT_EQ(Printed(parser), start);
    }
    EXPECT_FALSE(parser.IsValid() || parser.ReadLine());
}

TEST(xmlParser, FileThatCannotBeOpenedIsNamed)
{
    xmlParser parser;
    EXPECT_EQ(ErrorsOf([] { EXPECT_FALSE(xmlParser("/nonexistent/help.xml").IsValid()); }),
        "Unable to open </nonexistent/help.xml>: No such file or directory\n");
    xmlTag tag;
    EXPECT_FALSE(parser.IsValid() || parser.FindTag("a", tag) || parser.Open(nullptr));
    EXPECT_TRUE(parser.Open("/")); // a folder opens, and holds nothing
    EXPECT_EQ(ErrorsOf([&] { EXPECT_FALSE(parser.FindTag("a", tag) || parser.FindTag("b", tag)); }),
        "Error reading after line <0>: Is a directory\n");
}

TEST(xmlParser, DerivedParserChoosesTagsWithoutAnEnd)
{
    class LooseParser : public xmlParser {
    public:
        using xmlParser::xmlParser;
        bool NoAnchorTag(const char* name) const override
        {
            return std::string(name) == "br" || xmlParser::NoAnchorTag(name);
        }
    };
    const std::string file = FileOf("<p>one<br>two<br x=1></p>");
    LooseParser parser(file.c_str());
    xmlTag tag;
    ASSERT_TRUE(parser.FindTag("p", tag));
    EXPECT_EQ(LineOf(tag), "p()[onetwo|br()[]@3|br(x=1)[]@6]");
}

TEST(xmlParser, LeavesOutWhatLiesTooDeepOrIsTooMuch)
{
    static const std::regex kTimes(R"(\{([^{}]*)\*(\d+)\})");
    const auto written = [](std::string text) {
        for (std::smatch match; std::regex_search(text, match, kTimes);) {
            std::string all = match.prefix();
            for (int i = std::stoi(match[2]); i > 0; i--)
                all += match[1];
            text = all + match.suffix().str();
        }
        return text;
    };
    for (const Row& row : RowsOf("foundation/data/large-files.txt", 3)) {
        SCOPED_TRACE(row[0]);
        const std::string file = FileOf("<top>" + written(row[0]) + "</top>");
        testing::internal::CaptureStderr();
        xmlParser parser(file.c_str());
        xmlTag tag;
        EXPECT_TRUE(parser.FindTag("top", tag));
        EXPECT_EQ(std::to_string(tag.children.Size()), row[1]);
        EXPECT_EQ(testing::internal::GetCapturedStderr(), written(row[2]));
    }
}

TEST(xmlTag, CopiesAreDeepAndMayComeFromInside)
{
    xmlTag tag;
    tag.SetName("a");
    tag.modifiers.AddString("x", "1");
    tag.AddContent('b');
    xmlTag child;
    child.SetName("b");
    tag.AddChild(child);
    tag.AddChild(tag); // a copy of itself
    EXPECT_EQ(LineOf(tag), "a(x=1)[b|b()[]@0|a(x=1)[b|b()[]@0]@0]");
    xmlTag copy(tag);
    copy.children.Clear();
    tag = *tag.children.Get(1L); // which goes with the assignment
    EXPECT_EQ(LineOf(tag), "a(x=1)[b|b()[]@0]");
    EXPECT_EQ(LineOf(copy), "a(x=1)[b]");
    EXPECT_EQ(Printed(tag),
        "xmlTag: <a>\n\tcontents <b>\n\tParent Local : 0\n"
        "xmlTag: <b>\n\tcontents <>\n\tParent Local : 0\n");
    EXPECT_TRUE(tag == copy && !(tag == child) && child > tag && !(tag > copy));
    tag.Clear();
    for (const char c : { ' ', '\t', 'x', ' ', '\t' })
        tag.AddContent(c);
    EXPECT_EQ(LineOf(tag), "()[x \t]");
    tag.StripTrailingContent();
    EXPECT_STREQ(tag.content, "x");
}
