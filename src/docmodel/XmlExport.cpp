// The export of a `Document` tree as XML text and to a file.
#include <exception>
#include <initializer_list>

#include "docmodel/AppendString.h"
#include "docmodel/Document.h"
#include "docmodel/XmlText.h"
#include "text/Charset.h"

namespace quenmar {

namespace {

class BusyScope {
 public:
  explicit BusyScope(bool& busy) : busy_(busy) { busy_ = true; }
  BusyScope(const BusyScope&) = delete;
  BusyScope& operator=(const BusyScope&) = delete;
  ~BusyScope() { busy_ = false; }

 private:
  bool& busy_;
};

void Write(const TextSink& sink, std::initializer_list<StringView> pieces) {
  for (const StringView piece : pieces) sink(piece);
}

/// Attribute values are written without any escaping.
void WriteParameters(const TextSink& sink, const Parameters& parameters) {
  for (const Parameter& parameter : parameters) {
    Write(sink, {u" ", parameter.Name(), u"=\"", parameter.Value(), u"\""});
  }
}

void WriteFields(const TextSink& sink, const Fields& fields, int depth) {
  const String indent(static_cast<size_t>(depth), u'\t');
  for (const Field& field : fields) {
    Write(sink, {indent, u"<", field.Name()});
    WriteParameters(sink, field.Parameters());
    String value(field.Value());
    if (value.empty()) {
      sink(u"/>\r\n");
    } else {
      Write(sink, {u">", XmlEscape(value), u"</", field.Name(), u">\r\n"});
    }
  }
}

}  // namespace

String Document::XMLExport() {
  AppendString text;
  XMLExport([&text](StringView piece) { text.AddToString(piece); });
  return text.ReturnString();
}

void Document::XMLExport(const TextSink& sink) {
  const BusyScope scope(busy_);
  if (name_.empty()) SetName(u"xml");
  if (fields_.Count() > 0 || childs_.Count() > 0) {
    // The defaults stay in the tree, as callers can see afterwards.
    version_ = Version();
    encoding_ = Encoding();
    Write(sink, {u"<?xml version=\"", version_, u"\" encoding=\"", encoding_, u"\"?>\r\n"});
  }
  ExportElement(sink, 0);
}

void Document::ExportElement(const TextSink& sink, int depth) const {
  if (name_.empty()) return;
  const String indent(static_cast<size_t>(depth), u'\t');
  const bool empty = fields_.Count() == 0 && childs_.Count() == 0;
  if (empty && depth == 0 && name_ == u"xml" && parameters_.Count() == 0) return;
  Write(sink, {indent, u"<", name_});
  WriteParameters(sink, parameters_);
  if (empty) {
    sink(u"/>\r\n");
    return;
  }
  sink(u">\r\n");
  WriteFields(sink, fields_, depth + 1);
  for (const Document& child : childs_) child.ExportElement(sink, depth + 1);
  Write(sink, {indent, u"</", name_, u">\r\n"});
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
