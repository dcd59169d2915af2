#include <gtest/gtest.h>

#include "ScratchFolder.h"
#include "docmodel/AppendString.h"
#include "docmodel/Document.h"
#include "docmodel/XmlText.h"

namespace quenmar {
namespace {

TEST(XmlText, IsUnescapedAmpersandFirst) {
  String text = u"a<b&c>\"'";
  EXPECT_EQ(XmlEscape(text), u"a&lt;b&amp;c&gt;\"'");
  EXPECT_EQ(XmlUnescape(text += u"&amp;amp;gt;&amp;lt;"), u"a<b&c>\"'&amp;gt;<");
  XmlUnescape(text);
  EXPECT_EQ(text, u"a<b&c>\"'><");
}

TEST(XmlExport, WritesTheTreeLineByLineAndEscapesFieldValuesOnly) {
  Document root;
  EXPECT_EQ(root.XMLExport() + root.Name(), u"xml") << "nothing, and the name that is missing";
  root.Parameters().AddParameter(u"p", u"x");
  EXPECT_EQ(root.XMLExport(), u"<xml p=\"x\"/>\r\n");
  root.Parameters().RemoveParameter(0);
  for (const StringView name : {u"child", u"", u"xml"}) root.Childs().AddChild(name);
  const auto child = root.Childs().Child(0);
  child->Parameters().AddParameter(u"r", u"a b");
  child->Childs().AddChild(u"leaf");
  child->Fields().AddField(u"f", u"1");
  root.Childs().Child(1)->Fields().AddField(u"lost", u"1");
  root.Childs().Child(1)->Childs().AddChild(u"lost");
  Fields& fields = root.Fields();
  fields.AddField(u"a&b", u"<&>\"'\r\n\u4E2D");
  fields.AddField(u"empty", u"");
  fields.AddField(u"", u"&lt;");
  fields.Field(0)->Parameters().AddParameter(u"p", u"<&\">");
  fields.Field(0)->Parameters().AddParameter(u"q", u"");
  root.SetVersion(u"2.0");
  root.SetEncoding(u"utf");
  EXPECT_EQ(root.XMLExport(),
            u"<?xml version=\"2.0\" encoding=\"utf\"?>\r\n"
            u"<xml>\r\n\t<a&b p=\"<&\">\" q=\"\">&lt;&amp;&gt;\"'\r\n\u4E2D</a&b>\r\n"
            u"\t<empty/>\r\n\t<>&lt;</>\r\n"
            u"\t<child r=\"a b\">\r\n\t\t<f>1</f>\r\n\t\t<leaf/>\r\n\t</child>\r\n"
            u"\t<xml/>\r\n</xml>\r\n");
  EXPECT_FALSE(root.Busy());
}

TEST(AppendStrings, GrowByWholeStepsAndKeepEveryCharacter) {
  constexpr size_t kStep = 196'608;
  AppendString builder;
  String expected;
  for (const auto& [length, steps] :
       {std::pair(0 * kStep, 0U), {kStep, 1}, {0, 1}, {1, 2}, {kStep - 1, 2}, {3 * kStep + 1, 6}}) {
    const String piece(length, static_cast<char16_t>(u'a' + expected.size() % 7));
    builder.AddToString(piece);
    EXPECT_EQ(builder.BufferLength(), steps * kStep);
    EXPECT_TRUE(builder.ReturnString() == (expected += piece)) << "up to " << expected.size();
  }
}

TEST(StringToFile, WritesWindows1252OrLogsTheFailureAndKeepsTheOldFile) {
  struct : EventLog {
    void Informational(StringView text) override { entries.emplace_back(text); }
    std::vector<String> entries;
  } log;
  const ScratchFolder folder;
  const Path file = folder / "file";
  EXPECT_TRUE(Document::StringtoFile(u"\n\u20AC\u00F1\r\n\x81", file, log));
  EXPECT_EQ(ReadBytes(file), "\n\x80\xF1\r\n\x81");
  Document root;
  root.SetName(u"\u00F1");
  EXPECT_TRUE(root.XMLExportFile(file, log) && log.entries.empty());
  root.SetName(u"\u4E2D");
  EXPECT_FALSE(root.XMLExportFile(file, log));
  EXPECT_EQ(ReadBytes(file), "<\xF1/>\r\n");
  EXPECT_FALSE(Document::StringtoFile(u"x", folder / "missing" / "file", log));
  EXPECT_EQ(log.entries, std::vector<String>(2, u"Error en funci\u00F3n StringtoFile"));
}

}  // namespace
}  // namespace quenmar
