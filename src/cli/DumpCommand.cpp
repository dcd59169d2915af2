#include <ostream>

#include "cli/Commands.h"
#include "cli/OutputBuffer.h"
#include "cli/TreeJson.h"

namespace quenmar {

int RunDump(const DumpArguments& arguments, const CommandContext& context) {
  std::shared_ptr<Document> settings;
  std::shared_ptr<Document> series;
  ConfNotes notes;
  const bool complete =
      ReadConfFile(arguments.file, settings, series, context, ConfReader::Comments::kKept, &notes);
  std::ostream& out = context.streams.out;
  if (arguments.xml.empty()) {
    PrintTreesJson(out, {{"settings", settings.get()}, {"series", series.get()}});
  } else {
    // In the file's own character set, which has every character of it.
    const ConfCharset charset = notes.file.Charset();
    Document& tree = arguments.xml == "settings" ? *settings : *series;
    if (charset == ConfCharset::kUtf8) tree.SetEncoding(u"UTF-8");
    OutputBuffer buffer(out);
    tree.XMLExport(
        [&](StringView piece) { buffer.Append(EncodeConfText(piece, charset).value()); });
    buffer.Flush();
  }
  context.Leave(settings);
  context.Leave(series);
  return complete ? kNothingToDo : kFailure;
}

}  // namespace quenmar
