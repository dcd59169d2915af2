// The export of a `Document` tree as XML text and to a file.
#include <exception>

#include "docmodel/AppendString.h"
#include "docmodel/Document.h"
#include "docmodel/XmlText.h"
#include "text/Charset.h"

namespace quenmar {

namespace {

String Indent(int depth) { return String(static_cast<size_t>(depth), u'\t'); }

/// Attribute values are written as they stand, without any escaping.
void AppendParameters(AppendString& text, const Parameters& parameters) {
  for (const Parameter& parameter : parameters) {
    for (const StringView piece : {StringView(u" "), parameter.Name().View(), StringView(u"=\""),
                                   parameter.Value().View(), StringView(u"\"")}) {
      text.AddToString(piece);
    }
  }
}

class BusyScope {
 public:
  explicit BusyScope(bool& busy) : busy_(busy) { busy_ = true; }
  BusyScope(const BusyScope&) = delete;
  BusyScope& operator=(const BusyScope&) = delete;
  ~BusyScope() { busy_ = false; }

 private:
  bool& busy_;
};

}  // namespace

String Document::XMLExport() {
  const BusyScope scope(busy_);
  return ExportElement(0);
}

String Document::ExportElement(int depth) {
  if (name_.empty()) {
    if (depth != 0) return {};
    SetName(u"xml");
  }
  AppendString text;
  text.AddToString(Indent(depth) + u"<" + name_);
  AppendParameters(text, parameters_);
  if (fields_.Count() == 0 && childs_.Count() == 0) {
    text.AddToString(u"/>\r\n");
    String element = text.ReturnString();
    return element == u"<xml/>\r\n" ? String() : element;
  }

  text.AddToString(u">\r\n");
  ExportFields(text, depth + 1);
  for (Document& child : childs_) text.AddToString(child.ExportElement(depth + 1));
  text.AddToString(Indent(depth) + u"</" + name_ + u">\r\n");
  if (depth != 0) return text.ReturnString();

  // The defaults stay in the tree, as callers can see afterwards.
  version_ = Version();
  encoding_ = Encoding();
  return u"<?xml version=\"" + version_ + u"\" encoding=\"" + encoding_ + u"\"?>\r\n" +
         text.ReturnString();
}

void Document::ExportFields(AppendString& text, int depth) const {
  const String indent = Indent(depth);
  for (const Field& field : fields_) {
    text.AddToString(indent);
    text.AddToString(u"<");
    text.AddToString(field.Name());
    AppendParameters(text, field.Parameters());
    String value(field.Value());
    if (value.empty()) {
      text.AddToString(u"/>\r\n");
      continue;
    }
    text.AddToString(u">");
    text.AddToString(XmlEscape(value));
    text.AddToString(u"</");
    text.AddToString(field.Name());
    text.AddToString(u">\r\n");
  }
}

bool Document::XMLExportFile(const Path& fileName, EventLog& log) {
  return StringtoFile(XMLExport(), fileName, log);
}

bool Document::StringtoFile(StringView contenido, const Path& filename, EventLog& log) {
  try {
    if (const auto bytes = ToWindows1252(contenido)) {
      ReplaceBytes(filename, *bytes);
      return true;
    }
  } catch (const std::exception&) {  // reported below, like a character without a byte
  }
  log.Informational(u"Error en función StringtoFile");
  return false;
}

}  // namespace quenmar
