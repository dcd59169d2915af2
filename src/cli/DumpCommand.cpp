#include <ostream>

#include "cli/Commands.h"
#include "cli/TreeJson.h"

namespace quenmar {

int RunDump(const DumpArguments& arguments, const CommandContext& context) {
  std::shared_ptr<Document> settings;
  std::shared_ptr<Document> series;
  ConfNotes notes;
  const bool complete = ReadConfFile(arguments.file, settings, series, context, &notes);
  std::ostream& out = context.streams.out;
  if (arguments.xml.empty()) {
    PrintTreesJson(out, {{"settings", settings.get()}, {"series", series.get()}});
  } else {
    // In the file's own character set, which has every character of it.
    Document& tree = arguments.xml == "settings" ? *settings : *series;
    if (notes.file.Charset() == ConfCharset::kUtf8) tree.SetEncoding(u"UTF-8");
    out << EncodeConfText(tree.XMLExport(), notes.file.Charset()).value();
  }
  return complete ? kNothingToDo : kTrouble;
}

}  // namespace quenmar
