#pragma once

#include <functional>
#include <memory>
#include <vector>

#include "docmodel/Documents.h"
#include "docmodel/EventLog.h"
#include "docmodel/Fields.h"
#include "docmodel/Parameters.h"
#include "files/Files.h"
#include "text/String.h"

namespace quenmar {

/// Takes the pieces of a text one by one.
using TextSink = std::function<void(StringView)>;

/// A node of the document tree: a name, attributes (`Parameters`), named values (`Fields`) and
/// child nodes (`Childs`). The tree is navigated downward only. Not safe for use from two threads.
class Document {
 public:
  Document() = default;
  Document(const Document&) = delete;
  Document& operator=(const Document&) = delete;
  ~Document() = default;

  /// @return true only while `XMLExport` runs.
  [[nodiscard]] bool Busy() const { return busy_; }

  [[nodiscard]] bool StopOnLoadError() const { return stopOnLoadError_; }

  /// Sets the flag here and in the whole subtree; an unchanged value does not descend.
  void SetStopOnLoadError(bool stop);

  [[nodiscard]] quenmar::Documents& Childs() { return childs_; }
  [[nodiscard]] const quenmar::Documents& Childs() const { return childs_; }
  [[nodiscard]] quenmar::Fields& Fields() { return fields_; }
  [[nodiscard]] const quenmar::Fields& Fields() const { return fields_; }
  [[nodiscard]] quenmar::Parameters& Parameters() { return parameters_; }
  [[nodiscard]] const quenmar::Parameters& Parameters() const { return parameters_; }

  [[nodiscard]] const String& Name() const { return name_; }

  /// Throws `DocError` 32 or 33 and keeps the old name when `name` contains a blank, "<", ">" or a
  /// double quote.
  void SetName(StringView name);

  /// @return the version, "1.0" while none is set.
  [[nodiscard]] String Version() const;
  void SetVersion(StringView version) { version_ = version; }

  /// @return the name of the character set, "ISO-8859-1" while none is set.
  [[nodiscard]] String Encoding() const;
  void SetEncoding(StringView encoding) { encoding_ = encoding; }

  /// @return the first direct child that qualifies; see `Documents::SearchChild`.
  [[nodiscard]] std::shared_ptr<Document> SearchChild(StringView name, StringView sParameters,
                                                      bool ignoreCase) const;

  /// @return every child that qualifies; see `Documents::GetChilds`.
  [[nodiscard]] std::vector<std::shared_ptr<Document>> GetChilds(StringView name,
                                                                 StringView sParameters,
                                                                 bool ignoreCase,
                                                                 bool multiLevelSearch) const;

  /// Takes the next `name="value"` or `name='value'` pair off the front of `attributes`.
  /// @param attributes the rest of a tag's text; loses the pair and the white space before it
  /// @param name, value receive the pair; unchanged when there is none
  /// @return whether a complete pair was found.
  static bool GetNextParameter(String& attributes, String& name, String& value);

  /// Writes the tree as XML text, lines ended by CR LF. It names an unnamed root "xml", and a root
  /// that is not empty gets the version "1.0" and the encoding "ISO-8859-1" where it has none; all
  /// of this stays in the tree. Unnamed nodes below the root are left out. Only field values are
  /// escaped.
  /// @return the text; empty for an empty root named "xml".
  [[nodiscard]] String XMLExport();

  /// The same, handed to `sink` piece by piece, so that a large tree does not need its text in
  /// memory.
  void XMLExport(const TextSink& sink);

  /// Writes `XMLExport` to a file; see `StringtoFile`.
  [[nodiscard]] bool XMLExportFile(const Path& fileName, EventLog& log = SystemEventLog());

  /// Writes `contenido` unchanged, as Windows-1252, over any file of that name. A failure (also a
  /// character that the code page lacks) goes to the event log, not to the caller.
  /// @return whether the file was written.
  [[nodiscard]] static bool StringtoFile(StringView contenido, const Path& filename,
                                         EventLog& log = SystemEventLog());

 private:
  void ExportElement(const TextSink& sink, int depth) const;

  bool busy_ = false;
  bool stopOnLoadError_ = false;
  quenmar::Fields fields_;
  String name_;
  String version_;
  String encoding_;
  quenmar::Parameters parameters_;
  quenmar::Documents childs_;
};

}  // namespace quenmar
